#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QRect>

#include "platform/drawing/segment_raster.h"
#include "platform/drawing/surface.h"

namespace velk {

/// A surface in memory for the screen. Logical units are twips; lines are drawn without smoothing, since a chart draws
/// thousands of short ones a second. It keeps the rectangle that has changed, so that a window repaints only that.
class SurfaceImage : public Surface {
 public:
  /// Sizes in twips. `pixelRatio` is device pixels per pixel of 96 dots an inch: 1, 1.5, 2. The pixel size of `font`
  /// counts at ratio 1.
  SurfaceImage(double width, double height, double pixelRatio, const QFont& font);

  /// Gives the surface another size; what was drawn stays in its upper left corner. Another ratio clears it.
  void Resize(double width, double height, double pixelRatio);
  void SetFont(const QFont& font);
  /// From now on a text clears its own box: labels that meet can still be read.
  void SetTextCovers(bool covers) { textCovers_ = covers; }

  double Width() const override { return width_; }
  double Height() const override { return height_; }
  int PixelHeight() const override { return image_.height(); }
  void Cls() override;
  void SetPenWidth(int width) override { penWidth_ = width; }
  void Line(double x1, double y1, double x2, double y2, std::int32_t colour) override;
  void Circle(double x, double y, double radius, std::int32_t colour) override;
  /// A pale text stands on a dark plate: nobody could read it on white.
  void Print(double x, double y, std::string_view text, std::int32_t colour) override;
  double TextWidth(std::string_view text) const override;
  double TextHeight(std::string_view text) const override;
  void ScrollUp(int pixels) override;

  /// The picture, with its pixel ratio set. It shares the surface's memory: good until the next change.
  QImage View() const;
  /// What has changed since the last call, in pixels of ratio 1; empty where nothing has.
  QRect TakeDirty();

 private:
  QPainter& Painter();
  void EndPainting();
  int PenPixels() const;
  void MarkDirty(const QRect& pixels);
  QRect Bounds() const { return image_.rect(); }

  double width_ = 0;
  double height_ = 0;
  double ratio_ = 1;
  double scale_ = 1;  ///< device pixels per twip
  int penWidth_ = 1;
  bool textCovers_ = false;
  QImage image_;
  QFont font_;  ///< scaled to device pixels
  QFontMetricsF metrics_;
  QFont baseFont_;
  QRect dirty_;
  PixelRows rows_;    ///< the image's memory, for lines
  QPainter painter_;  ///< for texts and circles; stays open, since opening costs more than a text
};

}  // namespace velk
