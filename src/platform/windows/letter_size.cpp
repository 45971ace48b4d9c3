#include "platform/windows/letter_size.h"

#include <QFontMetrics>
#include <QScreen>

namespace velk {

QSize LetterSize(const QWidget& window, int letters, int lines) {
  const QFontMetrics metrics = window.fontMetrics();
  return QSize(letters * metrics.averageCharWidth(), lines * metrics.height())
      .boundedTo(window.screen()->availableSize() * 0.85);
}

}  // namespace velk
