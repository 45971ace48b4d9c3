#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "log/log_reader.h"
#include "log/log_writer.h"
#include "log/summary_rows.h"
#include "model/session.h"
#include "platform/platform.h"

namespace velk {

/// The log that the session's charts and its summary report look into: the one that is recorded to, or else the one
/// that plays. Rows are read through connections of its own; the report of the log that is recorded to is read and
/// written through the one that writes the rows.
class OpenLog {
 public:
  OpenLog(const Session& session, const Platform& platform, LogWriter& writer)
      : session_(session), platform_(platform), writer_(writer) {}

  /// Empty where no log is open.
  std::string Path() const;
  bool IsOpen() const { return !Path().empty(); }

  /// The reader of the open log, shared by all charts: whoever reads chooses its channels first. They are those of the
  /// session: by their places in the log that is recorded to, by their names in the one that plays. Raises Database
  /// where none is open, and what the opening of the file raises.
  LogReader& Reader();
  /// What the open log calls its channels, in order: the session's may have been renamed. Raises as Reader does.
  std::vector<std::string> Channels() const;
  /// Lets go of the file, until it is read again: the charts are gone.
  void Release() { reader_.reset(); }

  /// The comments of the open log's report that pass a filter; none without a log.
  std::vector<ReportComment> Comments(const RowFilter& filter);
  /// Appends a line to the report of the open log, under the present time of the clock; an empty comment none.
  void AddSummaryRow(const std::string& comment);

  /// Called where a row of a file was deleted or has come back.
  std::function<void()> onRowsChanged;
  /// Called behind each comment, entered or not: who shows the report reads it anew.
  std::function<void()> onReportChanged;

  /// The report of a file, open or not.
  static SummaryLines Report(const std::string& path);
  /// Gives a log without a report an empty one: of its channels those that the session includes, and the session's
  /// additional fields. Raises as Edit does; what has a report is not touched.
  void EnsureReport(const std::string& path) const;
  /// Runs `change` over the connection that writes to a file: that of the recording, or else one that is open for this
  /// moment, under the lock of a recording. Raises FileAlreadyOpen where another program records to it.
  void Edit(const std::string& path, const std::function<void(const std::shared_ptr<Connection>& log)>& change) const;
  /// A row of logData was deleted or has come back: what was read of its file is not kept.
  void FollowRow(const std::string& path, std::int64_t key, bool isThere);
  /// Sets an additional field of a line of its report. Raises FileAlreadyOpen where another program records to it.
  void EnterSummaryField(const std::string& path, std::int64_t key, const std::string& column,
                         std::optional<double> value) const;

 private:
  const Session& session_;
  Platform platform_;
  LogWriter& writer_;
  std::optional<LogReader> reader_;
  bool readerPlays_ = false;  ///< it is that of a file that plays
};

}  // namespace velk
