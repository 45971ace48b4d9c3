#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>

#include "platform/drawing/surface.h"
#include "platform/drawing/units.h"

namespace velk {

/// A surface that draws by a painter, in any unit and smoothly: a page of a printer, or a picture of one.
class PaintedSurface : public Surface {
 public:
  /// Draws on the painter's device from its upper left corner, so many units wide and high. The painter is open, has no
  /// transformation of its own and outlives the surface.
  PaintedSurface(QPainter& painter, Unit unit, double width, double height, double dotsPerInch);

  double Width() const override { return width_; }
  double Height() const override { return height_; }
  void SetPenWidth(double pixels) override;
  void Line(double x1, double y1, double x2, double y2, std::int32_t colour) override;
  void Circle(double x, double y, double radius, std::int32_t colour) override;
  void Fill(double x, double y, double width, double height, std::int32_t colour) override;
  void Picture(double x, double y, double width, double height, const PictureRows& picture) override;
  void SetFont(const TextFont& font) override;
  void Print(double x, double y, std::string_view text, std::int32_t colour) override;
  double TextWidth(std::string_view text) const override;
  double TextHeight(std::string_view text) const override;

 private:
  QPen Pen(std::int32_t colour) const;
  QRectF Box(double x, double y, double width, double height) const;

  QPainter& painter_;
  const double width_;
  const double height_;
  const double dotsPerInch_;
  const double scale_;  ///< dots of the device per logical unit
  double penDots_ = 1;
  QFont font_;
  QFontMetricsF metrics_;
};

}  // namespace velk
