#include "log/windows/entry_delegate.h"

#include <QKeyEvent>

#include "base/text_qt.h"
#include "log/summary_rows.h"

namespace velk {

namespace {

bool IsSound(const QLineEdit& editor) {
  return ReadSummaryEntry(FromQt(editor.text())).isSound;
}

/// The frame of what is refused, in the colour of alarms; the colours of the text stay those of the desktop.
void Mark(QLineEdit& editor, bool refused) {
  editor.setStyleSheet(refused ? QStringLiteral("QLineEdit { border: 2px solid #C8102E; }") : QString());
}

bool Leaves(const QEvent& event) {
  if (event.type() == QEvent::FocusOut) return true;
  if (event.type() != QEvent::KeyPress) return false;
  const int key = static_cast<const QKeyEvent&>(event).key();
  return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Tab || key == Qt::Key_Backtab;
}

/// What would take a grid to another cell.
bool MovesOn(const QEvent& event) {
  return event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick ||
         event.type() == QEvent::KeyPress;
}

}  // namespace

void EntryDelegate::Guard(QAbstractItemView& grid) {
  grid.setItemDelegate(this);
  grid.installEventFilter(this);
  grid.viewport()->installEventFilter(this);
}

bool EntryDelegate::Refuses() const {
  return entry_ && !entry_->isHidden() && !IsSound(*entry_);
}

void EntryDelegate::Refuse() const {
  Mark(*entry_, true);
  emit Refused(true);
}

QWidget* EntryDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const {
  auto* editor = new QLineEdit(parent);
  editor->setObjectName("entry");
  editor->setFrame(false);
  editor->setAlignment(Qt::AlignRight);
  entry_ = editor;
  connect(editor, &QLineEdit::textEdited, this, [this, editor] {
    if (!IsSound(*editor)) return;
    Mark(*editor, false);
    emit Refused(false);
  });
  connect(editor, &QObject::destroyed, this, [this] { emit Refused(false); });
  return editor;
}

void EntryDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const {
  if (IsSound(*qobject_cast<QLineEdit*>(editor))) QStyledItemDelegate::setModelData(editor, model, index);
}

bool EntryDelegate::eventFilter(QObject* watched, QEvent* event) {
  const bool isEntry = qobject_cast<QLineEdit*>(watched) != nullptr;
  if (!isEntry && !(MovesOn(*event) && Refuses())) return false;
  if (!isEntry) {
    Refuse();
    entry_->setFocus();
    return true;
  }
  if (watched != entry_ || !Leaves(*event) || !Refuses()) return QStyledItemDelegate::eventFilter(watched, event);
  Refuse();
  // The entry itself has to know that the focus is gone.
  return event->type() != QEvent::FocusOut;
}

}  // namespace velk
