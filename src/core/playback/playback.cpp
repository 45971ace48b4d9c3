#include "core/playback/playback.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "base/dates.h"
#include "base/errors.h"
#include "base/scope.h"
#include "core/alarms.h"
#include "core/job_start.h"
#include "core/sample_values.h"
#include "core/texts.h"
#include "log/texts.h"
#include "model/graph_map.h"
#include "model/status.h"
#include "model/texts.h"
#include "platform/files/file_errors.h"

namespace velk {

namespace {

constexpr double kSecondsOfADay = 86400;
constexpr int kMostSpeed = 1000;
constexpr int kMillisecondsPerSecond = 1000;
/// Rows that are made up for are played for so long before events of all kinds have their turn again.
constexpr std::int64_t kAtOnceMs = 10;

std::int16_t SpeedInRange(int speed) {
  return static_cast<std::int16_t>(std::clamp(speed, 1, kMostSpeed));
}

}  // namespace

Playback::Playback(Session& session, const Platform& platform, MainTimers& timers, MainView& view, GraphWindows& graphs)
    : session_(session),
      platform_(platform),
      timers_(timers),
      view_(view),
      graphs_(graphs),
      plotter_(session, view),
      tickReport_{platform_.dialogs, "Timer3_Timer", text::PlaybackError} {
  timers_.Timer3->SetHandler([this] { OnTick(); });
}

Playback::~Playback() {
  Close();
  timers_.Timer3->SetHandler(nullptr);
}

// --- A file ---

void Playback::mnuFilePlayback_Click() {
  if (!StatusIs(session_, text::StatusReady)) {
    platform_.dialogs.Message(
        {text::UnableToPlayback + session_.CurrentStatus, text::PlaybackMenu, Buttons::Ok, BoxIcon::Exclamation});
    return;
  }
  ++running_;
  const OnLeaving left([this] { --running_; });
  const auto chosen =
      platform_.dialogs.OpenFile({text::PlaybackFileTitle, text::DataFilesFilter, session_.DefaultDirectory});
  if (!chosen || chosen->empty() || !StatusIs(session_, text::StatusReady)) return;
  session_.DefaultDirectory = FolderOf(*chosen);
  if (FileExists(*chosen)) ConfirmFile(*chosen);
}

void Playback::ConfirmFile(const std::string& path) {
  const std::string logBefore = std::exchange(session_.LogFileInUse, path);
  view_.SetPanel(2, text::CurrentFile + path);
  ChangeCurrentStatus(session_, view_, text::StatusConfirmingFileFormat);
  bool accepted = false;
  const Report report{platform_.dialogs, "mnuFilePlayback_Click", text::OpenPlaybackError};
  RunProcedure(report, [&](const Statements& run) {
    if (onChosen) run([&] { onChosen(path); });
    PlaybackFile file = run([&] { return OpenForPlayback(path, platform_.language); });
    if (file.beginning.empty() || file.parameters.channels.empty()) {
      platform_.dialogs.Message({text::NothingToPlayBefore + path + text::NothingToPlayAfter, text::PlaybackMenu,
                                 Buttons::Ok, BoxIcon::Exclamation});
      return;
    }
    LogHasGraphSettings(file.parameters, platform_.dialogs);
    Accept(run, std::move(file));
    accepted = true;
  });
  if (!accepted) Refuse(logBefore);
}

void Playback::Accept(const Statements& run, PlaybackFile file) {
  session_.AcquisitionMode = false;
  reader_ = std::move(file.reader);
  SetOldPlayGraphSettings(session_);
  OverlayFileChannels(session_, file.parameters);
  InitialisePlayback(run, file);
  SetupPlayBackParam(session_);
  ShowControls();
}

void Playback::InitialisePlayback(const Statements& run, const PlaybackFile& file) {
  const double first = file.beginning.front().time;
  const double second = file.beginning.back().time;
  unit_.KeepCounts(session_);
  session_.SampleSeconds = std::max(1.0, static_cast<double>(SecondsBetween(first, second)));
  session_.PlaybackSamplingRate = session_.SampleSeconds / kSecondsOfADay;
  SetStartTimes(session_, CutToMinute(first), session_.PlaybackSamplingRate);
  session_.PlaybackParameterCount = static_cast<std::int16_t>(file.parameters.channels.size());
  session_.TotalParameters = session_.NumberOfParameters = session_.PlaybackParameterCount;
  session_.CurrentValue.fill(0);
  session_.Data.hasValues = false;
  session_.AlarmTriggered.fill(false);
  HideAlarmsIfNone(session_, view_);
  HideBlank(session_, session_.TotalParameters);
  run([&] { RebuildGraphs(session_, graphs_); });
  session_.PlaybackStopRequested = false;
  view_.SetPanel(2, text::CurrentFile + session_.LogFileInUse);
  ChangeCurrentStatus(session_, view_, text::StatusReadyToPlayback);
}

void Playback::ShowControls() {
  CaptionStartButton(view_, text::Start, image::PauseStopped);
  view_.SetButtonVisible("Pause", true);
  view_.SetButtonVisible("Stop", true);
  view_.SetButtonVisible("RecordToDB", false);
  view_.SetButtonVisible("ScrollBar", true);
  view_.SetMenuEnabled("mnuToolsLiveSurvey", true);
  SetSpeed(session_.PlaybackSpeed);
}

void Playback::Refuse(const std::string& logBefore) {
  Close();
  const bool hadItsChannels = session_.UnitParameters.has_value();
  unit_.GiveBack(session_);
  if (hadItsChannels) LeaveFile(session_);
  session_.LogFileInUse = logBefore;
  view_.SetPanel(2, logBefore.empty() ? OperatorText() : text::CurrentFile + logBefore);
  ChangeCurrentStatus(session_, view_, text::StatusReady);
}

void Playback::FollowRows() {
  if (reader_) reader_->Refresh();
  place_.CountAnew();
}

// --- Start, Pause, Resume, Stop ---

void Playback::Start(const Statements& run) {
  run([&] {
    rows_ = reader_->Rows();
    atEnd_ = !rows_->First();
  });
  if (!atEnd_) run([&] { CheckHasTime(rows_->Row(), reader_->Path()); });
  unit_.KeepValues(session_);
  session_.Data.hasValues = false;
  const double start = atEnd_ ? session_.StartTime : CutToMinute(rows_->Row().time);
  SetStartTimes(session_, start, session_.PlaybackSamplingRate);
  WriteTimeAxes(session_);
  session_.AcquireStarted = true;
  session_.PlaybackStopRequested = false;
  place_.Begin();
  Play();
}

void Playback::Resume() {
  Play();
}

void Playback::Play() {
  CaptionStartButton(view_, text::Pause, image::PauseRunning);
  ChangeCurrentStatus(session_, view_, text::StatusPlayingBack);
  timers_.Timer3->SetEnabled(true);
  SetSpeed(session_.PlaybackSpeed);
  ReleaseGraphToolbars(session_);
}

void Playback::Pause() {
  CaptionStartButton(view_, text::Resume, image::PauseStopped);
  ChangeCurrentStatus(session_, view_, text::StatusPlayingBackPaused);
  timers_.Timer3->SetEnabled(false);
  ReleaseGraphToolbars(session_);
}

void Playback::Stop() {
  if (finishing_) return;
  session_.AcquireStarted = false;
  for (const char* button : {"Pause", "Stop", "RecordToDB"}) view_.SetButtonVisible(button, false);
  session_.PlaybackStopRequested = true;
  if (!timers_.Timer3->Enabled()) Finish(text::PlaybackStopped);
}

void Playback::HScroll1_Change(int position) {
  SetSpeed(position);
}

void Playback::SetSpeed(int speed) {
  session_.PlaybackSpeed = SpeedInRange(speed);
  view_.ShowSpeed(session_.PlaybackSpeed);
  timers_.Timer3->SetInterval(kMillisecondsPerSecond / session_.PlaybackSpeed);
  pace_.Begin(platform_.clock.Ticks(), timers_.Timer3->Interval());
}

// --- Rows ---

/// Ticks that come while a row is played, or while its box stands, are nobody's: the row has to be done with first.
void Playback::OnTick() {
  const std::int64_t began = platform_.clock.Ticks();
  for (std::int64_t now = began; now - began < kAtOnceMs; now = platform_.clock.Ticks()) {
    if (running_ > 0 || !timers_.Timer3->Enabled() || !pace_.TakeRow(now)) return;
    Timer3_Timer();
  }
}

void Playback::Timer3_Timer() {
  ++running_;
  const OnLeaving left([this] { --running_; });
  if (timers_.Timer5->Enabled()) {
    timers_.Timer5->SetEnabled(false);
    timer5Rests_ = true;
  }
  if (!RunProcedure(tickReport_, [this](const Statements& run) { PlayRow(run); }))
    session_.PlaybackStopRequested = true;
}

void Playback::PlayRow(const Statements& run) {
  if (EndsHere(run)) return;
  // A copy: Stop may let go of the rows while events run.
  const LogRow row = rows_->Row();
  run([&] { CheckHasTime(row, reader_->Path()); });
  view_.SetPanel(3, FormatDate(row.time, "dd-mmm-yyyy"));
  view_.SetPanel(4, FormatDate(row.time, "hh:mm:ss"));
  session_.PlaybackRow = row.key;
  session_.SampleTime = row.time;
  run([&] { TakeValues(row); });
  session_.Data.hasValues = true;
  DrawRow(run);
  if (!rows_) return;  // a box of a window stood, and the program ends
  run([&] { view_.SetPanel(6, place_.Text(*reader_, platform_.clock.Ticks())); });
  platform_.clock.Yield();
  if (rows_ && onRow) onRow(row);
  if (rows_) atEnd_ = !run([&] { return rows_->Next(); });
}

bool Playback::EndsHere(const Statements& run) {
  // What another program has recorded meanwhile is played too.
  if (atEnd_ && !session_.PlaybackStopRequested) atEnd_ = !run([&] { return rows_->Next(); });
  if (!atEnd_ && !session_.PlaybackStopRequested) return false;
  Finish(atEnd_ ? text::EndOfPlayback : text::PlaybackStopped);
  return true;
}

/// The values of a row are scaled again, on top of what was in force when it was recorded. All or nothing. A value that
/// the row leaves out is none, and no part of the average.
void Playback::TakeValues(const LogRow& row) {
  std::array<float, kSlots> scaled{};
  for (std::size_t i = 1; i <= row.values.size(); ++i) {
    const Parameter& channel = session_.CurrentParameters[i];
    const double value = row.values[i - 1];
    scaled[i] = std::isnan(value) ? static_cast<float>(value) : ToSingle(value * channel.Gain + channel.Offset);
  }
  for (std::size_t i = 1; i <= row.values.size(); ++i)
    session_.CurrentValue[i] = std::isnan(scaled[i]) ? scaled[i] : Smooth(session_, static_cast<int>(i), scaled[i]);
}

void Playback::DrawRow(const Statements& run) {
  const double rate = session_.PlaybackSamplingRate;
  plotter_.Compute(run);
  plotter_.Draw(run, {.samplingRate = rate,
                      .movesScrollBar = true,
                      .isComputed = true,
                      .catchesUp = true,
                      .beginsAnew = place_.IsAtFirstRow()});
  place_.Step();
  if (session_.SampleTime >= session_.Times.GraphEndTime) plotter_.ReadPageStart();
  plotter_.MoveTimeBase(rate);
}

// --- The end ---

void Playback::Close() {
  timers_.Timer3->SetEnabled(false);
  rows_.reset();
  reader_.reset();
}

void Playback::Finish(const MessageText& said) {
  finishing_ = true;
  const OnLeaving left([this] { finishing_ = false; });
  session_.PlaybackStopRequested = false;
  session_.AcquireStarted = false;
  Close();
  if (onEnd) onEnd();
  platform_.dialogs.Message({said, text::PlaybackMenu});
  ReturnToReady();
}

void Playback::ReturnToReady() {
  unit_.GiveBack(session_);
  if (std::exchange(timer5Rests_, false)) timers_.Timer5->SetEnabled(true);
  for (const char* button : {"Pause", "Stop", "ScrollBar"}) view_.SetButtonVisible(button, false);
  CaptionStartButton(view_, text::Start, image::PauseStopped);
  view_.SetPanel(3, {});
  view_.SetPanel(6, {});
  ChangeCurrentStatus(session_, view_, text::StatusReady);
  ReleaseGraphToolbars(session_);  // they follow the log, which is open no more
}

}  // namespace velk
