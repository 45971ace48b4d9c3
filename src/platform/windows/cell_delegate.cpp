#include "platform/windows/cell_delegate.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <optional>

#include "platform/windows/cell_roles.h"

namespace velk {

namespace {

struct Step {
  int rows;
  int columns;
};

std::optional<Step> StepOf(int key) {
  switch (key) {
    case Qt::Key_Up:
      return Step{-1, 0};
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return Step{1, 0};
    case Qt::Key_Tab:
      return Step{0, 1};
    case Qt::Key_Backtab:
      return Step{0, -1};
    default:
      return std::nullopt;
  }
}

/// A frame, and a mark on the side where no text stands.
void Mark(QPainter& painter, const QStyleOptionViewItem& option, const QColor& colour, bool textIsAtTheRight) {
  painter.save();
  painter.setPen(QPen(colour, 2));
  painter.drawRect(option.rect.adjusted(1, 1, -1, -1));
  QFont bold = option.font;
  bold.setBold(true);
  painter.setFont(bold);
  const Qt::Alignment side = textIsAtTheRight ? Qt::AlignLeft : Qt::AlignRight;
  painter.drawText(option.rect.adjusted(5, 0, -5, 0), side | Qt::AlignVCenter, QStringLiteral("!"));
  painter.restore();
}

/// The frame shows black on a dark desktop, and white on a light one.
void FillFramed(QPainter& painter, const QRect& place, const QColor& fill) {
  painter.fillRect(place, QColor(128, 128, 128));
  painter.fillRect(place.adjusted(1, 1, -1, -1), fill);
}

}  // namespace

QWidget* CellDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& cell) const {
  auto* editor = new QLineEdit(parent);
  editor->setObjectName(QStringLiteral("TheGridEditor"));
  editor->setFrame(false);
  editor->setAlignment(Qt::Alignment(cell.data(Qt::TextAlignmentRole).toInt()));
  editor->setAccessibleName(cell.model()->headerData(cell.column(), Qt::Horizontal).toString());
  return editor;
}

bool CellDelegate::eventFilter(QObject* editor, QEvent* event) {
  const auto step = event->type() == QEvent::KeyPress ? StepOf(static_cast<QKeyEvent*>(event)->key()) : std::nullopt;
  auto* box = qobject_cast<QWidget*>(editor);
  if (!step || !box) return QStyledItemDelegate::eventFilter(editor, event);
  emit commitData(box);
  emit closeEditor(box, NoHint);
  emit MovesOn(step->rows, step->columns);
  return true;
}

void CellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& cell) const {
  QStyledItemDelegate::paint(painter, option, cell);
  const QColor fill = cell.data(ColourRole).value<QColor>();
  if (fill.isValid()) FillFramed(*painter, option.rect.adjusted(4, 4, -4, -4), fill);
  const bool isDark = option.palette.color(QPalette::Base).lightness() < 128;
  const bool isAtTheRight = (cell.data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight) != 0;
  if (cell.data(FaultRole).toBool())
    Mark(*painter, option, isDark ? QColor(0xFF, 0x5A, 0x5F) : QColor(0xC8, 0x10, 0x2E), isAtTheRight);
  else if (cell.data(HintRole).toBool())
    Mark(*painter, option, isDark ? QColor(0xFF, 0xC8, 0x57) : QColor(0x8A, 0x5A, 0x00), isAtTheRight);
}

}  // namespace velk
