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
  const int ratio = target.Ratio();
  if (surface_ == nullptr || surface_->PixelRatio() != ratio) return false;
  const QSize size = surface_->PixelSize();
  const bool isPlain = colours_->ChangesNothing();
  const int left = part.left() * ratio;
  const int width = part.width() * ratio;
  const int drawn = std::clamp(size.width() - left, 0, width);
  for (int y = part.top() * ratio; y < (part.bottom() + 1) * ratio; ++y) {
    std::uint32_t* const to = target.Row(left, y);
    const int copied = y < size.height() ? drawn : 0;
    if (copied > 0 && isPlain)
      std::copy_n(surface_->Row(y) + left, copied, to);
    else if (copied > 0)
      colours_->Map(surface_->Row(y) + left, to, static_cast<std::size_t>(copied));
    std::fill(to + copied, to + width, colours_->Paper());
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
