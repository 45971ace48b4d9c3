#include "graphs/windows/surface_view.h"

#include <QPaintEvent>
#include <QPainter>
#include <algorithm>

#include "platform/windows/paint_target.h"

namespace velk {

SurfaceView::SurfaceView(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void SurfaceView::Show(SurfaceImage* surface, ColourMap* colours) {
  surface_ = surface;
  colours_ = colours;
  update();
}

void SurfaceView::ShowChanges(WindowStrips& strips) {
  if (surface_ != nullptr) strips.Add(*this, surface_->TakeDirty());
}

void SurfaceView::paintEvent(QPaintEvent* event) {
  QPoint corner;
  const PaintTarget target(redirected(&corner), corner);
  if (!CopyAll(target, event->region())) Paint(event->rect());
}

bool SurfaceView::CopyDots(const PaintTarget& target, const QRect& part) {
  if (surface_ == nullptr) return false;
  const QSize size = surface_->PixelSize();
  const int ratio = target.Ratio();
  if (surface_->PixelRatio() != ratio || (part.right() + 1) * ratio > size.width() ||
      (part.bottom() + 1) * ratio > size.height())
    return false;
  const bool isPlain = colours_->ChangesNothing();
  const int left = part.left() * ratio;
  const int width = part.width() * ratio;
  for (int y = part.top() * ratio; y < (part.bottom() + 1) * ratio; ++y) {
    const std::uint32_t* const from = surface_->Row(y) + left;
    if (isPlain)
      std::copy_n(from, width, target.Row(left, y));
    else
      colours_->Map(from, target.Row(left, y), static_cast<std::size_t>(width));
  }
  return true;
}

void SurfaceView::Paint(const QRect& shown) {
  QPainter painter(this);
  if (surface_ == nullptr) return painter.fillRect(shown, Qt::white);
  const QImage picture = surface_->View();
  const QSizeF size = QSizeF(picture.size()) / picture.devicePixelRatio();
  if (shown.right() >= size.width() || shown.bottom() >= size.height())
    painter.fillRect(shown, QColor(colours_->Paper()));
  if (colours_->ChangesNothing()) mapped_ = {};
  painter.drawImage(0, 0, colours_->ChangesNothing() ? picture : Mapped(picture, shown));
}

/// The picture in the colours that are shown, good within `shown` pixels of the view.
QImage SurfaceView::Mapped(const QImage& picture, const QRect& shown) {
  if (mapped_.size() != picture.size()) mapped_ = QImage(picture.size(), QImage::Format_RGB32);
  const double ratio = picture.devicePixelRatio();
  const QRect dots = QRectF(shown.x() * ratio, shown.y() * ratio, shown.width() * ratio, shown.height() * ratio)
                         .toAlignedRect()
                         .intersected(mapped_.rect());
  for (int y = dots.top(); y <= dots.bottom(); ++y)
    colours_->Map(reinterpret_cast<const QRgb*>(picture.constScanLine(y)) + dots.left(),
                  reinterpret_cast<QRgb*>(mapped_.scanLine(y)) + dots.left(), static_cast<std::size_t>(dots.width()));
  // Made over the same bytes: setting the ratio on a copy would copy all pixels.
  QImage view(mapped_.constBits(), mapped_.width(), mapped_.height(), mapped_.bytesPerLine(), mapped_.format());
  view.setDevicePixelRatio(ratio);
  return view;
}

}  // namespace velk
