#include "platform/drawing/qt_drawing.h"

#include <algorithm>
#include <cmath>

#include "base/text_qt.h"
#include "platform/drawing/units.h"

namespace velk {

QColor ToQColor(std::int32_t colour) {
  return QColor(Red(colour), Green(colour), Blue(colour));
}

QFont FontFor(const TextFont& font, double dotsPerInch) {
  QFont made(ToQt(font.family));
  const double dots = font.points * dotsPerInch / PerInch(Unit::Point);
  made.setPixelSize(static_cast<int>(std::lround(std::clamp(dots, 1.0, 1e5))));
  made.setBold(font.bold);
  return made;
}

QImage ImageOver(const PictureRows& picture) {
  return QImage(reinterpret_cast<const uchar*>(picture.pixels), picture.width, picture.height,
                static_cast<qsizetype>(picture.stride * sizeof(std::uint32_t)), QImage::Format_ARGB32);
}

bool IsDrawable(const QRectF& box) {
  constexpr double kFar = 1e6;
  // Written so that a number that is none fails too.
  return std::abs(box.left()) < kFar && std::abs(box.top()) < kFar && std::abs(box.right()) < kFar &&
         std::abs(box.bottom()) < kFar;
}

}  // namespace velk
