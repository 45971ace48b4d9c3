#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QRgb>
#include <cstddef>

namespace velk {

/// The memory that a widget is painted into, in a paintEvent or by WindowStrips. Dots that stand ready are copied there
/// in place: to begin and end a painter takes ten times as long as to copy the strip that a sample has changed.
class PaintTarget {
 public:
  /// The device, and where its corner lies in the widget; QWidget::redirected tells both in a paintEvent.
  PaintTarget(QPaintDevice* device, QPoint corner);

  /// Whether it is a picture that takes opaque dots of 0xffrrggbb as they are, and a pixel of the widget is a whole
  /// number of them; a widget that is grabbed and a screen at a ratio of 1.5 need a painter.
  bool HasDots() const { return origin_ != nullptr; }
  /// Dots a pixel; whole.
  int Ratio() const { return ratio_; }
  /// The dots from one of the widget on, along its row.
  QRgb* Row(int x, int y) const { return origin_ + y * stride_ + x; }
  /// Copies what lies under `rect`, in pixels of the widget, of an opaque picture whose dots begin at `corner`. Both
  /// hold it whole.
  void Copy(const QRect& rect, const QImage& picture, QPoint corner) const;
  /// What stands under `rect`, which was painted.
  QImage Picture(const QRect& rect) const;
  /// The memory under `rect` as a picture to paint on; good while the target is.
  QImage View(const QRect& rect) const;

 private:
  QRgb* origin_ = nullptr;  ///< the widget's first dot, which may lie outside of what is painted
  std::ptrdiff_t stride_ = 0;
  int ratio_ = 1;
  QImage::Format format_ = QImage::Format_Invalid;
};

}  // namespace velk
