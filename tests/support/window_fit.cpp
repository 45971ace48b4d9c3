#include <QCheckBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QTextLayout>
#include <QToolBar>

#include "support/window_texts.h"

namespace velk::test {

namespace {

std::string TooSmall(const QSize& needed, const QSize& there) {
  if (needed.width() <= there.width() && needed.height() <= there.height()) return {};
  return "needs " + std::to_string(needed.width()) + "x" + std::to_string(needed.height()) + " and has " +
         std::to_string(there.width()) + "x" + std::to_string(there.height());
}

QSize TextSize(const QWidget& control, const QString& text) {
  return control.fontMetrics().size(Qt::TextShowMnemonic, text);
}

QSize NeededByLabel(const QLabel& label) {
  if (!label.wordWrap()) return label.sizeHint();
  // A line is wider than the label where it has no place to be broken at.
  QTextLayout text(label.text(), label.font());
  text.beginLayout();
  qreal widest = 0;
  for (QTextLine line = text.createLine(); line.isValid(); line = text.createLine()) {
    line.setLineWidth(label.contentsRect().width());
    widest = std::max(widest, line.naturalTextWidth());
  }
  text.endLayout();
  return {static_cast<int>(widest), label.heightForWidth(label.width())};
}

/// The title stands in the frame beside the close button; a main window's is known from the task bar.
QSize NeededByTitle(const QWidget& window) {
  const int button = window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
  return {TextSize(window, window.windowTitle()).width() + 2 * button, 0};
}

QSize NeededBy(const QWidget& control, const QString& text) {
  if (control.isWindow() && !qobject_cast<const QMenu*>(&control))
    return qobject_cast<const QMainWindow*>(&control) ? QSize() : NeededByTitle(control);
  if (auto* label = qobject_cast<const QLabel*>(&control)) return NeededByLabel(*label);
  if (qobject_cast<const QCheckBox*>(&control) || qobject_cast<const QRadioButton*>(&control))
    return control.sizeHint();
  if (qobject_cast<const QGroupBox*>(&control)) return control.minimumSizeHint();
  if (qobject_cast<const QAbstractButton*>(&control) || qobject_cast<const QLineEdit*>(&control))
    return TextSize(control, text) + QSize(control.style()->pixelMetric(QStyle::PM_ButtonMargin), 0);
  return {};
}

/// Whether a part of a control lies outside what holds it. What scrolls can be brought into view.
bool IsClipped(const QWidget& control, const QWidget& window) {
  for (const QWidget* widget = &control; widget != &window; widget = widget->parentWidget()) {
    const QWidget* parent = widget->parentWidget();
    if (qobject_cast<const QAbstractScrollArea*>(parent->parentWidget())) continue;
    if (!parent->rect().contains(widget->geometry())) return true;
  }
  return false;
}

void CheckControls(const QWidget& window, Faults& faults) {
  for (const WindowText& text : TextsOf(window)) {
    if (!text.control || text.isToolTip || !text.control->isVisibleTo(&window)) continue;
    if (qobject_cast<const QMenu*>(text.control) || qobject_cast<const QHeaderView*>(text.control)) continue;
    std::string fault = TooSmall(NeededBy(*text.control, text.text), text.control->size());
    if (fault.empty() && text.control != &window && IsClipped(*text.control, window)) fault = "reaches over the edge";
    if (!fault.empty())
      faults.push_back(text.control->objectName().toStdString() + " \"" + text.text.toStdString() + "\": " + fault);
  }
}

/// Entries that find no room go behind an arrow, and a menu must fit on the screen.
void CheckMenus(const QWidget& window, Faults& faults) {
  for (const QMenuBar* bar : window.findChildren<QMenuBar*>())
    for (QAction* item : bar->actions())
      if (item->isVisible() && !bar->rect().contains(bar->actionGeometry(item)))
        faults.push_back("menu bar: no room for " + item->text().toStdString());
  for (const QMenu* menu : window.findChildren<QMenu*>())
    if (const auto fault = TooSmall(menu->sizeHint(), window.screen()->availableSize()); !fault.empty())
      faults.push_back(menu->objectName().toStdString() + ": " + fault);
}

void CheckHeadings(const QWidget& window, Faults& faults) {
  for (const QHeaderView* headings : window.findChildren<QHeaderView*>()) {
    if (!headings->isVisibleTo(&window) || headings->orientation() != Qt::Horizontal) continue;
    for (int i = 0; i < headings->count(); ++i)
      if (!headings->isSectionHidden(i) && headings->sectionSizeHint(i) > headings->sectionSize(i))
        faults.push_back("heading " + headings->model()->headerData(i, Qt::Horizontal).toString().toStdString() +
                         ": needs " + std::to_string(headings->sectionSizeHint(i)) + " and has " +
                         std::to_string(headings->sectionSize(i)));
  }
}

void CheckToolbars(const QWidget& window, Faults& faults) {
  for (const QToolBar* bar : window.findChildren<QToolBar*>()) {
    const auto* more = bar->findChild<QWidget*>("qt_toolbar_ext_button");
    if (more && more->isVisibleTo(&window)) faults.push_back(bar->objectName().toStdString() + ": buttons don't fit");
  }
}

}  // namespace

Faults TextsCutOff(const QWidget& window) {
  Faults faults;
  CheckControls(window, faults);
  CheckMenus(window, faults);
  CheckHeadings(window, faults);
  CheckToolbars(window, faults);
  return faults;
}

}  // namespace velk::test
