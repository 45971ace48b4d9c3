#include "platform/windows/grid_keys.h"

#include "platform/windows/cell_delegate.h"
#include "platform/windows/cell_roles.h"

namespace velk {

GridKeys::GridKeys(QTableView& grid, QWidget& ahead, QWidget& behind, Work work)
    : QObject(&grid), grid_(grid), ahead_(ahead), behind_(behind), work_(std::move(work)) {
  auto* delegate = new CellDelegate(&grid);
  grid.setItemDelegate(delegate);
  connect(delegate, &CellDelegate::MovesOn, this, &GridKeys::Move);
  grid.installEventFilter(this);
}

bool GridKeys::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && Take(*static_cast<QKeyEvent*>(event))) return true;
  return QObject::eventFilter(watched, event);
}

bool GridKeys::Take(QKeyEvent& key) {
  if (key.matches(QKeySequence::Copy)) return Copy(), true;
  if (key.matches(QKeySequence::Cut)) return Cut(), true;
  if (key.matches(QKeySequence::Paste)) return Paste(), true;
  if (key.matches(QKeySequence::Undo)) return work_.undo(), true;
  switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Move(1, 0);
      return true;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
      work_.clear(Selected());
      return true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      return LeavesGrid(key.key() == Qt::Key_Tab);
    default:
      return work_.other && work_.other(key);
  }
}

void GridKeys::Cut() {
  const CellRange cells = Selected();
  work_.copy(cells);
  work_.clear(cells);
}

/// Behind the last cell, and ahead of the first one, the tabulator leads out of the grid.
bool GridKeys::LeavesGrid(bool isForward) {
  const QModelIndex cell = grid_.currentIndex();
  const bool isFirst = cell.row() <= 0 && cell.column() <= 0;
  const bool isLast = cell.row() == grid_.model()->rowCount() - 1 && cell.column() == grid_.model()->columnCount() - 1;
  if (cell.isValid() && !(isForward ? isLast : isFirst)) return false;
  if (isForward)
    behind_.setFocus(Qt::TabFocusReason);
  else
    ahead_.setFocus(Qt::BacktabFocusReason);
  return true;
}

/// Sideways it goes on in the next row, as the grid does where no editor is open.
void GridKeys::Move(int rows, int columns) {
  const QModelIndex cell = grid_.currentIndex();
  const int count = grid_.model()->columnCount();
  const int place = cell.row() * count + cell.column() + columns;
  if (!cell.isValid() || place < 0) return;
  const QModelIndex next = grid_.model()->index(place / count + rows, place % count);
  if (next.isValid()) grid_.setCurrentIndex(next);
}

CellRange GridKeys::Selected() const {
  const QItemSelection selection = grid_.selectionModel()->selection();
  const QModelIndex cell = grid_.currentIndex();
  if (selection.isEmpty()) return {cell.row(), cell.column(), cell.row(), cell.column()};
  const QItemSelectionRange& range = selection.first();
  return {range.top(), range.left(), range.bottom(), range.right()};
}

void GridKeys::Select(const CellRange& cells) {
  const QAbstractItemModel& model = *grid_.model();
  grid_.selectionModel()->select(
      QItemSelection(model.index(cells.top, cells.left), model.index(cells.bottom, cells.right)),
      QItemSelectionModel::ClearAndSelect);
}

void ShowRemarkOn(QLabel& label, const QModelIndex& cell, const QString& remark, const QString& hint) {
  const bool isDark = label.palette().color(QPalette::Window).lightness() < 128;
  const QString colour = isDark ? QStringLiteral("#FF8A8E") : QStringLiteral("#B00020");
  const bool isFault = cell.isValid() && cell.data(FaultRole).toBool();
  label.setStyleSheet(isFault ? QStringLiteral("QLabel { color: %1; }").arg(colour) : QString());
  label.setText(remark.isEmpty() ? hint : remark);
}

}  // namespace velk
