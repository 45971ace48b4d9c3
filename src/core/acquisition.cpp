#include "core/acquisition.h"

#include <algorithm>
#include <utility>

#include "base/dates.h"
#include "base/scope.h"
#include "core/alarms.h"
#include "core/job_start.h"
#include "core/playback/file_channels.h"
#include "core/texts.h"
#include "log/current_velk.h"
#include "model/graph_map.h"
#include "model/status.h"
#include "model/texts.h"

namespace velk {

namespace {

constexpr double kSecondsPerDay = 86400;
constexpr int kRestBeforeCloseMs = 500;

}  // namespace

Acquisition::Acquisition(Session& session, const Platform& platform, MainView& view, GraphWindows& graphs, Link& link,
                         Recorder& recorder, SampleRoad& road, SampleSources& sources, Playback& playback)
    : session_(session),
      platform_(platform),
      view_(view),
      graphs_(graphs),
      link_(link),
      recorder_(recorder),
      road_(road),
      sources_(sources),
      playback_(playback) {
  sources_.onTimeOut = [this] { PauseAfterTimeOut(); };
}

Acquisition::~Acquisition() {
  sources_.onTimeOut = nullptr;
}

// --- By status ---

const Acquisition::StatusWork Acquisition::kStatusWork[] = {
    {text::StatusReady, nullptr, &Acquisition::StopJob},
    {text::StatusCheckingHardware, nullptr, &Acquisition::StopJob},
    {text::StatusReadyToAcquire, &Acquisition::Start, &Acquisition::StopJob},
    {text::StatusAcquiringData, &Acquisition::Pause, &Acquisition::StopJob},
    {text::StatusAcquiringPaused, &Acquisition::Resume, &Acquisition::StopJob},
    {text::StatusReadyToPlayback, &Acquisition::StartPlayback, &Acquisition::StopPlayback},
    {text::StatusPlayingBack, &Acquisition::PausePlayback, &Acquisition::StopPlayback},
    {text::StatusPlayingBackPaused, &Acquisition::ResumePlayback, &Acquisition::StopPlayback},
};

const Acquisition::StatusWork* Acquisition::PresentWork() const {
  const auto* const found = std::find_if(std::begin(kStatusWork), std::end(kStatusWork),
                                         [this](const StatusWork& row) { return StatusIs(session_, row.status); });
  return found == std::end(kStatusWork) ? nullptr : found;
}

void Acquisition::mnuAcquireStart_Click() {
  RunProcedure({platform_.dialogs, "mnuAcquireStart_Click"}, [&](const Statements& run) {
    const StatusWork* const present = PresentWork();
    if (present != nullptr && present->start != nullptr) (this->*present->start)(run);
  });
}

void Acquisition::mnuAcquireStop_Click() {
  RunProcedure({platform_.dialogs, "mnuAcquireStop_Click"}, [&](const Statements& run) {
    if (const StatusWork* const present = PresentWork()) (this->*present->stop)(run);
  });
}

// --- Connect ---

void Acquisition::mnuAcquireConnect_Click() {
  const bool before = std::exchange(connecting_, true);
  const OnLeaving left([&] { connecting_ = before; });
  const bool done =
      RunProcedure({platform_.dialogs, "mnuAcquireConnect_Click"}, [&](const Statements& run) { Connect(run); });
  if (!done) view_.SetHourglass(false);
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
  link_.ForgetDevice();
  session_.CurrentFile.clear();
  view_.SetPanel(2, text::CurrentFile);
  graphs_.UnloadAll();
  ClearAlarms(session_, view_);
  LeaveFile(session_);
  sources_.Current().Prepare();
  session_.AcquisitionMode = true;
  session_.StopRequested = false;
  session_.Times.GraphTimeStep = session_.SamplingRate;
  session_.Data = {};  // until a first line has been accepted there are no values to hold
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
  ChangeCurrentStatus(session_, view_, text::StatusCheckingHardware);
  view_.SetHourglass(true);
  view_.SetButtonVisible("Stop", true);
  sources_.Current().Check();
  return !session_.StopRequested;
}

void Acquisition::ShowReadyToAcquire() {
  recorder_.SwitchOff();
  session_.SampleBusy = false;
  session_.SampleSkips = 0;
  sources_.Current().Pause();
  view_.SetMenuEnabled("mnuAcquireStart", true);
  view_.SetMenuEnabled("mnuAcquireStop", true);
  CaptionStartButton(view_, text::Start, image::PauseStopped);
  view_.SetButtonVisible("Pause", true);
  view_.SetButtonVisible("Stop", true);
  ChangeCurrentStatus(session_, view_, text::StatusReadyToAcquire);
  if (onJob) onJob(true);
}

// --- Start, Pause, Resume ---

void Acquisition::Start(const Statements& run) {
  // The question for a file lets events run: Stop may have come.
  if (NeedsFile() || !StatusIs(session_, text::StatusReadyToAcquire)) return;
  BeginJob(run);
  Run(run);
}

void Acquisition::Resume(const Statements& run) {
  if (NeedsFile() || !StatusIs(session_, text::StatusAcquiringPaused)) return;
  Run(run);
}

bool Acquisition::NeedsFile() {
  if (!session_.RecordToDB || !session_.CurrentFile.empty()) return false;
  platform_.dialogs.Message({text::FileNameNotSupplied, {}});
  recorder_.mnuFileRecord_Click();
  return session_.CurrentFile.empty();
}

void Acquisition::BeginJob(const Statements& run) {
  const double start = CutToMinute(platform_.clock.Now());
  if (session_.RecordToDB) run([&] { recorder_.Connect(); });
  run([&] { WriteCurrentVelk(session_, platform_); });
  SetStartTimes(session_, start, session_.SamplingRate);
  WriteTimeAxes(session_);
  session_.AcquireStarted = true;
}

void Acquisition::Run(const Statements& run) {
  if (!sources_.Current().Open()) return;
  if (session_.RecordToDB) run([&] { recorder_.Open(); });
  CaptionStartButton(view_, text::Pause, image::PauseRunning);
  ChangeCurrentStatus(session_, view_, text::StatusAcquiringData);
  session_.FormattedLineLength = 0;
  session_.Data.pausedSince = 0;
  session_.Data.lastLine = session_.Data.lastSample = session_.Data.lastRow = platform_.clock.Ticks();
  session_.SampleBusy = false;
  session_.SampleSkips = 0;
  sources_.Current().Start();
  session_.SampleSeconds = session_.SamplingRate * kSecondsPerDay;
  ReleaseGraphToolbars(session_);
  view_.SetButtonVisible("RecordToDB", true);
  view_.SetButtonEnabled("RecordToDB", true);
  view_.Repaint();
  if (onAcquiring) onAcquiring();
}

void Acquisition::Pause(const Statements&) {
  CaptionStartButton(view_, text::Resume, image::PauseStopped);
  ChangeCurrentStatus(session_, view_, text::StatusAcquiringPaused);
  session_.Data.pausedSince = platform_.clock.Now();
  session_.SampleSeconds = session_.SamplingRate * kSecondsPerDay;
  sources_.Current().Pause();
  ReleaseGraphToolbars(session_);
  if (onAcquiring) onAcquiring();
}

void Acquisition::PauseAfterTimeOut() {
  recorder_.Close();
  platform_.clock.WaitMilliseconds(kRestBeforeCloseMs);
  if (!StatusIs(session_, text::StatusAcquiringData)) return;
  sources_.Current().End();
  view_.Repaint();
  RunProcedure({platform_.dialogs, "mnuAcquireStart_Click"}, [this](const Statements& run) { Pause(run); });
}

// --- Stop ---

void Acquisition::StopJob(const Statements& run) {
  session_.AcquireStarted = false;
  session_.Data.pausedSince = 0;
  run([&] { sources_.Current().End(); });
  for (const char* button : {"Pause", "Stop", "RecordToDB"}) view_.SetButtonVisible(button, false);
  session_.RecordToDB = false;
  view_.SetButtonImage("RecordToDB", image::RecordOff);
  session_.StopRequested = true;
  if (onEnding) onEnding();
  // A sample that is under way still holds the log: it closes it when it leaves.
  if (!road_.IsRunning()) recorder_.Finish();
  CaptionStartButton(view_, text::Start, image::PauseStopped);
  ChangeCurrentStatus(session_, view_, text::StatusReady);
  ClearAlarms(session_, view_);
  if (onJob) onJob(false);
  graphs_.UnloadAll();
}

// --- The recording button ---

void Acquisition::RecordToDB_Click() {
  RunProcedure({platform_.dialogs, "Toolbar1_ButtonClick"}, [&](const Statements& run) {
    if (session_.RecordToDB) return recorder_.SwitchOff();
    const bool running = StatusIs(session_, text::StatusAcquiringData);
    if (!running && !StatusIs(session_, text::StatusAcquiringPaused)) return;
    if (running) Pause(run);
    try {
      recorder_.ChooseAndBegin(run);
      if (session_.RecordToDB) run([&] { WriteCurrentVelk(session_, platform_); });
    } catch (const LeaveProcedure&) {
      // Without a log the job goes on as it was before the button was pressed.
    }
    if (running && StatusIs(session_, text::StatusAcquiringPaused)) Run(run);
    ForEachGraphWindow(session_, [](GraphWindow& window) { window.RefreshForm(); });
  });
}

}  // namespace velk
