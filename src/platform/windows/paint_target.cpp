#include "platform/windows/paint_target.h"

#include <cmath>
#include <cstring>

namespace velk {

PaintTarget::PaintTarget(QPaintDevice* device, QPoint corner) {
  if (device == nullptr || device->devType() != QInternal::Image) return;
  auto* image = static_cast<QImage*>(device);
  const double ratio = image->devicePixelRatio();
  const bool takesOpaqueDots =
      image->format() == QImage::Format_RGB32 || image->format() == QImage::Format_ARGB32_Premultiplied;
  if (!takesOpaqueDots || ratio != std::floor(ratio)) return;
  ratio_ = static_cast<int>(ratio);
  format_ = image->format();
  stride_ = image->bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb));
  origin_ = reinterpret_cast<QRgb*>(image->bits()) - (corner.y() * stride_ + corner.x()) * ratio_;
}

void PaintTarget::Copy(const QRect& rect, const QImage& picture, QPoint corner) const {
  const int left = rect.x() * ratio_, top = rect.y() * ratio_;
  const std::size_t bytes = sizeof(QRgb) * static_cast<std::size_t>(rect.width() * ratio_);
  const uchar* from = picture.constScanLine(top - corner.y() * ratio_) + sizeof(QRgb) * (left - corner.x() * ratio_);
  const qsizetype step = picture.bytesPerLine();
  const std::ptrdiff_t stride = stride_;
  const int rows = rect.height() * ratio_;
  QRgb* to = Row(left, top);
  for (int row = 0; row < rows; ++row, from += step, to += stride) std::memcpy(to, from, bytes);
}

QImage PaintTarget::Picture(const QRect& rect) const {
  QImage picture(rect.size() * ratio_, QImage::Format_RGB32);
  for (int y = 0; y < picture.height(); ++y)
    std::memcpy(picture.scanLine(y), Row(rect.x() * ratio_, rect.y() * ratio_ + y),
                sizeof(QRgb) * static_cast<std::size_t>(picture.width()));
  picture.setDevicePixelRatio(ratio_);
  return picture;
}

QImage PaintTarget::View(const QRect& rect) const {
  QImage view(reinterpret_cast<uchar*>(Row(rect.x() * ratio_, rect.y() * ratio_)), rect.width() * ratio_,
              rect.height() * ratio_, stride_ * static_cast<qsizetype>(sizeof(QRgb)), format_);
  view.setDevicePixelRatio(ratio_);
  return view;
}

}  // namespace velk
