#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "instruments/board/board.h"
#include "instruments/link/line_driver.h"
#include "instruments/link/loss_notice.h"
#include "model/main_timers.h"
#include "model/main_view.h"
#include "model/session.h"
#include "platform/dialogs/procedure.h"
#include "platform/platform.h"
#include "platform/ports/followed_device.h"

namespace velk {

/// The session's link to its instrument: the plain port, the line driver, the board, and the watchdog over the driver.
/// Own units have the plain port and the driver on one device, so only one of the two is open at a time.
class Link {
 public:
  /// `devices` is where serial devices are looked for.
  Link(Session& session, Platform& platform, MainView& view, MainTimers& timers, const SerialPortFactory& makePort,
       const std::string& devices = "/dev");
  ~Link();
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;

  std::unique_ptr<SerialPort> MSComm1;  ///< the plain port
  LineDriver ODataCom1;
  CAdc12nCom Board;

  /// Opens the line driver, if the protocol uses it, with the session's port settings, and starts the watchdog. When it
  /// can't be opened the watchdog goes on trying after the box was left.
  void SetODataCom();

  /// Sets the board up on the plain port, for own units with the line driver closed first. False after an error box.
  bool EnablePort();

  /// The same without a box: raises what the board raises, with the operator's text of a port that doesn't open.
  void SetUpBoard();

  /// Closes the driver on purpose: no watchdog, off images.
  void CloseODataCom();
  void ClosePlainPort();
  /// What opens next is the device that the list has for the session's port, and no longer the one that was followed.
  void ForgetDevice() { device_.Forget(); }

  /// What was open, for a LinkLease.
  struct State {
    bool watched = false;  ///< the driver was set up, though its device may be gone
    bool driverOpen = false;
    bool plainOpen = false;
    bool failureTold = false;
    bool lossIsTold = false;  ///< by somebody else: what can't be opened again needs no box
    bool lossWaits = false;   ///< it is told when the link is given back
    SerialSettings plain;
    FollowedDevice device;
  };
  /// Closes both ports on purpose and tells what was open.
  State Release();
  /// Opens again what Release has closed, with the same settings. Shows no box of its own: a failure is told once no
  /// sample runs, and is tried on.
  void Restore(const State& state);

  /// Opens the plain port with the session's own port settings; closes it first. False after an error box.
  bool OpenPlainPort(Handshake handshake);
  /// Opens the plain port again, as it was opened last, where its device went away; at most once a second. A failure is
  /// told once until data have come again.
  bool KeepPlainPortOpen();
  /// Data have come through the plain port.
  void PlainDataCame() { DataCame(); }

  /// Closes and reopens the driver. A failure is told in a box, once until data come again.
  void CycleODataCom();

  /// The watchdog: cycles the link when the last data are more than five sampling intervals old, and a second. While
  /// nothing is acquired a unit that stays silent is left alone for longer after each try, up to a minute.
  void Timer2_Timer();
  /// The watchdog looks at its full pace again: a job runs from now on.
  void WatchClosely();

  /// One received line: to the sample's road while acquiring; its arrival is stored in any status. The road shows its
  /// own errors; one that escapes it is a defect, and nothing is done twice for it.
  void ODataCom1_DataReady(const std::string& line);

  /// The plug shows that nothing comes though the link is open.
  void ShowSilence(bool silent);

  /// What the operator is told of a port that doesn't open.
  static OperatorText PortErrorText(const PortError& error);

  /// The port and its device, for what is told of a wait that was in vain.
  OperatorText PortInUse() const;

  /// Lines received since the last SetODataCom, for a wait for the first one.
  std::int64_t LinesSeen() const { return linesSeen_; }

  /// The time in the last frame of an own unit, "hh:mm:ss"; empty before the first one since the last SetODataCom.
  const std::string& LastFrameTime() const { return lastFrameTime_; }

  /// The sample's road (ProcessLine).
  std::function<void(const std::string& line)> onLine;

 private:
  SerialSettings PlainSettings(Handshake handshake, const std::string& device) const;
  LineDriverSettings DriverSettings();
  void TakeUnitSeparators();
  void OpenDriver(const std::string& toldAlready);
  bool Reopen();
  void DriverOpened();
  void StartWatching();
  void RestLonger();
  void DriverHungUp();
  void TellUnsupported(const SerialSettings& settings, const std::vector<PortSetting>& unsupported);
  void TellLoss(const OperatorText& text);
  void DataCame();
  void RetellLoss();
  void ShowUntold();
  void ShowBox();
  void ShowImages(bool connected);

  Session& session_;
  Platform& platform_;
  MainView& view_;
  const Report lineReport_;
  Timer& watchdog_;
  std::unique_ptr<Timer> retry_;  ///< on while the device is gone
  SerialSettings plain_;          ///< of the plain port's last opening
  FollowedDevice device_;         ///< of both ports
  std::string deviceInUse_;       ///< by the port that was opened last, or was to be
  std::int64_t linesSeen_ = 0;
  std::string lastFrameTime_;
  std::int64_t watchedFrom_ = 0;  ///< ticks
  bool watchRests_ = false;       ///< the watchdog looks less often than it would in a job
  std::int64_t nextReopen_ = 0;   ///< Ticks, of the plain port
  bool connected_ = false;        ///< as the plug shows it
  bool silent_ = false;
  bool failureTold_ = false;  ///< a failure was shown and no data have come since
  LossNotice loss_;
  bool lossWaits_ = false;   ///< until no sample is running
  bool lossStands_ = false;  ///< its box does
  OperatorText aboveLoss_;   ///< what else that box tells
  OperatorText notice_;      ///< waits as the loss does, and is shown though the link was closed meanwhile
  std::set<std::string> noticed_;
  std::string toldByEnablePort_;  ///< the failure of the same device is not shown a second time by SetODataCom
  std::shared_ptr<char> alive_ = std::make_shared<char>();
};

}  // namespace velk
