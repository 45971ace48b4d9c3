#pragma once

#include <optional>

#include "log/job_files.h"
#include "log/log_writer.h"
#include "model/graph_window.h"
#include "model/main_view.h"
#include "model/session.h"
#include "platform/dialogs/procedure.h"
#include "platform/platform.h"

namespace velk {

/// Recording as the running job needs it: choosing the file, switching on and off, rows, page changes.
class Recorder {
 public:
  Recorder(Session& session, const Platform& platform, MainView& view, LogWriter& log, JobFiles& files);

  /// Asks for the file to record to; CurrentFile tells what was chosen.
  void mnuFileRecord_Click();

  /// Makes CurrentFile if it is missing, connects to it and makes it LogFileInUse. Raises what the log raises.
  void Connect();
  /// Opens the recordset that rows are appended to.
  void Open();
  /// Asks for a file and begins to record to it at once; without a file, or when Cancel leaves a failure, recording is
  /// off.
  void ChooseAndBegin(const Statements& run);
  void SwitchOff();

  /// Appends the row of the running sample. A failure is raised once and then only counted until a row has gone through
  /// again, so that a full disk shows one box and recording goes on by itself. `firstTry` is false for the Retry of a
  /// row that is counted already. `rowTime` is the row's date and time where it brings its own, else it is Now.
  void AppendRow(bool firstTry, std::optional<double> rowTime = {});
  /// The same without raising: for the moment in front of a box.
  void AppendRowQuietly(std::optional<double> rowTime = {});

  /// Rows of the present recording that are on the disk.
  long long RowsRecorded() const { return rows_; }

  /// Counts a page change and names the file by it; asks for a file where there is none.
  void FollowPage(const Statements& run);

  /// No rows until it is opened again; the log stays connected.
  void Close() { log_.CloseLogRecordset(); }
  /// Ends the recording: one self-contained file is left. Reports its own failures.
  void Finish();

 private:
  void Append(bool firstTry, std::optional<double> rowTime);
  void AskForFile(const Statements& run);
  void ShowFile();
  void ShowMissingRows();

  Session& session_;
  Platform platform_;
  MainView& view_;
  LogWriter& log_;
  JobFiles& files_;
  bool failing_ = false;
  bool asking_ = false;
  LogRow failedRow_;  ///< that could not be appended, for its Retry: later samples have taken CurrentValue over by then
  long long rows_ = 0;
  long long missingRows_ = 0;
};

}  // namespace velk
