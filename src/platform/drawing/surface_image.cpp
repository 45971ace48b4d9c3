#include "platform/drawing/surface_image.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "base/colour.h"
#include "platform/drawing/segment_clip.h"

namespace velk {

namespace {

/// The painter's own limit is 32767; no screen is higher than this.
constexpr int kMaxPixels = 16384;

int PixelCount(double logical, double scale) {
  const double pixels = std::round(logical * scale);
  return pixels >= 1 ? static_cast<int>(std::min<double>(pixels, kMaxPixels)) : 1;
}

QColor ToQColor(std::int32_t colour) {
  return QColor(Red(colour), Green(colour), Blue(colour));
}

QRgb ToPixel(std::int32_t colour) {
  return qRgb(Red(colour), Green(colour), Blue(colour));
}

QFont Scaled(QFont font, double ratio) {
  font.setPixelSize(std::max(1, static_cast<int>(std::lround(QFontInfo(font).pixelSize() * ratio))));
  return font;
}

QString ToQString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

SurfaceImage::SurfaceImage(double width, double height, double pixelRatio, const QFont& font)
    : font_(font), metrics_(font), baseFont_(font) {
  Resize(width, height, pixelRatio);
}

void SurfaceImage::Resize(double width, double height, double pixelRatio) {
  const double scale = pixelRatio / kTwipsPerPixel;
  const QSize size(PixelCount(width, scale), PixelCount(height, scale));
  const bool sameRatio = pixelRatio == ratio_ && !image_.isNull();
  width_ = width;
  height_ = height;
  ratio_ = pixelRatio;
  scale_ = scale;
  if (sameRatio && size == image_.size()) return;
  EndPainting();
  QImage larger(size, QImage::Format_RGB32);
  larger.fill(Qt::white);
  if (sameRatio) QPainter(&larger).drawImage(0, 0, image_);
  image_ = std::move(larger);
  rows_ = {reinterpret_cast<std::uint32_t*>(image_.bits()), static_cast<std::size_t>(image_.bytesPerLine()) / 4,
           image_.width(), image_.height()};
  SetFont(baseFont_);
  MarkDirty(Bounds());
}

void SurfaceImage::SetFont(const QFont& font) {
  EndPainting();
  baseFont_ = font;
  font_ = Scaled(font, ratio_);
  metrics_ = QFontMetricsF(font_, &image_);
}

QPainter& SurfaceImage::Painter() {
  if (!painter_.isActive()) {
    painter_.begin(&image_);
    painter_.setFont(font_);
  }
  return painter_;
}

void SurfaceImage::EndPainting() {
  if (painter_.isActive()) painter_.end();
}

int SurfaceImage::PenPixels() const {
  return std::max(1, static_cast<int>(std::lround(penWidth_ * ratio_)));
}

void SurfaceImage::MarkDirty(const QRect& pixels) {
  dirty_ |= pixels & Bounds();
}

void SurfaceImage::Cls() {
  EndPainting();
  image_.fill(Qt::white);
  MarkDirty(Bounds());
}

void SurfaceImage::Line(double x1, double y1, double x2, double y2, std::int32_t colour) {
  const int margin = PenPixels() + 1;
  ClippedSegment line{x1 * scale_, y1 * scale_, x2 * scale_, y2 * scale_};
  if (!ClipSegment(line, -margin, -margin, image_.width() + margin, image_.height() + margin)) return;
  const QPoint a(static_cast<int>(std::floor(line.x1)), static_cast<int>(std::floor(line.y1)));
  const QPoint b(static_cast<int>(std::floor(line.x2)), static_cast<int>(std::floor(line.y2)));
  RasterSegment(rows_, a.x(), a.y(), b.x(), b.y(), PenPixels(), ToPixel(colour));
  MarkDirty(QRect(QPoint(std::min(a.x(), b.x()), std::min(a.y(), b.y())),
                  QPoint(std::max(a.x(), b.x()), std::max(a.y(), b.y())))
                .adjusted(-margin, -margin, margin, margin));
}

void SurfaceImage::Circle(double x, double y, double radius, std::int32_t colour) {
  const int pen = PenPixels();
  const double outer = std::max(radius, 0.0) * scale_ + pen / 2.0;
  const double px = x * scale_, py = y * scale_;
  // Written so that a coordinate that is no number leaves too.
  if (!(px >= -outer && py >= -outer && px <= image_.width() + outer && py <= image_.height() + outer)) return;
  QPainter& painter = Painter();
  painter.setPen(QPen(ToQColor(colour), pen));
  const QRectF box(px - radius * scale_, py - radius * scale_, 2 * radius * scale_, 2 * radius * scale_);
  if (radius * scale_ <= pen / 2.0)
    // No hole would be left: a dot of the pen's width and the circle's.
    painter.fillRect(QRectF(std::round(px - outer), std::round(py - outer), std::ceil(2 * outer), std::ceil(2 * outer)),
                     ToQColor(colour));
  else
    painter.drawEllipse(box);
  const int margin = pen + 1;
  MarkDirty(box.toAlignedRect().adjusted(-margin, -margin, margin, margin));
}

void SurfaceImage::Print(double x, double y, std::string_view text, std::int32_t colour) {
  // Written so that a place that is no number leaves too; a QRect could not hold one far out.
  if (!(std::abs(x) * scale_ < 2 * kMaxPixels && std::abs(y) * scale_ < 2 * kMaxPixels)) return;
  const QString line = ToQString(text);
  const QRectF box(x * scale_, y * scale_, metrics_.horizontalAdvance(line), metrics_.height());
  const QRect plate = box.toAlignedRect().adjusted(-2, 0, 2, 0);
  if (!plate.intersects(Bounds())) return;
  QPainter& painter = Painter();
  painter.setPen(ToQColor(colour));
  const std::int32_t background = LegibleBackground(colour);
  if (textCovers_ || background != colour::White) painter.fillRect(plate, ToQColor(background));
  painter.drawText(QPointF(box.left(), box.top() + metrics_.ascent()), line);
  MarkDirty(plate);
}

double SurfaceImage::TextWidth(std::string_view text) const {
  return metrics_.horizontalAdvance(ToQString(text)) / scale_;
}

double SurfaceImage::TextHeight(std::string_view) const {
  return metrics_.height() / scale_;
}

void SurfaceImage::ScrollUp(int pixels) {
  EndPainting();
  const int kept = image_.height() - std::clamp(pixels, 0, image_.height());
  const qsizetype stride = image_.bytesPerLine();
  uchar* rows = image_.bits();
  std::memmove(rows, rows + (image_.height() - kept) * stride, static_cast<std::size_t>(kept * stride));
  std::memset(rows + kept * stride, 0xFF, static_cast<std::size_t>((image_.height() - kept) * stride));
  MarkDirty(Bounds());
}

QImage SurfaceImage::View() const {
  // Made over the same bytes: setting the ratio on a copy would copy all pixels.
  QImage view(const_cast<uchar*>(image_.constBits()), image_.width(), image_.height(), image_.bytesPerLine(),
              image_.format());
  view.setDevicePixelRatio(ratio_);
  return view;
}

QRect SurfaceImage::TakeDirty() {
  if (dirty_.isEmpty()) return {};
  const QRectF scaled(dirty_.x() / ratio_, dirty_.y() / ratio_, dirty_.width() / ratio_, dirty_.height() / ratio_);
  dirty_ = {};
  return scaled.toAlignedRect();
}

}  // namespace velk
