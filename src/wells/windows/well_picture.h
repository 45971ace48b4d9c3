#pragma once

#include <QWidget>
#include <functional>
#include <optional>

#include "base/language.h"
#include "platform/drawing/surface_image.h"
#include "wells/well_scene.h"

namespace velk {

/// Picture1: a scene on the screen, worked by the mouse. Its size stays.
class WellPicture : public QWidget {
  Q_OBJECT

 public:
  explicit WellPicture(QWidget* parent);

  /// Draws the scene, its words in a language, and shows it.
  void DrawScene(const WellScene& scene, const Language& language);

  /// The mouse was drawn with its left button, by so many pixels: the well turns. With another one: it moves.
  std::function<void(QPointF by)> onTurn, onMove;
  /// The wheel was turned by so many steps; above 0 away from the hand.
  std::function<void(double steps)> onZoom;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  std::optional<SurfaceImage> surface_;
  QPointF last_;
};

}  // namespace velk
