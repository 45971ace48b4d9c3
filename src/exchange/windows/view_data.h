#pragma once

#include <QDialog>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

#include "exchange/csv_table.h"
#include "exchange/windows/csv_grid_model.h"
#include "exchange/windows/data_file_info.h"
#include "i18n/windows/window_host.h"

namespace Ui {
class ViewData;
}

namespace velk {

/// The third screen of an import: the rows of the file, of any length at once, whose columns can be renamed and rows
/// deleted before they are written.
class ViewData : public QDialog {
  Q_OBJECT

 public:
  /// Writes the rows of a table into a log; the date is that of the first row, in days.
  using Write = std::function<void(const CsvTable& table, double startDay)>;

  /// `table` outlives the window; `today` is the date that is offered where the file tells none.
  ViewData(WindowHost& host, CsvTable& table, double today, Write write);
  ~ViewData() override;

  WizardStep Answer() const { return step_; }

 private:
  void FillStartDate(double today);
  void IndexMore();
  void ShowRows();
  std::optional<double> StartDay() const;
  void cmdRename_Click();
  void cmdCreate_Click();
  void mnuDeleteRecord_Click();
  void Leave(WizardStep step);

  WindowHost& host_;
  std::unique_ptr<Ui::ViewData> ui_;
  CsvTable& table_;
  const Write write_;
  CsvGridModel model_;
  QTimer indexing_;
  WizardStep step_ = WizardStep::Next;
};

}  // namespace velk
