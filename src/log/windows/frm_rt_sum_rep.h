#pragma once

#include <QWidget>
#include <memory>
#include <string>

#include "i18n/windows/window_host.h"
#include "log/open_log.h"
#include "log/windows/entry_delegate.h"
#include "log/windows/summary_model.h"
#include "model/session.h"
#include "platform/platform.h"

namespace Ui {
class frmRTSumRep;
}

namespace velk {

/// Where the summary report comes from, and where its entries go.
struct ReportAccess {
  const Session& session;
  const Platform& platform;
  OpenLog& log;

  /// The file whose report is shown: the open log, or else the last one.
  std::string Path() const { return log.IsOpen() ? log.Path() : session.LogFileInUse; }
};

/// The summary report of the job, live: its lines in order of time, with the additional fields to be entered. It blocks
/// nothing, and stays as long as the program once it was opened.
class frmRTSumRep : public QWidget {
  Q_OBJECT

 public:
  frmRTSumRep(WindowHost& host, const ReportAccess& access);
  ~frmRTSumRep() override;

  /// Reads the report anew and goes to its last line, but not away from an entry that is being made.
  void RefreshGrid();
  /// The same, raising where the report can't be read.
  void ReadReport();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  bool Enter(std::int64_t key, const std::string& column, std::optional<double> value);
  void FitColumns();
  void ShowNote(bool refused);
  bool IsEntering() const;

  std::unique_ptr<Ui::frmRTSumRep> ui_;
  const ReportAccess access_;
  std::string path_;  ///< of the report that is shown
  SummaryModel* model_;
  EntryDelegate* delegate_;
};

}  // namespace velk
