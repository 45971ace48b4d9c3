#include "core/acquisition.h"

#include <algorithm>
#include <cmath>

#include "base/dates.h"
#include "core/texts.h"
#include "instruments/table/protocols.h"
#include "instruments/texts.h"
#include "log/current_velk.h"
#include "model/graph_map.h"
#include "model/status.h"
#include "model/texts.h"

namespace velk {

namespace {

constexpr double kSecondsPerDay = 86400;
/// Connect waits no longer than this for a unit's first line, however slow the sampling.
constexpr std::int64_t kLongestCheckMs = 15'000;

}  // namespace

Acquisition::Acquisition(Session& session, const Platform& platform, MainView& view, GraphWindows& graphs,
                         MainTimers& timers, Link& link, Recorder& recorder, SampleRoad& road, Polling& polling)
    : session_(session),
      platform_(platform),
      view_(view),
      graphs_(graphs),
      timers_(timers),
      link_(link),
      recorder_(recorder),
      road_(road),
      polling_(polling) {
}

// --- Connect ---

void Acquisition::mnuAcquireConnect_Click() {
  if (polling_.PutOffBehindPage([this] { mnuAcquireConnect_Click(); })) return;
  const bool outermost = !std::exchange(connecting_, true);
  const bool done =
      RunProcedure({platform_.dialogs, "mnuAcquireConnect_Click"}, [&](const Statements& run) { Connect(run); });
  if (!done) view_.SetHourglass(false);
  if (outermost) connecting_ = false;
}

void Acquisition::Connect(const Statements& run) {
  view_.SetMenuEnabled("mnuAcquireStart", true);
  view_.SetMenuEnabled("mnuAcquireStop", true);
  if (!StatusIs(session_, text::StatusReady)) {
    platform_.dialogs.Message(
        {text::UnableToAcquire + session_.CurrentStatus, text::AcquireDataTitle, Buttons::Ok, BoxIcon::Exclamation});
    return;
  }
  view_.SetHourglass(true);
  link_.CloseODataCom();
  link_.ClosePlainPort();
  session_.CurrentFile.clear();
  graphs_.UnloadAll();
  session_.AcquisitionMode = true;
  session_.StopRequested = false;
  session_.Times.GraphTimeStep = session_.SamplingRate;
  road_.ForgetValues();
  CopyParameters();
  BuildGraphMap(session_, session_.TotalParameters);
  run([&] { graphs_.CreateGraphWindows(); });
  if (session_.NumberOfParameters > 0 && !CheckHardware()) return;
  ShowReadyToAcquire();
}

void Acquisition::CopyParameters() {
  session_.TotalParameters = static_cast<std::int16_t>(session_.NumberOfParameters + session_.NumberOfFormulae);
  for (int i = 1; i <= session_.NumberOfParameters; ++i) session_.CurrentParameters[i] = session_.Parameters[i];
  for (int i = 1; i <= session_.NumberOfFormulae; ++i)
    session_.CurrentParameters[session_.NumberOfParameters + i] = session_.AdditionalParameters[i];
}

bool Acquisition::CheckHardware() {
  const Driver driver = ProtocolOf(session_).driver;
  ChangeCurrentStatus(session_, view_, text::StatusCheckingHardware);
  view_.SetHourglass(true);
  view_.SetButtonVisible("Stop", true);
  if (driver == Driver::NetworkedPage)
    polling_.CanFetchPage();
  else if (driver == Driver::None)
    Tell(text::NoDriver, text::AcquireDataTitle, BoxIcon::Exclamation);
  else
    CheckPort();
  return !session_.StopRequested;
}

void Acquisition::CheckPort() {
  session_.UseODataCom = ComputeUseODataCom(session_);
  link_.EnablePort();
  if (!session_.UseODataCom) return;  // a polled port that has opened will do
  link_.ClosePlainPort();
  link_.SetODataCom();
  if (link_.ODataCom1.IsOpen() && !WaitForLine() && !session_.StopRequested)
    Tell(text::TimeOutCheckHardware, text::TimeOutTitle, BoxIcon::Critical);
}

void Acquisition::Tell(const MessageText& text, const MessageText& title, BoxIcon icon) {
  platform_.dialogs.Message({text, title, Buttons::Ok, icon});
}

bool Acquisition::WaitForLine() {
  const double told = session_.TheTimeOut * session_.SamplingRate * kSecondsPerDay * 1000;
  const std::int64_t wait = static_cast<std::int64_t>(std::min(told, static_cast<double>(kLongestCheckMs)));
  const std::int64_t start = platform_.clock.Ticks();
  while (link_.LinesSeen() == 0) {
    if (session_.StopRequested || platform_.clock.Ticks() - start >= wait) return false;
    platform_.clock.WaitRound();
  }
  return true;
}

void Acquisition::ShowReadyToAcquire() {
  recorder_.SwitchOff();
  session_.SampleBusy = false;
  session_.SampleSkips = 0;
  timers_.Timer1->SetEnabled(false);
  view_.SetMenuEnabled("mnuAcquireStart", true);
  view_.SetMenuEnabled("mnuAcquireStop", true);
  CaptionStartButton(text::Start, image::PauseStopped);
  view_.SetButtonVisible("Pause", true);
  view_.SetButtonVisible("Stop", true);
  ChangeCurrentStatus(session_, view_, text::StatusReadyToAcquire);
}

// --- Start, Pause, Resume ---

void Acquisition::mnuAcquireStart_Click() {
  RunProcedure({platform_.dialogs, "mnuAcquireStart_Click"}, [&](const Statements& run) {
    if (StatusIs(session_, text::StatusAcquiringData))
      Pause();
    else if (StatusIs(session_, text::StatusReadyToAcquire) || StatusIs(session_, text::StatusAcquiringPaused))
      Start(run);
  });
}

void Acquisition::Start(const Statements& run) {
  if (NeedsFile()) return;
  if (StatusIs(session_, text::StatusReadyToAcquire)) BeginJob(run);
  Run(run);
}

bool Acquisition::NeedsFile() {
  if (!session_.RecordToDB || !session_.CurrentFile.empty()) return false;
  platform_.dialogs.Message({text::FileNameNotSupplied, {}});
  recorder_.mnuFileRecord_Click();
  return session_.CurrentFile.empty();
}

void Acquisition::BeginJob(const Statements& run) {
  session_.StartTime = CutToMinute(platform_.clock.Now());
  if (session_.RecordToDB) run([&] { recorder_.Connect(); });
  run([&] { WriteCurrentVelk(session_, platform_); });
  SetStartTimes();
  WriteTimeAxes();
  session_.AcquireStarted = true;
}

void Acquisition::SetStartTimes() {
  session_.Times.GraphTimeStep = session_.SamplingRate;
  session_.Times.LastPlotTime = session_.Times.GraphEndTime = session_.Times.GraphPageTime = session_.LastPageTime =
      session_.StartTime;
}

void Acquisition::WriteTimeAxes() {
  const double blockEnd = session_.Times.GraphPageTime + session_.SamplingRate * session_.pixelslength;
  for (int k = 1; k <= session_.GraphCount; ++k)
    if (GraphWindow* window = session_.GraphForms[session_.GraphList[k]])
      window->WriteDate(session_.Times.GraphPageTime, blockEnd);
}

void Acquisition::Run(const Statements& run) {
  if (!polling_.OpenPort()) return;
  if (session_.RecordToDB) run([&] { recorder_.Open(); });
  CaptionStartButton(text::Pause, image::PauseRunning);
  ChangeCurrentStatus(session_, view_, text::StatusAcquiringData);
  session_.FormattedLineLength = 0;
  session_.SampleBusy = false;
  session_.SampleSkips = 0;
  timers_.Timer1->SetEnabled(NeedsTicks(session_));  // lines of the line driver bring their own samples
  session_.SampleSeconds = session_.SamplingRate * kSecondsPerDay;
  ReleaseGraphToolbars();
  view_.SetButtonVisible("RecordToDB", true);
  view_.SetButtonEnabled("RecordToDB", true);
  view_.Repaint();
}

void Acquisition::Pause() {
  CaptionStartButton(text::Resume, image::PauseStopped);
  ChangeCurrentStatus(session_, view_, text::StatusAcquiringPaused);
  session_.SampleSeconds = session_.SamplingRate * kSecondsPerDay;
  timers_.Timer1->SetEnabled(false);
  ReleaseGraphToolbars();
}

void Acquisition::CaptionStartButton(const MessageText& caption, int image) {
  view_.SetButtonImage("Pause", image);
  view_.SetButtonToolTip("Pause", caption);
  view_.SetMenuCaption("mnuAcquireStart", caption);
}

void Acquisition::ReleaseGraphToolbars() {
  for (int k = 1; k <= session_.GraphCount; ++k)
    if (GraphWindow* window = session_.GraphForms[session_.GraphList[k]]) window->EnableToolbar();
}

// --- Stop ---

void Acquisition::mnuAcquireStop_Click() {
  RunProcedure({platform_.dialogs, "mnuAcquireStop_Click"}, [&](const Statements& run) {
    session_.AcquireStarted = false;
    run([&] { link_.ClosePlainPort(); });
    timers_.Timer1->SetEnabled(false);
    for (const char* button : {"Pause", "Stop", "RecordToDB"}) view_.SetButtonVisible(button, false);
    session_.RecordToDB = false;
    view_.SetButtonImage("RecordToDB", image::RecordOff);
    session_.StopRequested = true;
    // A sample that is under way still holds the log: it closes it when it leaves.
    if (!road_.IsRunning()) recorder_.Finish();
    CaptionStartButton(text::Start, image::PauseStopped);
    ChangeCurrentStatus(session_, view_, text::StatusReady);
    graphs_.UnloadAll();
  });
}

// --- The recording button ---

void Acquisition::RecordToDB_Click() {
  RunProcedure({platform_.dialogs, "Toolbar1_ButtonClick"}, [&](const Statements& run) {
    if (session_.RecordToDB) return recorder_.SwitchOff();
    const bool running = StatusIs(session_, text::StatusAcquiringData);
    if (!running && !StatusIs(session_, text::StatusAcquiringPaused)) return;
    if (running) Pause();
    try {
      recorder_.ChooseAndBegin(run);
      if (session_.RecordToDB) run([&] { WriteCurrentVelk(session_, platform_); });
    } catch (const LeaveProcedure&) {
      // Without a log the job goes on as it was before the button was pressed.
    }
    if (running && StatusIs(session_, text::StatusAcquiringPaused)) Run(run);
    for (GraphWindow* window : session_.GraphForms)
      if (window) window->RefreshForm();
  });
}

}  // namespace velk
