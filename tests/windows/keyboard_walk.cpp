#include "windows/keyboard_walk.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTableView>
#include <QTest>
#include <QTextEdit>
#include <algorithm>

namespace velk::test {

namespace {

template <class... Kinds>
bool IsOneOf(const QWidget& widget) {
  return (qobject_cast<const Kinds*>(&widget) || ...);
}

bool IsField(const QWidget& widget) {
  return IsOneOf<QLineEdit, QComboBox, QAbstractItemView, QPlainTextEdit, QTextEdit>(widget);
}

/// A control of the window itself, not a part that the toolkit has put into one.
bool IsOwn(const QWidget& widget) {
  return !widget.objectName().isEmpty() && !widget.objectName().startsWith("qt_") &&
         !qobject_cast<const QComboBox*>(widget.parentWidget());
}

std::vector<QWidget*> Controls(const QWidget& window) {
  std::vector<QWidget*> controls;
  for (QWidget* widget : window.findChildren<QWidget*>())
    if (widget->isVisible() && widget->isEnabled() && IsOwn(*widget) &&
        (IsField(*widget) || IsOneOf<QAbstractButton>(*widget)))
      controls.push_back(widget);
  return controls;
}

/// The options that the arrow keys lead to from a control.
std::vector<QWidget*> Options(QWidget& control) {
  std::vector<QWidget*> options;
  if (!qobject_cast<QRadioButton*>(&control)) return options;
  for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down}) {
    control.setFocus();
    for (QWidget* at = nullptr; at != control.window()->focusWidget();) {
      at = control.window()->focusWidget();
      options.push_back(at);
      QTest::keyClick(at, key);
    }
  }
  return options;
}

QRect PlaceOf(const QWidget& control) {
  return {control.mapToGlobal(QPoint(0, 0)), control.size()};
}

/// Whether a reader of the window comes to `b` before `a`.
bool StandsBefore(const QRect& b, const QRect& a) {
  const bool above = b.bottom() < a.top() && b.left() <= a.right();
  const bool inFront = b.right() < a.left() && b.top() <= a.bottom() && b.bottom() >= a.top();
  return above || inFront;
}

std::string NameOf(const QWidget& widget) {
  return widget.objectName().toStdString();
}

/// A grid keeps the tabulator up to its last cell.
void PressTab(QWidget& at) {
  const auto* grid = qobject_cast<const QTableView*>(&at);
  int presses = grid ? std::max(1, grid->model()->rowCount() * grid->model()->columnCount()) : 1;
  for (const QWidget* window = at.window(); presses > 0 && window->focusWidget() == &at; --presses)
    QTest::keyClick(&at, Qt::Key_Tab);
}

}  // namespace

std::vector<QWidget*> TabStops(QWidget& window) {
  std::vector<QWidget*> stops;
  QWidget* at = window.focusWidget();
  while (at && std::find(stops.begin(), stops.end(), at) == stops.end()) {
    stops.push_back(at);
    PressTab(*at);
    at = window.focusWidget();
  }
  return stops;
}

Faults ControlsOutOfReach(QWidget& window) {
  const std::vector<QWidget*> wanted = Controls(window);
  std::vector<QWidget*> reached;
  for (QWidget* stop : TabStops(window)) {
    reached.push_back(stop);
    stop->setFocus();
    for (QWidget* option : Options(*stop)) reached.push_back(option);
  }
  Faults faults;
  for (const QWidget* control : wanted)
    if (std::find(reached.begin(), reached.end(), control) == reached.end()) faults.push_back(NameOf(*control));
  return faults;
}

Faults StepsBackward(QWidget& window) {
  const std::vector<QWidget*> stops = TabStops(window);
  Faults faults;
  for (std::size_t i = 0; i < stops.size(); ++i) {
    const QWidget& next = *stops[(i + 1) % stops.size()];
    if (StandsBefore(PlaceOf(next), PlaceOf(*stops[i]))) faults.push_back(NameOf(*stops[i]) + " to " + NameOf(next));
  }
  return faults.size() > 1 ? faults : kNone;
}

Faults FieldsWithoutAName(const QWidget& window) {
  Faults faults;
  for (const QLabel* label : window.findChildren<QLabel*>()) {
    static const QRegularExpression mark("&\\w");
    if (label->text().contains(mark) && (!label->buddy() || label->buddy()->focusPolicy() == Qt::NoFocus))
      faults.push_back(NameOf(*label));
  }
  for (QWidget* control : Controls(window)) {
    QAccessibleInterface* spoken = IsField(*control) ? QAccessible::queryAccessibleInterface(control) : nullptr;
    if (spoken && spoken->text(QAccessible::Name).isEmpty()) faults.push_back(NameOf(*control) + " has no name");
  }
  return faults;
}

}  // namespace velk::test
