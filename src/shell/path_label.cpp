#include "shell/path_label.h"

#include <QPainter>
#include <QStyle>

namespace velk {

/// As wide as it is let, and never the reason for a wider window.
QSize PathLabel::sizeHint() const {
  return {1, QLabel::sizeHint().height()};
}

void PathLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  drawFrame(&painter);
  const int beside = fontMetrics().averageCharWidth() / 2;
  const QRect room = contentsRect().adjusted(beside, 0, -beside, 0);
  const QString shown = fontMetrics().elidedText(text(), givesWay_, room.width());
  style()->drawItemText(&painter, room, Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(), shown,
                        foregroundRole());
}

}  // namespace velk
