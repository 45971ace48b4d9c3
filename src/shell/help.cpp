#include "shell/help.h"

#include <QApplication>
#include <QKeyEvent>
#include <QVariant>

namespace velk {

namespace {

/// What a widget stands in; below a window, the widget that has the keyboard there.
const QWidget* Below(const QWidget& widget) {
  const QWidget* parent = widget.parentWidget();
  if (!parent || !widget.isWindow()) return parent;
  const QWidget* held = parent->window()->focusWidget();
  return held ? held : parent;
}

}  // namespace

Help::Help(WindowHost& windows) : windows_(windows) {
  qApp->installEventFilter(this);
}

void Help::Open(int number) {
  windows_.Open<HelpWindow>().ShowTopic(number);
}

int Help::TopicOf(const QWidget* widget) {
  for (; widget; widget = Below(*widget)) {
    const QVariant number = widget->property("helpTopic");
    if (number.isValid()) return number.toInt();
  }
  return topic::FirstStart;
}

bool Help::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const auto* key = static_cast<const QKeyEvent*>(event);
  const auto* widget = qobject_cast<const QWidget*>(watched);
  // The window system's own objects see the key first; the widget with the focus gets it after them.
  if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier || !widget) return false;
  const auto* help = windows_.Opened<HelpWindow>();
  if (help && (widget == help || help->isAncestorOf(widget))) return true;
  Open(TopicOf(widget));
  return true;
}

}  // namespace velk
