#include "paper/windows/page_view.h"

#include <QMouseEvent>
#include <QPainter>
#include <cmath>

namespace velk {

PageView::PageView(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("Picture1"));
  setMouseTracking(true);
}

void PageView::Show(const QImage& page) {
  page_ = page;
  setFixedSize((QSizeF(page.size()) / page.devicePixelRatio()).toSize());
  update();
}

double PageView::MillimetresPerPixel() const {
  return height() > 0 ? kSheetHeight / height() : 1;
}

QRectF PageView::OnScreen(const PageBox& box) const {
  const double scale = 1 / MillimetresPerPixel();
  return {box.left * scale, box.top * scale, box.width * scale, box.height * scale};
}

void PageView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.drawImage(0, 0, page_);
  if (dragged_ == Dragged::None) return;
  painter.setPen(Qt::DashLine);
  painter.drawRect(ghost_);
}

void PageView::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::RightButton && logo().isThere && OnScreen(logo()).contains(event->position()))
    return onLogoResized();
  if (event->button() != Qt::LeftButton) return;
  for (const Dragged what : {Dragged::Words, Dragged::Logo}) {
    const PageBox box = what == Dragged::Logo ? logo() : words();
    if (!box.isThere || !OnScreen(box).contains(event->position())) continue;
    dragged_ = what;
    ghost_ = OnScreen(box);
    grip_ = event->position() - ghost_.topLeft();
    return update();
  }
}

void PageView::mouseMoveEvent(QMouseEvent* event) {
  if (dragged_ != Dragged::None) {
    ghost_.moveTopLeft(event->position() - grip_);
    update();
  }
  onMouse(event->position().y() * MillimetresPerPixel());
}

void PageView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || dragged_ == Dragged::None) return;
  const auto& dropped = dragged_ == Dragged::Logo ? onLogoDropped : onWordsDropped;
  dragged_ = Dragged::None;
  dropped(ghost_.left() * MillimetresPerPixel(), ghost_.top() * MillimetresPerPixel());
}

void PageView::leaveEvent(QEvent*) {
  onMouse(std::nan(""));
}

}  // namespace velk
