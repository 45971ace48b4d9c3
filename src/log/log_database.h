#pragma once

#include <memory>
#include <optional>
#include <string>

#include "log/current_velk.h"
#include "log/job_questions.h"
#include "model/graph_window.h"
#include "model/session.h"
#include "platform/database/recordset.h"
#include "platform/platform.h"

namespace velk {

/// The log of a job: one database file with the samples (logData), the graph settings that play it back without this
/// machine's, and the summary report. One connection does all that is done to the open log. Failures raise a
/// RuntimeError whose text names the file, unless told otherwise.
class LogDatabase {
 public:
  LogDatabase(Session& session, const Platform& platform, JobQuestions& questions, GraphWindows& graphs);
  /// Finalises what is still open; a failure leaves the file as a killed program would: whole, with its write-ahead
  /// log.
  ~LogDatabase();
  LogDatabase(const LogDatabase&) = delete;
  LogDatabase& operator=(const LogDatabase&) = delete;

  /// Makes a log for the present channels, asking which of them the summary report gets. Fields of CurrentParameters
  /// that are empty get their defaults. All or nothing: until the file is complete there is none of that name, and what
  /// stands there already is never touched (FileAlreadyExists).
  void CreateLogFile(const std::string& path);
  /// Makes a file the log: from here on each row is on the disk before AppendLogRow returns. The log before it is
  /// finalised.
  void ConnectLogFile(const std::string& path);
  bool IsConnected() const { return connection_ != nullptr; }

  /// Readies the connected log for rows; raises where the table has no room for the channels.
  void OpenLogRecordset();
  /// No more rows until OpenLogRecordset; the log stays connected. Safe when there is no recordset.
  void CloseLogRecordset();
  bool RecordsetIsOpen() const { return recordset_.has_value(); }

  /// Appends CurrentValue of every channel under the present date and time, or under `at` where the sample brings its
  /// own, whole seconds. Does nothing while
  /// LogFileInUse is the translated "Failed". Where it raises, no row was written, and it can be called again.
  void AppendLogRow(std::optional<double> at = {});

  /// Writes name, units, scale, format, graph and colour of each channel, to new rows or, with `update`, over the
  /// present ones. All or nothing.
  void WriteGraphSettings(bool update);

  /// Whether a file can take rows of the present channels. Of two channels with the same name the operator is asked to
  /// rename the later one; the new name stays, whatever the answer is in the end. False for a database without a log,
  /// too.
  bool IsCompatibleLog(const std::string& path);
  /// Whether the columns of a file stand in the order of the present channels.
  bool HasSameColumnOrder(const std::string& path);
  /// Whether the connected log holds graph settings; tells the operator when it doesn't.
  bool LogHasGraphSettings();
  /// Whether the connected log's graph settings are those of the present channels, in order. A log that was appended to
  /// may have others: those stay.
  bool HoldsPresentChannels();
  /// Sets IncludeInSummary of each channel to whether the connected log's report has a column for it.
  void ReadSummaryInclusion();

  /// The end of a recording: leaves one self-contained file and lets go of it. Where it raises (another program reads
  /// the file), the log stays connected and Finalise may be called again.
  void Finalise();

 private:
  void WriteGraphSettingsTo(const std::shared_ptr<Connection>& connection, bool update);
  void AskSummaryInclusion();
  bool HasNameOfEarlierChannel(int channel) const;
  bool AskForOtherName(int channel);
  std::optional<Table> LogTableOf(const std::string& path);
  [[noreturn]] void RaiseNotCompatible(const std::string& path) const;
  Connection& Connected() const;

  Session& session_;
  const Platform& platform_;
  JobQuestions& questions_;
  GraphWindows& graphs_;
  LastUpdated lastUpdated_;
  std::shared_ptr<Connection> connection_;
  std::optional<Recordset> recordset_;
};

}  // namespace velk
