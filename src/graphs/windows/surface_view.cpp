#include "graphs/windows/surface_view.h"

#include <QPaintEvent>
#include <QPainter>

namespace velk {

SurfaceView::SurfaceView(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void SurfaceView::Show(SurfaceImage* surface, ColourMap* colours) {
  surface_ = surface;
  colours_ = colours;
  update();
}

void SurfaceView::ShowChanges() {
  if (surface_ == nullptr) return;
  const QRect changed = surface_->TakeDirty();
  if (!changed.isEmpty()) update(changed);
}

/// The picture of the surface in the colours that are shown, good within `shown` pixels of the view.
QImage SurfaceView::Mapped(const QRect& shown) {
  const QImage picture = surface_->View();
  if (mapped_.size() != picture.size()) mapped_ = QImage(picture.size(), QImage::Format_RGB32);
  const double ratio = picture.devicePixelRatio();
  const QRect dots = QRectF(shown.x() * ratio, shown.y() * ratio, shown.width() * ratio, shown.height() * ratio)
                         .toAlignedRect()
                         .intersected(mapped_.rect());
  for (int y = dots.top(); y <= dots.bottom(); ++y)
    colours_->Map(reinterpret_cast<const std::uint32_t*>(picture.constScanLine(y)) + dots.left(),
                  reinterpret_cast<std::uint32_t*>(mapped_.scanLine(y)) + dots.left(),
                  static_cast<std::size_t>(dots.width()));
  // Made over the same bytes: setting the ratio on a copy would copy all pixels.
  QImage view(mapped_.constBits(), mapped_.width(), mapped_.height(), mapped_.bytesPerLine(), mapped_.format());
  view.setDevicePixelRatio(ratio);
  return view;
}

void SurfaceView::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  const QRect shown = event->rect();
  if (surface_ == nullptr) return painter.fillRect(shown, Qt::white);
  // The surface may be smaller than the view until a resize has gone through.
  const QSizeF size = QSizeF(surface_->View().size()) / surface_->View().devicePixelRatio();
  if (shown.right() >= size.width() || shown.bottom() >= size.height())
    painter.fillRect(shown, QColor(colours_->Paper()));
  if (colours_->ChangesNothing()) {
    mapped_ = {};
    painter.drawImage(0, 0, surface_->View());
  } else {
    painter.drawImage(0, 0, Mapped(shown));
  }
}

}  // namespace velk
