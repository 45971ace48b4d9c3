#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/errors.h"
#include "instruments/board/board_text.h"
#include "model/session.h"
#include "platform/dialogs/dialogs.h"
#include "platform/platform.h"
#include "platform/ports/serial.h"

namespace velk {

/// An error that the board class raises: number n of its own list, the procedure, and a translated text.
class BoardError : public RuntimeError {
 public:
  BoardError(int n, OperatorText source, OperatorText text)
      : RuntimeError(static_cast<ErrorNumber>(0x80040000U + static_cast<std::uint32_t>(n)), std::move(text)),
        source_(std::move(source)) {}

  /// 0x80040000 + n.
  std::uint32_t Code() const { return static_cast<std::uint32_t>(Number()); }
  const OperatorText& Source() const { return source_; }

 private:
  OperatorText source_;
};

/// The board of an own unit, spoken to over the plain port: in run mode it streams, in command mode it answers.
///
/// Waits let events run. They end at once where the port goes away, which raises DeviceUnavailable with its path, and
/// where the operator cancels or the program ends, which raises TaskCancelled. Either may leave the unit in command
/// mode: see BringToRunMode.
class CAdc12nCom {
 public:
  /// `deviceOf` gives the device behind a port number. The session tells which unit it is.
  CAdc12nCom(const Session& session, const Platform& platform, std::function<std::string(int)> deviceOf);
  ~CAdc12nCom();
  CAdc12nCom(const CAdc12nCom&) = delete;
  CAdc12nCom& operator=(const CAdc12nCom&) = delete;

  // --- The port and the modes (board.cpp) ---

  /// Opens the port at baud, no parity, 8 data bits, 1 stop bit; closes it first. Raises BoardError 1 for a missing
  /// port, 3 for a baud rate other than 2400, 4800, 9600 and 19200, 4 for a handshake outside 0 to 3, and what the
  /// port itself raises.
  void SetupComPort(SerialPort* port, std::int16_t portNumber, std::int16_t baud, std::int16_t handshake);
  /// Closes the port if SetupComPort had opened it.
  void CloseComPort();
  /// To command mode. True where the unit didn't answer in time. Raises BoardError 5 without a port.
  bool SendTrad();
  /// To run mode: the unit streams again. Returns and raises as SendTrad.
  bool SendRun();
  /// Waits, letting events run.
  void delay(int seconds);
  /// Sends a command. Always true: one that the board doesn't take raises BoardError 10, one in run mode 14.
  bool executCommand(const std::string& command);

  /// Whether the unit may be in command mode, as far as it could be reached.
  bool MayBeInTradMode() const { return addressed_; }
  bool InTradMode() const { return inTradMode_; }
  /// The unit may have been left in command mode when its device went away: it needs an "r" once it is back.
  bool OwesRun() const { return owesRun_; }
  /// Since SetupComPort an error has told that the device is gone.
  bool LossRaised() const { return lossRaised_; }
  /// It streams.
  void Runs() { owesRun_ = false; }
  /// Sends what ends a calibration and command mode, and waits for no answer: for the way out of whatever failed.
  void BringToRunMode() noexcept;
  /// A command in command mode, on its way before this returns; nothing is awaited. What the board holds may be other
  /// than what was read from then on.
  void SendDirect(const std::string& command);
  /// What executCommand or SendDirect has sent last, for the operator.
  const std::string& CommandIssued() const { return commandIssued_; }
  /// What the unit has answered last when it was brought to command mode.
  const std::string& Reply() const { return reply_; }

  // --- The table of channels (board_table.cpp, board_channels.cpp) ---

  /// Reads the table of channels; the unit is in run mode before and behind it. True where the unit can't be brought to
  /// command mode. Raises BoardError 5 without a port, 12 for a table that doesn't come whole.
  bool GetChannelsData();
  /// What a channel has. All of these read the table first where that wasn't done, and raise BoardError 8 where it
  /// can't be read and 9 for a channel outside 0 to NumberOfChannels; channel 0 has nothing.
  double GetGain(int channel);
  double GetOffset(int channel);
  /// Whether the alarm is in force; its level is `value`.
  bool GetUpperAlarm(int channel, double& value);
  bool GetLowerAlarm(int channel, double& value);
  /// What the channel is to have; SaveDataToBoard sends it.
  void SetGain(int channel, double value);
  void SetOffset(int channel, double value);
  void SetUpperAlarm(int channel, bool isSet, double value);
  void SetLowerAlarm(int channel, bool isSet, double value);
  /// Sends what differs from what the board holds. 0, or -4 where the board doesn't take a command: RefusedCommand
  /// tells which, and nothing of this counts as sent. Raises BoardError 6.
  int SaveDataToBoard();
  const BoardError& RefusedCommand() const { return *refused_; }
  /// Whether the table was read.
  bool ChannelsLoaded() const { return channelsLoaded_; }
  bool DataChanged() const { return dataChanged_; }
  bool CommandsEchoed() const { return commandsEchoed_; }
  /// The board may hold something else than what was read: it is read again before it is used.
  void ForgetChannels() { channelsLoaded_ = false; }

