#include "core/recorder.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "base/numbers.h"
#include "base/scope.h"
#include "base/text.h"
#include "core/texts.h"
#include "log/begin_recording.h"
#include "log/log_check.h"
#include "log/record_file.h"
#include "log/texts.h"
#include "model/texts.h"

namespace velk {

namespace {

/// Names up to this length are no file: the operator has cancelled.
constexpr std::size_t kShortestName = 3;
/// Characters of a name's extension, "mdb", which the first page that is turned takes away.
constexpr std::size_t kExtension = 3;

/// What takes the place of a name's extension: three digits, more from page 1,000 on.
std::string PagesText(std::int16_t pages) {
  return Format(static_cast<double>(pages), "000");
}

/// The rows of a job that were appended to a file; it was let go of.
void TellWhereUnreadable(const JobRows& rows, const Platform& platform) {
  if (rows.path.empty() || CanReadBack(rows, platform.clock)) return;
  platform.dialogs.Message(
      {text::UnreadableRowsBefore + rows.path + text::UnreadableRowsAfter, "", Buttons::Ok, BoxIcon::Exclamation});
}

}  // namespace

Recorder::Recorder(Session& session, const Platform& platform, MainView& view, LogWriter& log, JobFiles& files)
    : session_(session), platform_(platform), view_(view), log_(log), files_(files) {
}

void Recorder::mnuFileRecord_Click() {
  velk::mnuFileRecord_Click(session_, platform_, view_, files_);
}

void Recorder::Connect() {
  const JobRows before = log_.RowsOfJob();
  session_.Data.asksForReport = true;
  const OnLeaving asked([this] { session_.Data.asksForReport = false; });
  BeginRecording(session_, files_, log_, session_.CurrentFile);
  // Behind the first rows of the new file, which wait for no box.
  if (before.path != log_.RowsOfJob().path)
    platform_.clock.Post([before, platform = platform_] { TellWhereUnreadable(before, platform); });
  view_.SetMenuEnabled("mnuViewSummaryReport", true);
  failing_ = false;
  missingRows_ = session_.Data.rows = 0;
  session_.Data.recordingSince = platform_.clock.Now();
  session_.Data.lastRow = platform_.clock.Ticks();
  ShowMissingRows();
}

void Recorder::Open() {
  log_.OpenLogRecordset();
}

void Recorder::ChooseAndBegin(const Statements& run) {
  session_.CurrentFile.clear();
  mnuFileRecord_Click();
  if (session_.CurrentFile.size() <= kShortestName) return SwitchOff();
  try {
    run([&] {
      Connect();
      log_.ReadSummaryInclusion();
      Open();
    });
  } catch (const LeaveProcedure&) {
    session_.CurrentFile.clear();
    SwitchOff();
    throw;
  }
  session_.RecordToDB = true;
  view_.SetButtonImage("RecordToDB", image::RecordOn);
  view_.SetMenuEnabled("mnuViewSummaryReport", true);
}

void Recorder::SwitchOff() {
  session_.RecordToDB = false;
  view_.SetButtonImage("RecordToDB", image::RecordOff);
  log_.CloseLogRecordset();
}

void Recorder::AppendRow(const LogRow& row, bool firstTry) {
  if (!session_.RecordToDB) return;
  try {
    log_.AppendLogRow(row);
  } catch (const RuntimeError&) {
    if (firstTry) ++missingRows_;
    ShowMissingRows();
    if (firstTry && failing_) return;
    failing_ = true;
    throw;
  }
  failing_ = false;
  ++session_.Data.rows;
  lastRow_ = row;
  lastRow_.key = session_.Data.rows;
  session_.Data.lastRow = platform_.clock.Ticks();
  if (!firstTry) --missingRows_;
  if (!firstTry) ShowMissingRows();
}

void Recorder::AppendRowQuietly(const LogRow& row) {
  try {
    AppendRow(row, true);
  } catch (const RuntimeError&) {
    // Counted already; the box that is about to come tells of the earlier failure.
  }
}

void Recorder::FollowPage(const Statements& run) {
  if (session_.Times.GraphPageTime == session_.LastPageTime) return;
  const std::string pagesBefore = PagesText(session_.PageCount);
  constexpr std::int32_t kMost = std::numeric_limits<std::int16_t>::max();
  const std::int32_t turned = std::max(std::exchange(session_.PagesTurned, 0), 1);
  session_.PageCount = static_cast<std::int16_t>(std::min(session_.PageCount + turned, kMost));
  session_.LastPageTime = session_.Times.GraphPageTime;
  // One question at a time: samples that overrun it only count the page.
  if (session_.CurrentFile.empty() && !asking_) AskForFile(run);
  if (session_.CurrentFile.empty()) return;
  // Only the name changes, the open log stays the same: the suffix tells the operator how many pages it holds.
  const bool hasSuffix = session_.CurrentFile.ends_with(pagesBefore);
  const std::size_t suffix = hasSuffix ? pagesBefore.size() : kExtension;
  const std::size_t length = CharacterCount(session_.CurrentFile);
  session_.CurrentFile = Left(session_.CurrentFile, length - suffix) + PagesText(session_.PageCount);
  ShowFile();
}

void Recorder::AskForFile(const Statements& run) {
  asking_ = true;
  const OnLeaving done([this] { asking_ = false; });
  const Answer answer = platform_.dialogs.Message({text::SaveDataNow, "", Buttons::YesNo, BoxIcon::Question});
  if (answer != Answer::Yes) return;
  if (view_.ButtonImage("RecordToDB") == image::RecordOff)
    ChooseAndBegin(run);
  else
    SwitchOff();
}

void Recorder::Finish() {
  const JobRows job = log_.RowsOfJob();
  RunProcedure({platform_.dialogs, "CloseLogRecordset"}, [&](const Statements& run) {
    run([&] {
      log_.CloseLogRecordset();
      log_.Finalise();
    });
    TellWhereUnreadable(job, platform_);
  });
}

void Recorder::ShowFile() {
  view_.SetPanel(2, text::CurrentFile + session_.CurrentFile);
}

void Recorder::ShowMissingRows() {
  view_.SetPanel(
      5, missingRows_ == 0 ? OperatorText() : text::RowsMissing + NumberText(static_cast<double>(missingRows_)));
}

}  // namespace velk
