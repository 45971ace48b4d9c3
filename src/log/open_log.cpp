#include "log/open_log.h"

#include "base/errors.h"
#include "log/log_schema.h"
#include "log/playback_file.h"
#include "log/recording_lock.h"
#include "log/summary_report.h"
#include "log/texts.h"
#include "model/status.h"
#include "model/texts.h"
#include "platform/loop/clock.h"

namespace velk {

namespace {

bool Plays(const Session& session) {
  return StatusIs(session, text::StatusReadyToPlayback) || StatusIs(session, text::StatusPlayingBack) ||
         StatusIs(session, text::StatusPlayingBackPaused);
}

}  // namespace

std::string OpenLog::Path() const {
  if (const auto writing = writer_.Writing()) return writing->Path();
  return Plays(session_) ? session_.LogFileInUse : std::string();
}

LogReader& OpenLog::Reader() {
  const std::string path = Path();
  if (path.empty()) throw RuntimeError(ErrorNumber::Database, text::LogNotOpen);
  const bool plays = writer_.Writing() == nullptr;
  if (reader_ && reader_->Path() == path && readerPlays_ == plays) return *reader_;
  reader_.emplace(plays ? ReaderOfPlayed(path, platform_.language) : LogReader(path));
  readerPlays_ = plays;
  return *reader_;
}

std::vector<ReportComment> OpenLog::Comments(const RowFilter& filter) {
  // By the connection that stands: each chart asks at each of its pages, and to open a file takes far longer.
  const auto writing = writer_.Writing();
  if (writing && !writing->HasMoved()) return ReadComments(*writing, filter);
  return IsOpen() ? Reader().Comments(filter) : std::vector<ReportComment>();
}

void OpenLog::AddSummaryRow(const std::string& comment) {
  if (comment.empty()) return;
  const std::vector<std::string> channels = Channels();
  Edit(Path(), [&](const auto& log) { AppendSummaryRow(log, session_, channels, platform_.clock.Now(), comment); });
}

std::vector<std::string> OpenLog::Channels() const {
  const std::string path = Path();
  if (path.empty()) throw RuntimeError(ErrorNumber::Database, text::LogNotOpen);
  if (writer_.Writing()) return writer_.ChannelsOfLog();
  std::vector<std::string> names;
  for (const Parameter& channel : ReadLogParameters(path, platform_.language).channels) names.push_back(channel.name);
  return names;
}

SummaryLines OpenLog::Report(const std::string& path) {
  return ReadSummaryReport(*Connection::Open(path, OpenMode::ReadOnly));
}

void OpenLog::EnsureReport(const std::string& path) const {
  const auto held = [](Connection& log) { return Catalog(log).Find(kSummaryReport).has_value(); };
  if (held(*Connection::Open(path, OpenMode::ReadOnly))) return;
  Edit(path, [&](const auto& log) { MakeReport(*log, session_, platform_.language); });
}

void OpenLog::EnterSummaryField(const std::string& path, std::int64_t key, const std::string& column,
                                std::optional<double> value) const {
  Edit(path, [&](const auto& log) { velk::EnterSummaryField(log, key, column, value); });
}

void OpenLog::FollowRow(const std::string& path, std::int64_t key, bool isThere) {
  const auto writing = writer_.Writing();
  if (writing && writing->IsSameFile(path)) writer_.FollowRow(key, isThere);
  if (reader_) reader_->Refresh();
  if (onRowsChanged) onRowsChanged();
}

void OpenLog::Edit(const std::string& path,
                   const std::function<void(const std::shared_ptr<Connection>& log)>& change) const {
  const auto writing = writer_.Writing();
  if (writing && writing->IsSameFile(path)) {
    writing->CheckInPlace();
    return change(writing);
  }
  // Opened first: beside a lock it would pass for a log whose recording has its room already.
  const auto log = Connection::Open(path, OpenMode::ReadWrite);
  const auto lock = LockForRecording(path);
  change(log);
}

}  // namespace velk
