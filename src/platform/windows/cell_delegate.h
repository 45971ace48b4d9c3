#pragma once

#include <QStyledItemDelegate>

namespace velk {

/// Edits a cell in place, in a box called TheGridEditor: Escape leaves the cell as it was; Enter, Tab and the arrows up
/// and down store what was typed, return to the grid and move on, if a cell is there. Cells with a fault are framed and
/// carry a mark, since colour alone can be missed.
class CellDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& cell) const override;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& cell) const override;

 signals:
  /// The editor was left by a key that leads on.
  void MovesOn(int rows, int columns);

 protected:
  bool eventFilter(QObject* editor, QEvent* event) override;
};

}  // namespace velk
