#include "shell/toolbar_style.h"

#include <QStyleOptionTitleBar>

#include "shell/icons.h"

namespace velk {

namespace {

constexpr int kDark = 128;
/// Of an inactive title bar, whose letters and buttons the toolkit draws in black whatever lies below them.
constexpr int kInactiveTitle = 125;

}  // namespace

int ToolbarStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* more) const {
  if (hint == SH_Menu_AllowActiveAndDisabled) return 1;
  return QProxyStyle::styleHint(hint, option, widget, more);
}

void ToolbarStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                      const QWidget* widget) const {
  const auto* const bar = control == CC_TitleBar ? qstyleoption_cast<const QStyleOptionTitleBar*>(option) : nullptr;
  const bool isInactive = bar != nullptr && !(bar->titleBarState & State_Active);
  if (!isInactive || bar->palette.color(QPalette::Window).lightness() >= kDark)
    return QProxyStyle::drawComplexControl(control, option, painter, widget);
  QStyleOptionTitleBar readable(*bar);
  readable.palette.setColor(QPalette::Window, QColor(kInactiveTitle, kInactiveTitle, kInactiveTitle));
  QProxyStyle::drawComplexControl(control, &readable, painter, widget);
}

QIcon ToolbarStyle::standardIcon(StandardPixmap picture, const QStyleOption* option, const QWidget* widget) const {
  if (picture == SP_ToolBarHorizontalExtensionButton) return Icon("more");
  return QProxyStyle::standardIcon(picture, option, widget);
}

}  // namespace velk
