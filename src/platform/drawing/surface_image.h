#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QRect>
#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <string>

#include "platform/drawing/retained_surface.h"
#include "platform/drawing/segment_clip.h"
#include "platform/drawing/segment_raster.h"
#include "platform/drawing/units.h"

namespace velk {

/// A surface in memory for the screen. Logical units are twips; lines are drawn without smoothing, since a chart draws
/// thousands of short ones a second. It keeps the rectangle that has changed, so that a window repaints only that.
class SurfaceImage : public RetainedSurface {
 public:
  /// Sizes in twips. `pixelRatio` is device pixels per pixel of 96 dots an inch: 1, 1.5, 2. The pixel size of `font`
  /// counts at ratio 1.
  SurfaceImage(double width, double height, double pixelRatio, const QFont& font);

  /// Gives the surface another size; what was drawn stays in its upper left corner. Another ratio clears it. `stretch`
  /// is how many times as many dots a twip takes down the page as across; texts, pens and circles are not stretched.
  void Resize(double width, double height, double pixelRatio, double stretch = 1);
  /// The same, and what was drawn goes along: the part left of `fixedLeft` twips in height only, the rest in both ways.
  /// Lines that come together show the darkest of them.
  void Rescale(double width, double height, double pixelRatio, double stretch, double fixedLeft);
  /// A font that was fitted: its pixel size counts at ratio 1.
  void UseFont(const QFont& font);
  /// From now on a text clears its own box: labels that meet can still be read.
  void SetTextCovers(bool covers) { textCovers_ = covers; }

  double Stretch() const { return down_ / scale_; }

  double Width() const override { return width_; }
  double Height() const override { return height_; }
  int PixelHeight() const override { return image_.height(); }
  void Cls() override;
  void SetPenWidth(double pixels) override;
  void Line(double x1, double y1, double x2, double y2, std::int32_t colour) override;
  void Circle(double x, double y, double radius, std::int32_t colour) override;
  void Fill(double x, double y, double width, double height, std::int32_t colour) override;
  void Picture(double x, double y, double width, double height, const PictureRows& picture) override;
  void SetFont(const TextFont& font) override;
  void Print(double x, double y, std::string_view text, std::int32_t colour) override;
  double TextWidth(std::string_view text) const override;
  double TextHeight(std::string_view text) const override;
  void ScrollUp(int pixels) override;
  void CopyFrom(const RetainedSurface& other) override;

  QSize PixelSize() const { return image_.size(); }
  double PixelRatio() const { return ratio_; }
  /// The pixels of a row of the picture, 0xffrrggbb: good until the next change.
  const std::uint32_t* Row(int y) const { return RowOf(y); }
  /// The picture, with its pixel ratio set. It shares the surface's memory: good until the next change. Behind a scroll
  /// it takes as long as moving the picture; Row doesn't.
  QImage View() const;
  /// What has changed since the last call, in pixels of ratio 1; empty where nothing has.
  QRect TakeDirty();

 private:
  /// What the pixels of a size are to be.
  bool TakeSize(double width, double height, double pixelRatio, double stretch, QSize& size);
  void TakeImage(QImage image);
  QPainter& Painter();
  void EndPainting();
  void MarkDirty(const QRect& pixels);
  void MarkDirty(int left, int top, int right, int bottom) {
    // Seldom is one of them beyond what has changed already: nothing is written then that the next line waits for.
    if (left < dirty_.left) dirty_.left = left;
    if (top < dirty_.top) dirty_.top = top;
    if (right > dirty_.right) dirty_.right = right;
    if (bottom > dirty_.bottom) dirty_.bottom = bottom;
    if (content_ != Content::Drawn) NoteDrawing();
  }
  [[gnu::noinline]] void NoteDrawing();
  /// A line between two pixels: no row more than its pen has touched, since each is copied up to the screen.
  void MarkLine(int x1, int y1, int x2, int y2) {
    MarkDirty(std::min(x1, x2) - penBefore_, std::min(y1, y2) - penBefore_, std::max(x1, x2) + penBehind_,
              std::max(y1, y2) + penBehind_);
  }
  void CutLine(ClippedSegment line, std::int32_t colour);
  std::uint32_t* RowOf(int y) const {
    const Band& band = y < bands_[1].top ? bands_[0] : bands_[1];
    return band.rows.pixels + static_cast<std::size_t>(y - band.top) * band.rows.stride;
  }
  void BeginAt(int row) const;
  void Straighten() const;
  struct Label;
  Label& LabelOf(std::string_view text) const;
  QImage PlateOf(const Label& label, QSize size) const;
  bool CopyPlate(Label& label, const QPointF& begin, std::int32_t colour, const QRect& plate);
  QRect Bounds() const { return image_.rect(); }

  double width_ = 0;
  double height_ = 0;
  double ratio_ = 1;
  double scale_ = 1;  ///< device pixels per twip across
  double down_ = 1;   ///< device pixels per twip down
  double penWidth_ = 1;
  double penRatio_ = 0;  ///< that penPixels_ was worked out for
  int penPixels_ = 1;    ///< the same in device pixels
  int penBefore_ = 0;    ///< how many of them lie left of a line, and above it
  int penBehind_ = 0;    ///< and on the other side
  /// Where a line's ends may stand for all of its pen to lie on the surface, as the middle and how far from there: a
  /// place takes one comparison a direction, which what is no number doesn't pass.
  struct Room {
    double x = 0, y = 0, across = 0, down = 0;
    bool Has(double px, double py) const { return std::abs(px - x) <= across && std::abs(py - y) <= down; }
  };
  /// Rows of the picture that lie one behind the other in memory.
  struct Band {
    PixelRows rows;
    int top = 0;  ///< the first one's place down the picture
    Room room;
  };
  bool textCovers_ = false;
  QImage image_;
  QFont font_;  ///< scaled to device pixels
  QFontMetricsF metrics_;
  QFont baseFont_;
  double letterHeight_ = 0;  ///< device pixels
  double ascent_ = 0;
  /// A text that was measured in this font, and how it last covered what was below it.
  struct Label {
    std::string text;
    double advance = 0;  ///< width in device pixels
    QSize size;          ///< of the plate; the rest counts where it has one
    QPoint begin;        ///< of the text on the plate: 64ths of a dot across, dots down to the baseline
    std::int32_t colour = 0;
    QImage plate;  ///< with room beside it; null where letters reach out of that
  };
  mutable std::array<Label, 4> labels_;
  mutable std::size_t nextLabel_ = 0;
  /// What has changed, from the first to the last pixel; right of it and below it where nothing has.
  struct Changed {
    int left = INT_MAX, top = INT_MAX, right = INT_MIN, bottom = INT_MIN;
  };
  Changed dirty_;
  QImage original_;          ///< before the last Rescale: sizes that follow each other are scaled from there
  double originalLeft_ = 0;  ///< pixels of it that keep their width
  enum class Content { Blank, Drawn, Rescaled } content_ = Content::Blank;  ///< Rescaled: nothing was drawn since
  /// The picture's first row may lie anywhere in the image's memory, with those that don't fit behind it at the
  /// memory's begin: so a scroll moves nothing. All of it is in the first band where the picture begins with the image.
  mutable std::array<Band, 2> bands_;
  QPainter painter_;  ///< for texts and circles; stays open, since opening costs more than a text
};

}  // namespace velk
