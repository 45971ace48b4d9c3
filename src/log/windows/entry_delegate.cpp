#include "log/windows/entry_delegate.h"

#include <QKeyEvent>
#include <QLineEdit>

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
  if (event.type() != QEvent::KeyPress) return false;
  const int key = static_cast<const QKeyEvent&>(event).key();
  return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Tab || key == Qt::Key_Backtab;
}

}  // namespace

QWidget* EntryDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const {
  auto* editor = new QLineEdit(parent);
  editor->setObjectName("entry");
  editor->setFrame(false);
  editor->setAlignment(Qt::AlignRight);
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

bool EntryDelegate::eventFilter(QObject* editor, QEvent* event) {
  auto* entry = qobject_cast<QLineEdit*>(editor);
  if (entry && Leaves(*event) && !IsSound(*entry)) {
    Mark(*entry, true);
    emit Refused(true);
    return true;
  }
  return QStyledItemDelegate::eventFilter(editor, event);
}

}  // namespace velk
