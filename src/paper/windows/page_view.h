#pragma once

#include <QImage>
#include <QWidget>
#include <functional>
#include <optional>

#include "paper/page_layout.h"

namespace velk {

/// Picture1: the sheet on the screen. What stands above its frame is dragged by the mouse; places are in millimetres.
class PageView : public QWidget {
  Q_OBJECT

 public:
  explicit PageView(QWidget* parent);

  /// Shows a picture of the sheet, with its pixel ratio set, at its own size.
  void Show(const QImage& page);
  double MillimetresPerPixel() const;

  /// The boxes that can be dragged.
  std::function<PageBox()> logo, words;
  std::function<void(double left, double top)> onLogoDropped, onWordsDropped;
  /// The right button was pressed on the company's picture.
  std::function<void()> onLogoResized;
  /// The mouse moves over the sheet at this height; NaN where it has left it.
  std::function<void(double y)> onMouse;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  enum class Dragged { None, Logo, Words };
  QRectF OnScreen(const PageBox& box) const;

  QImage page_;
  Dragged dragged_ = Dragged::None;
  QRectF ghost_;  ///< what is dragged, in pixels
  QPointF grip_;  ///< from its corner to the mouse
};

}  // namespace velk
