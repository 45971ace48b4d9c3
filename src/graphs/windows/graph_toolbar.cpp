#include "graphs/windows/graph_toolbar.h"

#include <QFontInfo>
#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>

#include "base/text_qt.h"
#include "graphs/windows/chart_fonts.h"

namespace velk {

namespace {

/// The places of captions and tool tips in the translation tables go by this order.
struct ToolbarKey {
  const char* key;
  const char* caption;
  const char* toolTip;
};

constexpr ToolbarKey kKeys[] = {
    {"AddComment", "Comment", "Writes a comment over the curves and into the summary report (F7)"},
    {"Print", "Print", "Prints the graph"},
    {"Copy", "Copy", "Marks the curve of this graph to be pasted into another"},
    {"Paste", "Paste", "Puts the marked curve into this graph"},
    {"Remove", "Remove", "Takes a curve out of this graph"},
    {"ReadValue", "Read Value", "Shows the value of a curve under the mouse, until it is pressed again"},
};

constexpr const char* kHeldBack = "heldBack";
constexpr int kBesideCaption = 14;  ///< pixels of a button beside its caption and the two blanks around it
constexpr int kBesideButtons = 24;

}  // namespace

GraphToolbar::GraphToolbar(QWidget* parent) : QToolBar(parent) {
  setObjectName("Toolbar1");
  setToolButtonStyle(Qt::ToolButtonTextOnly);
  setMaximumHeight(kMostHeight);
  for (const ToolbarKey& key : kKeys) {
    QAction* action = addAction(QString::fromLatin1(key.caption));
    action->setObjectName(QString::fromLatin1(key.key));
    action->setToolTip(QString::fromLatin1(key.toolTip));
    action->setVisible(false);
  }
  Update();
}

void GraphToolbar::Bind(std::string_view key, std::function<void()> work) {
  QAction& action = Key(key);
  action.setVisible(true);
  connect(&action, &QAction::triggered, this, std::move(work));
}

void GraphToolbar::Release() {
  released_ = true;
  Update();
}

void GraphToolbar::SetEnabled(std::string_view key, bool enabled) {
  Key(key).setProperty(kHeldBack, !enabled);
  Update();
}

void GraphToolbar::SetPressed(std::string_view key, bool pressed) {
  QAction& action = Key(key);
  action.setCheckable(pressed);
  action.setChecked(pressed);
}

void GraphToolbar::resizeEvent(QResizeEvent* event) {
  QToolBar::resizeEvent(event);
  FitCaptions();
}

void GraphToolbar::FitCaptions() {
  QString captions;
  int room = width() - kBesideButtons;
  for (const QAction* action : actions()) {
    if (!action->isVisible()) continue;
    captions += action->text() + QStringLiteral("  ");
    room -= kBesideCaption;
  }
  QFont font = parentWidget()->font();
  font.setPixelSize(QFontInfo(font).pixelSize());
  setFont(FitFont(font, captions, std::max(room, 1)));
}

QAction& GraphToolbar::Key(std::string_view key) const {
  for (QAction* action : actions())
    if (action->objectName() == ToQt(key)) return *action;
  throw std::logic_error("a graph's toolbar has no key " + std::string(key));
}

void GraphToolbar::Update() {
  for (QAction* action : actions()) {
    const bool isReleased = released_ || action->objectName() == QLatin1String("Print");
    action->setEnabled(isReleased && !action->property(kHeldBack).toBool());
  }
}

}  // namespace velk
