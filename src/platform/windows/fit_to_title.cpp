#include "platform/windows/fit_to_title.h"

#include <QScreen>
#include <QStyle>
#include <algorithm>

namespace velk {

void FitToTitle(QWidget& window) {
  const int room = window.screen()->availableSize().width() * 9 / 10;
  const int buttons = 3 * window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
  window.setMinimumWidth(std::min(window.fontMetrics().horizontalAdvance(window.windowTitle()) + buttons, room));
}

}  // namespace velk
