#include "instruments/link/link.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/numbers.h"
#include "instruments/link/port_notice.h"
#include "instruments/reading/time_check.h"
#include "instruments/table/protocols.h"
#include "instruments/texts.h"
#include "model/status.h"
#include "model/texts.h"
#include "platform/dialogs/dialogs.h"
#include "platform/ports/port_devices.h"

namespace velk {

namespace {

constexpr double kSecondsADay = 86400;
constexpr const char* kLossBox = "Link";  ///< the subject of its box
/// Some units restart whenever their port is opened, and each try wakes the machine.
constexpr int kLongestRestMs = 60'000;

/// Three sampling intervals, at least a second.
int WatchdogMilliseconds(double samplingRate) {
  const double milliseconds = samplingRate * kSecondsADay * 3000;
  if (!(milliseconds > 1000)) return 1000;
  return static_cast<int>(std::min(std::round(milliseconds), 2e9));
}

/// Seconds without data after which a link may be dead. What comes faster than five times a second may come in bursts.
double LongestSilence(double samplingRate) {
  return std::max(samplingRate * kSecondsADay * 5, 1.0);
}

}  // namespace

Link::Link(Session& session, Platform& platform, MainView& view, MainTimers& timers, const SerialPortFactory& makePort,
           const std::string& devices)
    : MSComm1(makePort()),
      ODataCom1(platform.clock, platform.gate, makePort()),
      Board(session, platform, [this](int portNumber) { return device_.Of(portNumber); }),
      session_(session),
      platform_(platform),
      view_(view),
      lineReport_{platform.dialogs, "ODataCom1_DataReady"},
      watchdog_(*timers.Timer2),
      retry_(platform.clock.MakeTimer()),
      device_(platform.settings, devices) {
  ODataCom1.onDataReady = [this](const std::string& line) { ODataCom1_DataReady(line); };
  ODataCom1.onHangUp = [this] { DriverHungUp(); };
  // A tick that was on its way when the link was closed must not open it again.
  watchdog_.SetHandler([this] {
    if (watchdog_.Enabled()) Timer2_Timer();
  });
  retry_->SetHandler([this] {
    if (retry_->Enabled()) CycleODataCom();
  });
  platform_.gate.onOpened = [this] {
    ODataCom1.GateOpened();
    ShowUntold();
  };
}

Link::~Link() {
  platform_.gate.onOpened = nullptr;
  watchdog_.SetEnabled(false);
  watchdog_.SetHandler({});
}

SerialSettings Link::PlainSettings(Handshake handshake, const std::string& device) const {
  SerialSettings settings;
  settings.device = device;
  settings.baudRate = session_.BaudRate;
  settings.parity = session_.Parity;
  settings.dataBits = session_.DataBits;
  settings.stopBits = session_.StopBits;
  settings.handshake = handshake;
  return settings;
}

LineDriverSettings Link::DriverSettings() {
  LineDriverSettings settings;
  settings.port = PlainSettings(static_cast<Handshake>(session_.Handshake), device_.Of(session_.PortNumber));
  settings.portNumber = session_.PortNumber;
  settings.terminator = session_.Terminator;
  settings.theTimeOut = session_.TheTimeOut;
  return settings;
}

void Link::SetODataCom() {
  const std::string toldAlready = std::exchange(toldByEnablePort_, {});
  if (session_.IsOwnUnit) TakeUnitSeparators();
  session_.UseODataCom = ComputeUseODataCom(session_);
  if (!session_.UseODataCom) return;

  CloseODataCom();
  linesSeen_ = 0;
  lastFrameTime_.clear();
  RunProcedure({platform_.dialogs, "SetODataCom"}, [&](auto run) { run([&] { OpenDriver(toldAlready); }); });
  ShowImages(ODataCom1.IsOpen());
  StartWatching();
}

void Link::TakeUnitSeparators() {
  if (WaitsForNewStart(session_) && !HasChosenSeparators(session_)) {
    session_.ChosenDelimiter = session_.Delimiter;
    session_.ChosenTerminator = session_.Terminator;
  }
  session_.Delimiter = ' ';
  session_.Terminator = "\r\n";
}

/// A device that does not open, and that the operator has just been told of, is left to the watchdog.
void Link::OpenDriver(const std::string& toldAlready) {
  try {
    const LineDriverSettings settings = DriverSettings();
    deviceInUse_ = settings.port.device;
    ODataCom1.Open(settings);
    DriverOpened();
    TellUnsupported(ODataCom1.Settings().port, ODataCom1.Unsupported());
  } catch (const PortError& error) {
    const OperatorText text = PortErrorText(error);
    if (text.English() != toldAlready) throw RuntimeError(error.Number(), text);
  }
}

/// A unit whose cable was pulled out in the middle of a command waits for the next one.
void Link::DriverOpened() {
  device_.Opened();
  if (Board.OwesRun() && ProtocolOf(session_).unit) ODataCom1.Write("r\r");
}

void Link::StartWatching() {
  session_.LastDataTime = platform_.clock.Now();
  WatchClosely();
  watchdog_.SetEnabled(true);
  retry_->SetInterval(ODataCom1.Settings().retryMilliseconds);
  retry_->SetEnabled(!ODataCom1.IsOpen());
  failureTold_ = !ODataCom1.IsOpen();
}

void Link::WatchClosely() {
  watchRests_ = false;
  watchedFrom_ = platform_.clock.Ticks();
  watchdog_.SetInterval(WatchdogMilliseconds(session_.SamplingRate));
}

void Link::RestLonger() {
  const int rest = watchdog_.Interval();
  if (rest >= kLongestRestMs) return;
  watchRests_ = true;
  watchdog_.SetInterval(std::min(2 * rest, kLongestRestMs));
}

bool Link::EnablePort() {
  toldByEnablePort_.clear();
  if (session_.IsOwnUnit) CloseODataCom();
  const bool done = RunProcedure({platform_.dialogs, "EnablePort"}, [&](auto run) {
    run([&] {
      try {
        SetUpBoard();
        toldByEnablePort_.clear();
      } catch (const RuntimeError& error) {
        toldByEnablePort_ = error.Text().English();
        throw;
      }
    });
  });
  // The board knows one form of port only; an instrument of another maker gets its own.
  return done && (session_.IsOwnUnit || OpenPlainPort(static_cast<Handshake>(session_.Handshake)));
}

void Link::SetUpBoard() {
  try {
    Board.SetupComPort(MSComm1.get(), session_.PortNumber, ToInt16(session_.BaudRate), session_.Handshake);
    device_.Opened();
  } catch (const PortError& error) {
    throw RuntimeError(error.Number(), PortErrorText(error));
  }
}

void Link::CloseODataCom() {
  toldByEnablePort_.clear();
  watchdog_.SetEnabled(false);
  retry_->SetEnabled(false);
  ODataCom1.Close();
  failureTold_ = false;
  lossWaits_ = false;
  ShowImages(false);
}

void Link::ClosePlainPort() {
  nextReopen_ = 0;
  if (!MSComm1->IsOpen()) return;
  MSComm1->Close();
  ShowImages(ODataCom1.IsOpen());
}

Link::State Link::Release() {
  const State state{.watched = watchdog_.Enabled(),
                    .driverOpen = ODataCom1.IsOpen(),
                    .plainOpen = MSComm1->IsOpen(),
                    .failureTold = failureTold_,
                    .lossWaits = lossWaits_,
                    .plain = plain_,
                    .device = device_};
  CloseODataCom();
  ClosePlainPort();
  return state;
}

void Link::Restore(const State& state) {
  Release();
  device_ = state.device;
  failureTold_ = state.lossIsTold || (state.failureTold && !state.driverOpen && !state.plainOpen);
  lossWaits_ = state.lossWaits;
  if (state.watched) {
    CycleODataCom();
    session_.LastDataTime = platform_.clock.Now();
    watchdog_.SetEnabled(true);
  }
  plain_ = state.plain;
  if (state.plainOpen) KeepPlainPortOpen();
  ShowUntold();
}

bool Link::OpenPlainPort(Handshake handshake) {
  return RunProcedure({platform_.dialogs, "EnablePort"}, [&](auto run) {
    run([&] {
      ClosePlainPort();
      try {
        plain_ = PlainSettings(handshake, device_.Of(session_.PortNumber));
        deviceInUse_ = plain_.device;
        MSComm1->Open(plain_);
        device_.Opened();
        ShowImages(true);
        TellUnsupported(plain_, MSComm1->Unsupported());
      } catch (const PortError& error) {
        throw RuntimeError(error.Number(), PortErrorText(error));
      }
    });
    failureTold_ = false;
  });
}

bool Link::KeepPlainPortOpen() {
  if (MSComm1->IsOpen()) return true;
  if (platform_.clock.Ticks() < nextReopen_) return false;
  nextReopen_ = platform_.clock.Ticks() + ODataCom1.Settings().retryMilliseconds;
  try {
    deviceInUse_ = plain_.device = device_.Find();
    MSComm1->Open(plain_);
    device_.Opened();
    ShowImages(true);
  } catch (const PortError& error) {
    ShowImages(false);
    TellLoss(PortErrorText(error));
  } catch (const RuntimeError& error) {
    TellLoss(error.Text());
  }
  return MSComm1->IsOpen();
}

void Link::CycleODataCom() {
  ShowImages(false);
  const bool opened = Reopen();
  ShowImages(opened);
  retry_->SetEnabled(!opened);
}

bool Link::Reopen() {
  try {
    ODataCom1.ClosePort();
    deviceInUse_ = device_.Find();
    ODataCom1.Reopen(deviceInUse_);
    DriverOpened();
    TellUnsupported(ODataCom1.Settings().port, ODataCom1.Unsupported());
    return true;
  } catch (const PortError& error) {
    TellLoss(PortErrorText(error));
  } catch (const RuntimeError& error) {
    TellLoss(error.Text());
  }
  return false;
}

void Link::Timer2_Timer() {
  // Lines that wait are data: the program is behind, not the unit.
  if (ODataCom1.LineWaits()) return;
  const double age = (platform_.clock.Now() - session_.LastDataTime) * kSecondsADay;
  const bool clockSetBack = age < 0;
  if (!clockSetBack && age <= LongestSilence(session_.SamplingRate)) return;
  CycleODataCom();
  if (!StatusIs(session_, text::StatusAcquiringData)) RestLonger();
}

void Link::DriverHungUp() {
  Board.ForgetChannels();  // another unit may be plugged in
  ShowImages(false);
  TellLoss(ODataCom1.Settings().port.device + text::PortIsGone);
  retry_->SetEnabled(true);
}

void Link::ODataCom1_DataReady(const std::string& line) {
  ++linesSeen_;
  Board.Runs();
  // A line that had waited when the device went away is no sign of its return.
  if (ODataCom1.IsOpen()) DataCame();
  // Set back now and then while lines come, so that it wakes nobody.
  if (watchRests_ || platform_.clock.Ticks() >= watchedFrom_ + watchdog_.Interval() / 2) WatchClosely();
  constexpr std::size_t kTimeLength = 8;
  if (session_.IsOwnUnit && HasTime(line)) lastFrameTime_ = line.substr(0, kTimeLength);
  if (StatusIs(session_, text::StatusAcquiringData) && onLine)
    RunProcedure(lineReport_, [&](const Statements&) { onLine(line); });
  session_.LastDataTime = platform_.clock.Now();
}

void Link::TellUnsupported(const SerialSettings& settings, const std::vector<PortSetting>& unsupported) {
  if (unsupported.empty()) return;
  const OperatorText text = UnsupportedText(settings, unsupported);
  if (!noticed_.insert(text.English()).second) return;
  notice_ += notice_.IsEmpty() ? text : "\n" + text;
  ShowUntold();
}

/// In a box of its own, once until data have come; where a box tells of the link already, in that one.
void Link::TellLoss(const OperatorText& text) {
  const bool isTold = lossWaits_ || lossStands_;
  const bool toldAndNoDataSince = std::exchange(failureTold_, true);
  if (isTold) {
    if (loss_.Lost(text)) RetellLoss();
    return;
  }
  if (toldAndNoDataSince) return;
  loss_.Begin(text, platform_.clock.Now());
  lossWaits_ = true;
  ShowUntold();
}

void Link::DataCame() {
  failureTold_ = false;
  if (loss_.Back(platform_.clock.Now())) RetellLoss();
}

void Link::RetellLoss() {
  if (lossStands_) platform_.dialogs.Retell(kLossBox, aboveLoss_ + loss_.Text(platform_.clock.Now()));
}

/// A box on top of a running sample would hold it up, and the samples behind it with it. So it waits for the gate.
void Link::ShowUntold() {
  if (!lossWaits_ && notice_.IsEmpty()) return;
  platform_.clock.Post([this, alive = std::weak_ptr<char>(alive_)] {
    if (!alive.expired() && platform_.gate.IsOpen()) ShowBox();
  });
}

/// One box for the losses of the link: while it stands, the next ones are told in it.
void Link::ShowBox() {
  OperatorText text = std::exchange(notice_, {});
  const bool forLoss = std::exchange(lossWaits_, false);
  if (text.IsEmpty() && !forLoss) return;
  if (!forLoss) {
    platform_.dialogs.Message({text, {}, Buttons::Ok, BoxIcon::Exclamation});
    return;
  }
  aboveLoss_ = text.IsEmpty() ? text : text + "\n";
  lossStands_ = true;
  const std::weak_ptr<char> alive = alive_;
  platform_.dialogs.Message({.text = aboveLoss_ + loss_.Text(platform_.clock.Now()),
                             .buttons = Buttons::Ok,
                             .icon = BoxIcon::Exclamation,
                             .subject = kLossBox});
  if (!alive.expired()) lossStands_ = false;
}

void Link::ShowImages(bool connected) {
  connected_ = connected;
  const int open = silent_ ? image::ConnectSilent : image::ConnectOn;
  view_.SetButtonImage("connect", connected ? open : image::ConnectOff);
  view_.SetButtonImage("disconnect", connected ? image::DisconnectOn : image::DisconnectOff);
  if (deviceInUse_.empty()) return;
  view_.SetButtonToolTip("connect", (silent_ ? text::NoDataFrom : text::ConnectedTo) + deviceInUse_);
  view_.SetButtonToolTip("disconnect", text::DisconnectedFrom + deviceInUse_);
}

OperatorText Link::PortInUse() const {
  return text::ComPort + std::to_string(session_.PortNumber) + ": " + deviceInUse_;
}

void Link::ShowSilence(bool silent) {
  if (std::exchange(silent_, silent) != silent) ShowImages(connected_);
}

OperatorText Link::PortErrorText(const PortError& error) {
  OperatorText text = error.Device();
  switch (error.Number()) {
    case ErrorNumber::PermissionDenied:
      text += text::PortNoPermission;
      text += error.Group();
      text += text::PortNoPermissionAfter;
      break;
    case ErrorNumber::FileAlreadyOpen:
      text += text::PortBusy;
      break;
    case ErrorNumber::PortInvalid:
      text += text::PortRefusesSettings;
      break;
    default:
      text += text::PortMissing;
  }
  return text;
}

}  // namespace velk
