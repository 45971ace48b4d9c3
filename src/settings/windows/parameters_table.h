#pragma once

#include <QDialog>
#include <QModelIndex>
#include <memory>
#include <vector>

#include "i18n/windows/window_host.h"
#include "settings/column_widths.h"
#include "settings/parameter_table.h"
#include "settings/windows/grid_columns.h"
#include "settings/windows/parameter_table_model.h"

namespace Ui {
class ParametersTable;
}

namespace velk {

class GridKeys;

/// The grid of all parameters. However it is closed, Answer() is what it shows; it stays open while something in it
/// can't stand, but at the end of the program.
class ParametersTable : public QDialog {
  Q_OBJECT

 public:
  /// `widths` outlives the window, which keeps it up to date; without it, widths go with the window.
  ParametersTable(WindowHost& host, ParameterTable table, ColumnWidths* widths = nullptr);
  ~ParametersTable() override;

  const ParameterTable& Answer() const { return table_; }

  void done(int result) override;

 private:
  void ConnectMenu();
  void FitToScreen();
  void StoreOpenEditor();
  bool Form_QueryUnload();
  bool ChoiceKey(const QKeyEvent& key);
  void Grid1_Click(const QModelIndex& cell);
  void mnuChange_Click();
  void mnuUndo_Click();

  bool HasCells() const { return table_.RowCount() > 0; }
  void Copy(const CellRange& range);
  void Paste(const CellRange& range);
  void Clear(const CellRange& range);
  /// Into the cell, and into the same column of all selected rows where those are chosen together.
  void Enter(const QModelIndex& cell, const QString& typed);
  void EnterInto(int column, const std::vector<int>& rows, const std::string& text);
  std::vector<int> RowsWith(const QModelIndex& cell) const;
  void AskGraph(const QModelIndex& cell);
  void Choose(const QModelIndex& cell);
  void Changed();
  void ShowRemark();

  WindowHost& host_;
  std::unique_ptr<Ui::ParametersTable> ui_;
  ParameterTable table_;
  ParameterTableModel model_;
  ColumnWidths ownWidths_;
  GridKeys* keys_ = nullptr;        ///< the grid's
  GridColumns* columns_ = nullptr;  ///< likewise
};

}  // namespace velk
