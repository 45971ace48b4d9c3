#include "instruments/board/board.h"

#include <utility>

#include "instruments/texts.h"
#include "platform/dialogs/long_task.h"
#include "platform/loop/clock.h"

namespace velk {

namespace {

constexpr std::size_t kInputBuffer = 2048;
constexpr int kModeRounds = 7000;
constexpr int kModeSeconds = 3;
constexpr int kCommandRounds = 3000;
constexpr int kEchoSeconds = 1;
constexpr int kDrainRounds = 500;
constexpr std::size_t kStreamingBytes = 140;
constexpr std::size_t kLongestReply = 64 * 1024;  ///< a unit that streams on takes no more memory
constexpr std::int64_t kAppearAfterMs = 300;

bool IsBoardBaudRate(std::int16_t baud) {
  return baud == 2400 || baud == 4800 || baud == 9600 || baud == 19200;
}

}  // namespace

struct CAdc12nCom::StatusBox {
  StatusBox(Dialogs& dialogs, std::int64_t now) : box(dialogs, text::UnitTitle), began(now) {}

  void Appear() {
    if (!appeared) box.Appear();
    appeared = true;
    Show();
  }
  void Show() {
    if (appeared) box.Show(doing, share);
  }

  Dialogs::Progress box;
  OperatorText doing = text::SpeakingToUnit;
  double share = -1;
  const std::int64_t began;
  bool appeared = false;
  int users = 0;
};

CAdc12nCom::Status::Status(CAdc12nCom& board) : board_(board) {
  if (!board_.status_)
    board_.status_ = std::make_unique<StatusBox>(board_.platform_.dialogs, board_.platform_.clock.Ticks());
  ++board_.status_->users;
}

CAdc12nCom::Status::~Status() {
  if (--board_.status_->users == 0) board_.status_.reset();
}

void CAdc12nCom::Status::Appear() {
  board_.status_->Appear();
}

void CAdc12nCom::Status::Doing(const OperatorText& text) {
  board_.status_->doing = text;
  board_.status_->Show();
}

void CAdc12nCom::Status::Done(double share) {
  board_.status_->share = share;
  board_.status_->Show();
}

CAdc12nCom::CAdc12nCom(const Session& session, const Platform& platform, std::function<std::string(int)> deviceOf)
    : session_(session), platform_(platform), deviceOf_(std::move(deviceOf)) {
}

CAdc12nCom::~CAdc12nCom() = default;

void CAdc12nCom::Raise(int n, const OperatorText& source, const OperatorText& text) const {
  throw BoardError(n, source, text);
}

void CAdc12nCom::RaiseGone() {
  owesRun_ = owesRun_ || addressed_;
  ForgetChannels();
  calibrating_ = inTradMode_ = addressed_ = false;
  lossRaised_ = true;
  throw RuntimeError(ErrorNumber::DeviceUnavailable, device_ + text::UnitIsGone);
}

// --- The port ---

void CAdc12nCom::SetupComPort(SerialPort* port, std::int16_t portNumber, std::int16_t baud, std::int16_t handshake) {
  if (port == nullptr) Raise(1, text::SourceSetupComPort, text::InvalidPortObject);
  comPort_ = port;
  // Without its port a calibration has ended by itself.
  if (comPort_->IsOpen()) EndOpenCalibration();
  calibrating_ = lossRaised_ = false;
  if (comPort_->IsOpen()) comPort_->Close();
  if (!IsBoardBaudRate(baud)) Raise(3, text::SourceSetupComPort, text::InvalidBaudRate);
  if (handshake < 0 || handshake > 3) Raise(4, text::SourceSetupComPort, text::InvalidHandshake);

  SerialSettings settings;
  settings.device = deviceOf_(portNumber);
  // What was read of one unit is no baseline for another.
  if (settings.device != std::exchange(device_, settings.device)) ForgetChannels();
  if (session_.SerialData != std::exchange(unit_, session_.SerialData)) ForgetChannels();
  settings.baudRate = baud;
  settings.handshake = static_cast<Handshake>(handshake);
  settings.readBuffer = kInputBuffer;
  comPort_->Open(settings);
  portConfigured_ = true;
}

void CAdc12nCom::CloseComPort() {
  if (!portConfigured_ || !comPort_->IsOpen()) return;
  comPort_->Close();
  portConfigured_ = false;
}

void CAdc12nCom::RequirePort(const MessageText& source, const MessageText& noPort,
                             const MessageText& notConfigured) const {
  if (comPort_ == nullptr) Raise(5, source, noPort);
  if (!portConfigured_) Raise(5, source, notConfigured);
}

void CAdc12nCom::Send(std::string_view bytes) {
  if (!comPort_->IsOpen()) RaiseGone();
  comPort_->Write(bytes);
}

std::string CAdc12nCom::ReadWaiting() {
  return comPort_->Read(comPort_->BytesWaiting());
}

void CAdc12nCom::Round() {
  platform_.clock.WaitRound();
  if (!comPort_->IsOpen()) RaiseGone();
  if (status_ && !status_->appeared && platform_.clock.Ticks() - status_->began >= kAppearAfterMs) status_->Appear();
  const bool isLeft = (isCancelled && isCancelled()) || (status_ && status_->box.IsCancelled());
  if (isLeft || platform_.dialogs.IsEnding()) throw TaskCancelled{};
}

void CAdc12nCom::delay(int seconds) {
  const std::int64_t begun = platform_.clock.Ticks();
  while (platform_.clock.Ticks() - begun < seconds * 1000) Round();
}

// --- The modes ---

bool CAdc12nCom::SendTrad() {
  RequirePort(text::SourceSendTrad, text::TradWithoutPort, text::TradNotConfigured);
  EndOpenCalibration();
  comPort_->ClearInput();
  Send("Trad\r");
  addressed_ = true;
  delay(kModeSeconds);
  std::string buffer;
  const bool isThere = Await(kModeRounds, [&] {
    buffer += ReadWaiting();
    if (buffer.find("OK") != std::string::npos) return true;
    if (buffer.size() > kLongestReply) buffer.erase(0, buffer.size() - 1);
    return false;
  });
  reply_ = buffer;
  if (isThere) inTradMode_ = true;
  return !isThere;
}

bool CAdc12nCom::SendRun() {
  RequirePort(text::SourceSendRun, text::RunWithoutPort, text::RunNotConfigured);
  EndOpenCalibration();
  comPort_->ClearInput();
  Send("r\r");
  delay(kModeSeconds);
  if (!Await(kModeRounds, [&] { return comPort_->BytesWaiting() >= kStreamingBytes; })) return true;
  inTradMode_ = addressed_ = owesRun_ = false;
  return false;
}

/// A board that is between modes answers "Trad" only after it has run.
bool CAdc12nCom::ReachTradMode() {
  if (!SendTrad()) return true;
  return !SendRun() && !SendTrad();
}

void CAdc12nCom::EnsureTradMode(const OperatorText& source) {
  if (!ReachTradMode()) Raise(6, source, text::UnableToCommunicate);
}

void CAdc12nCom::EndOpenCalibration() {
  if (calibrating_) EndCalibrateChannel();
}

void CAdc12nCom::BringToRunMode() noexcept {
  owesRun_ = owesRun_ || addressed_;
  try {
    if (comPort_ != nullptr && comPort_->IsOpen()) {
      if (calibrating_) comPort_->Write("f");
      comPort_->Write("r\r");
      for (int round = 0; round < kDrainRounds && comPort_->BytesToSend() > 0; ++round) platform_.clock.WaitRound();
      comPort_->ClearInput();
      owesRun_ = false;
    }
  } catch (const std::exception&) {
    // The port has gone meanwhile: there is nobody to bring back.
  }
  calibrating_ = inTradMode_ = addressed_ = false;
}

// --- Commands ---

bool CAdc12nCom::executCommand(const std::string& command) {
  if (!inTradMode_) Raise(14, text::SourceExecutCommand, text::CommandWhileRunning);
  EndOpenCalibration();
  commandIssued_ = command;
  const std::string line = command + '\r';
  comPort_->ClearInput();
  Send(line);
  if (commandsEchoed_ ? IsEchoed(line.size()) : IsStill()) return true;
  Raise(10, text::SourceExecutCommand, text::UnableToExecute + command + "]");
}

bool CAdc12nCom::IsEchoed(std::size_t length) {
  delay(kEchoSeconds);
  std::string buffer;
  return Await(kCommandRounds, [&] {
    if (buffer.size() >= length) return true;
    buffer += ReadWaiting();
    return false;
  });
}

bool CAdc12nCom::IsStill() {
  return Await(kCommandRounds, [&] { return ReadWaiting().empty(); });
}

void CAdc12nCom::SendDirect(const std::string& command) {
  if (!inTradMode_) Raise(14, text::SourceExecutCommand, text::CommandWhileRunning);
  ForgetChannels();
  commandIssued_ = command;
  Send(command + '\r');
  if (!Await(kCommandRounds, [&] { return comPort_->BytesToSend() == 0; }))
    Raise(10, text::SourceExecutCommand, text::UnableToExecute + command + "]");
}

}  // namespace velk
