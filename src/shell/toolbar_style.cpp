#include "shell/toolbar_style.h"

#include "shell/icons.h"

namespace velk {

QIcon ToolbarStyle::standardIcon(StandardPixmap picture, const QStyleOption* option, const QWidget* widget) const {
  if (picture == SP_ToolBarHorizontalExtensionButton) return Icon("more");
  return QProxyStyle::standardIcon(picture, option, widget);
}

}  // namespace velk
