#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "i18n/windows/window_host.h"
#include "imaging/printer_choice.h"
#include "log/windows/frm_rt_sum_rep.h"
#include "log/windows/summary_model.h"
#include "platform/dialogs/procedure.h"
#include "reports/log_edits.h"
#include "reports/windows/log_grid_model.h"

class QAbstractButton;
class QAbstractItemModel;
class QTableView;

namespace Ui {
class frmSummaryReport;
}

namespace velk {

class EntryDelegate;
class TableSource;

/// What the viewer works with; all outlives it.
struct ViewerAccess {
  Session& session;
  const Platform& platform;
  OpenLog& log;
  PrinterChoice& printer;
};

/// A recording beside its report: a range of time, jumps to a time and to the next sudden change, rows that are deleted
/// and lines that are added and removed, both in any order and on paper.
class frmSummaryReport : public QDialog {
  Q_OBJECT

 public:
  /// The view outlives the window. Its file has a report.
  frmSummaryReport(WindowHost& host, const ViewerAccess& access, LogView& view);
  ~frmSummaryReport() override;

  /// While it searches, what would leave the window ends the search, and the row before it is present again.
  void reject() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  using Run = const Statements&;
  enum class FilterStop { No, Stop, Cancel };
  class FilterBar;

  void ConnectKeys();
  void Bind(QAbstractButton* key, const char* procedure, void (frmSummaryReport::*work)(Run));
  void Begin(const char* procedure, void (frmSummaryReport::*work)(Run));
  void FillCombo1();
  void FitTexts();

  void cmdALL_Click();
  void cmdUpdate_Click(Run run);
  void cmdGo_Click(Run run);
  void cmdFilter_Click(Run run);
  void Search(EventSearch search, const std::vector<int>& watched);
  void ShowSearching(bool searching);
  void cmdAddRow_Click(Run run);
  void cmdRemoveRow_Click(Run run);
  void cmdDelete_Click(Run run);
  void cmdUndo_Click(Run run);
  void PrintLog_Click(Run run);
  void PrintSummary_Click(Run run);
  void cmdSaveAsLog_Click(Run run);
  void Print(Run run, TableSource& source, const MessageText& title, int skipLines);

  void SortLog(int column);
  void SortSummary(int column);
  void SortSummaryData();
  void SetUpGrid(QTableView& grid, QAbstractItemModel& model);
  void SortlogDataData();
  void LayOutLogGrid();
  void AdjustSummaryGrid();
  void SetWidths(QTableView& grid, const std::vector<CellKind>& kinds);

  void ReadSummary(std::int64_t present);
  bool OnSummary(Run run, const std::function<void()>& change);
  bool EnterField(std::int64_t key, const std::string& column, std::optional<double> value);
  void SayInvalid();
  int LogRow() const;
  void GoToRow(int row);
  std::int64_t SummaryKey() const;
  void GoToLine(int line);
  void ShowPositions();
  void ShowNote(const OperatorText& note);
  void UpdateKeys();

  /// The order of a grid: a column, or -1 for the order of time.
  struct Order {
    int column = -1;
    bool descending = false;
  };
  static void Turn(Order& order, int column);

  std::unique_ptr<Ui::frmSummaryReport> ui_;
  WindowHost& host_;
  const ViewerAccess access_;
  LogView& view_;
  LogEdits edits_;
  LogGridModel* rows_;
  SummaryModel* lines_;
  EntryDelegate* delegate_;
  const OperatorText whyNotEdited_;
  std::optional<std::pair<double, double>> range_;  ///< of both grids; nothing: all there is
  Order logOrder_, summaryOrder_;
  bool working_ = false;  ///< nothing is begun a second time
  bool searching_ = false;
  FilterStop FilterStop_ = FilterStop::No;
};

}  // namespace velk
