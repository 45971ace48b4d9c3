#pragma once

#include <QKeyEvent>
#include <QLabel>
#include <QTableView>
#include <functional>

#include "base/grid_text.h"

namespace velk {

/// Makes a grid behave as spreadsheets do: typing edits a cell, Enter and the tabulator lead on, the tabulator behind
/// the last cell and ahead of the first one out of the grid; ranges are copied, cut, pasted and cleared, and changes
/// taken back, by the keys that all programs have for it.
class GridKeys : public QObject {
  Q_OBJECT

 public:
  /// What the keys are for; each is called with what is selected.
  struct Work {
    std::function<void(const CellRange&)> copy, paste, clear;
    std::function<void()> undo;
    std::function<bool(const QKeyEvent&)> other;  ///< any other key, unless it is empty; true where it was for it
  };

  /// The grid has its model already, and gets a delegate that edits its cells. The controls are those that the
  /// tabulator leads to.
  GridKeys(QTableView& grid, QWidget& ahead, QWidget& behind, Work work);

  /// The present cell where nothing is selected; -1 where there is none.
  CellRange Selected() const;
  void Select(const CellRange& cells);
  void Copy() { work_.copy(Selected()); }
  void Cut();
  void Paste() { work_.paste(Selected()); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool Take(QKeyEvent& key);
  bool LeavesGrid(bool isForward);
  void Move(int rows, int columns);

  QTableView& grid_;
  QWidget& ahead_;
  QWidget& behind_;
  const Work work_;
};

/// Tells below a grid what its present cell's model has to say of it, faults in their colour; `hint` where it says
/// nothing.
void ShowRemarkOn(QLabel& label, const QModelIndex& cell, const QString& remark, const QString& hint);

}  // namespace velk