  // --- Commands (board_commands.cpp); each raises BoardError 6 and 10, and those that it names ---

  /// 13 for a channel that is no counter, 11 for a negative value.
  void ResetCounter(int channel, double value);
  void ResetToSystemDefault();
  /// The board stays in command mode until EndCalibrateChannel. 15 for a channel outside 1 to LastHardwareChannel.
  void StartCalibrateChannel(int channel);
  /// The same where the board is in command mode already.
  void StartCalibrateDirect(int channel);
  /// The reading of the channel. 15 without StartCalibrateChannel, 16 for an answer that doesn't come or has none.
  double EndCalibrateChannel();
  bool Calibrating() const { return calibrating_; }
  void SetDate(double dateTime);
  /// The time at which the command goes out: until the unit is in command mode, seconds have passed.
  void SetDateToNow();

  /// Whether the operator has cancelled, asked in each round of a wait.
  std::function<bool()> isCancelled;

  /// The box that shows how far a conversation is. It stands while one of these is there, and is seen once the
  /// conversation takes longer than a moment.
  class Status {
   public:
    explicit Status(CAdc12nCom& board);
    ~Status();
    Status(const Status&) = delete;
    Status& operator=(const Status&) = delete;

    /// What is being done.
    void Doing(const OperatorText& text);
    /// How much of it is done, from 0 to 1; below 0 nobody knows.
    void Done(double share);
    void Appear();

   private:
    CAdc12nCom& board_;
  };

 private:
  struct StatusBox;

  [[noreturn]] void Raise(int n, const OperatorText& source, const OperatorText& text) const;
  [[noreturn]] void RaiseGone();
  void RequirePort(const MessageText& source, const MessageText& noPort, const MessageText& notConfigured) const;
  void Send(std::string_view bytes);
  std::string ReadWaiting();
  void Round();
  /// Up to so many rounds until `isThere`, asked at the beginning of each.
  template <class IsThere>
  bool Await(int rounds, IsThere&& isThere);
  bool IsEchoed(std::size_t length);
  bool IsStill();
  bool ReachTradMode();
  void EnsureTradMode(const OperatorText& source);
  void EndOpenCalibration();

  struct TableText;
  bool AwaitLine(TableText& table);
  bool DropHeadings(TableText& table);
  void RaiseNoTable(const MessageText& text);
  void ReadLines(TableText& table, Status& status);
  void TakeLines(const TableText& table, Status& status);
  BoardChannel& Checked(const char* procedure, int channel);
  void SendDifferences(int channel);
  std::string AskReading();
  void SendDate(double dateTime);

  const Session& session_;
  Platform platform_;
  std::function<std::string(int)> deviceOf_;
  SerialPort* comPort_ = nullptr;
  std::string device_;
  std::string unit_;  ///< its name at the last SetupComPort
  bool portConfigured_ = false;
  std::vector<BoardChannel> present_;   ///< by channel; the first one is nobody's
  std::vector<BoardChannel> baseline_;  ///< what the board holds, as last read or written
  bool channelsLoaded_ = false;
  bool dataChanged_ = false;
  bool inTradMode_ = false;
  bool calibrating_ = false;
  bool commandsEchoed_ = false;
  bool addressed_ = false;  ///< was spoken to since it last streamed
  bool owesRun_ = false;
  bool lossRaised_ = false;
  std::optional<BoardError> refused_;
  std::string commandIssued_;
  std::string reply_;
  std::unique_ptr<StatusBox> status_;
};

template <class IsThere>
bool CAdc12nCom::Await(int rounds, IsThere&& isThere) {
  for (int round = 0; round < rounds; ++round) {
    if (isThere()) return true;
    Round();
  }
  return false;
}

}  // namespace velk
