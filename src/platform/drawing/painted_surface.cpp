#include "platform/drawing/painted_surface.h"

#include <algorithm>

#include "base/text_qt.h"
#include "platform/drawing/qt_drawing.h"
#include "platform/drawing/segment_clip.h"

namespace velk {

PaintedSurface::PaintedSurface(QPainter& painter, Unit unit, double width, double height, double dotsPerInch)
    : painter_(painter),
      width_(width),
      height_(height),
      dotsPerInch_(dotsPerInch),
      scale_(dotsPerInch / PerInch(unit)),
      metrics_(font_) {
  SetPenWidth(1);
  SetFont({});
}

QPen PaintedSurface::Pen(std::int32_t colour) const {
  return QPen(ToQColor(colour), penDots_, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

QRectF PaintedSurface::Box(double x, double y, double width, double height) const {
  return {x * scale_, y * scale_, width * scale_, height * scale_};
}

void PaintedSurface::SetPenWidth(double pixels) {
  penDots_ = std::max(1.0, pixels * dotsPerInch_ / PerInch(Unit::Pixel));
}

void PaintedSurface::Line(double x1, double y1, double x2, double y2, std::int32_t colour) {
  ClippedSegment line{x1 * scale_, y1 * scale_, x2 * scale_, y2 * scale_};
  const double margin = penDots_;
  if (!ClipSegment(line, -margin, -margin, width_ * scale_ + margin, height_ * scale_ + margin)) return;
  painter_.setPen(Pen(colour));
  painter_.drawLine(QPointF(line.x1, line.y1), QPointF(line.x2, line.y2));
}

void PaintedSurface::Circle(double x, double y, double radius, std::int32_t colour) {
  const QRectF box = Box(x - radius, y - radius, 2 * radius, 2 * radius);
  if (!IsDrawable(box)) return;
  painter_.setPen(Pen(colour));
  painter_.setBrush(Qt::NoBrush);
  painter_.drawEllipse(box);
}

void PaintedSurface::Fill(double x, double y, double width, double height, std::int32_t colour) {
  const QRectF box = Box(x, y, width, height);
  if (IsDrawable(box)) painter_.fillRect(box, ToQColor(colour));
}

void PaintedSurface::Picture(double x, double y, double width, double height, const PictureRows& picture) {
  const QRectF box = Box(x, y, width, height);
  if (!IsDrawable(box)) return;
  painter_.setRenderHint(QPainter::SmoothPixmapTransform);
  painter_.drawImage(box, ImageOver(picture));
}

void PaintedSurface::SetFont(const TextFont& font) {
  font_ = FontFor(font, dotsPerInch_);
  metrics_ = QFontMetricsF(font_, painter_.device());
  painter_.setFont(font_);
}

void PaintedSurface::Print(double x, double y, std::string_view text, std::int32_t colour) {
  const QPointF base(x * scale_, y * scale_ + metrics_.ascent());
  if (!IsDrawable(QRectF(base, base))) return;
  painter_.setPen(ToQColor(colour));
  painter_.drawText(base, ToQt(text));
}

double PaintedSurface::TextWidth(std::string_view text) const {
  return metrics_.horizontalAdvance(ToQt(text)) / scale_;
}

double PaintedSurface::TextHeight(std::string_view) const {
  return metrics_.height() / scale_;
}

}  // namespace velk
