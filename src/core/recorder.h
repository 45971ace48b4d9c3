#pragma once

#include "core/sample_log.h"
#include "log/job_files.h"
#include "log/log_writer.h"
#include "model/graph_window.h"
#include "model/main_view.h"
#include "model/session.h"
#include "platform/dialogs/procedure.h"
#include "platform/platform.h"

namespace velk {

/// Recording as the running job needs it: choosing the file, switching on and off, rows, page changes.
class Recorder : public SampleLog {
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

  void AppendRow(const LogRow& row, bool firstTry) override;
  void AppendRowQuietly(const LogRow& row) override;

  /// The last row of the present recording that is on the disk, with its number as its key; null where there is none.
  const LogRow* LastRow() const { return IsRecording() && session_.Data.rows > 0 ? &lastRow_ : nullptr; }
  /// Rows of the present recording that are on the disk.
  long long RowsRecorded() const { return session_.Data.rows; }

  void FollowPage(const Statements& run) override;

  /// Rows of the running job go to a file.
  bool IsRecording() const { return session_.RecordToDB && log_.RecordsetIsOpen(); }

  /// No rows until it is opened again; the log stays connected.
  void Close() { log_.CloseLogRecordset(); }
  /// Leaves one self-contained file.
  void Finish() override;

 private:
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
  long long missingRows_ = 0;
  LogRow lastRow_;
};

}  // namespace velk
