#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "log/current_velk.h"
#include "log/log_check.h"
#include "log/log_row.h"
#include "log/told_once.h"
#include "model/session.h"
#include "platform/database/recordset.h"
#include "platform/files/file_lock.h"
#include "platform/platform.h"

namespace velk {

/// Writes the log of a job: one database file with the samples (logData), the graph settings that play it back without
/// this machine's, and the summary report. One connection does all the writing to the open log. It asks the operator
/// nothing. Failures raise a RuntimeError whose text names the file, unless told otherwise.
class LogWriter {
 public:
  LogWriter(Session& session, const Platform& platform);
  /// Finalises what is still open; a failure leaves the file as a killed program would: whole, with its write-ahead
  /// log.
  ~LogWriter();
  LogWriter(const LogWriter&) = delete;
  LogWriter& operator=(const LogWriter&) = delete;

  /// Makes a log for the present channels, with a report of those that IncludeInSummary says. Fields of
  /// CurrentParameters that are empty get their defaults. All or nothing: until the file is complete there is none of
  /// that name, and what stands there already is never touched (FileAlreadyExists).
  void CreateLogFile(const std::string& path);
  /// Makes a file the log: from here on each row is on the disk before AppendLogRow returns. The log before it is
  /// finalised. Raises FileAlreadyOpen where another program records to it.
  void ConnectLogFile(const std::string& path);
  bool IsConnected() const { return connection_ != nullptr; }
  /// Called while the connected log is still open, ahead of its end: whoever works beside the writer finishes.
  std::function<void()> onLeaving;
  /// The connection that does all the writing to the connected log; null where there is none.
  std::shared_ptr<Connection> Writing() const { return connection_; }

  /// Readies the connected log for rows; raises where the table has no room for the channels.
  void OpenLogRecordset();
  /// No more rows until OpenLogRecordset; the log stays connected. Safe when there is no recordset.
  void CloseLogRecordset();
  bool RecordsetIsOpen() const { return recordset_.has_value(); }

  /// Appends a row, whose time is cut to whole seconds; its key is the file's to give. Does nothing while LogFileInUse
  /// is the translated "Failed". Where it raises, no row was written, and it can be called again.
  void AppendLogRow(const LogRow& row);

  /// The rows that were appended to the connected log since it was connected.
  const JobRows& RowsOfJob() const { return job_; }
  /// A row of the connected log was deleted, or is back: the job's are counted.
  void FollowRow(std::int64_t key, bool isThere);

  /// Writes name, units, scale, format, graph and colour of each channel, to new rows or, with `update`, over the
  /// present ones. All or nothing. Channels that were renamed keep the names of their columns where by the others a
  /// playback would find the values of another channel, or none.
  void WriteGraphSettings(bool update);

  /// Whether the connected log's graph settings were those of the session's channels, in order, when it was connected.
  /// A log that was appended to may have others: those stay.
  bool HoldsPresentChannels() const { return holdsChannels_; }
  /// The names of the channels when the log was connected: its columns are theirs, whatever they are called later.
  const std::vector<std::string>& ChannelsOfLog() const { return channels_; }
  /// Sets IncludeInSummary of each channel to whether the connected log's report has a column for it.
  void ReadSummaryInclusion();

  /// The end of a recording: leaves one self-contained file and lets go of it. Where it raises (another program reads
  /// the file), the log stays connected and Finalise may be called again. Files beside it that can't be removed are
  /// told once.
  void Finalise();

 private:
  Connection& Connected() const;
  /// Finalise without a box; gives the files that stay.
  std::vector<std::string> Release();
  void TellLeft(const std::vector<std::string>& files);
  void KeepChannels();
  const std::vector<std::string>& NamesToStore(const std::vector<std::string>& present) const;

  Session& session_;
  const Platform& platform_;
  LastUpdated lastUpdated_;
  ToldOnce told_;
  std::unique_ptr<FileLock> lock_;  ///< of the connected log
  std::shared_ptr<Connection> connection_;
  std::optional<Recordset> recordset_;
  std::vector<std::string> channels_;
  bool holdsChannels_ = false;
  JobRows job_;
};

}  // namespace velk
