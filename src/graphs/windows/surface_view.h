#pragma once

#include <QImage>
#include <QWidget>

#include "platform/drawing/colour_map.h"
#include "platform/drawing/surface_image.h"
#include "platform/windows/window_strips.h"

namespace velk {

/// Shows a surface in the colours of a map. What the surface has changed is brought to the screen when ShowChanges is
/// called, not before.
class SurfaceView : public QWidget, public ReadyDots {
  Q_OBJECT

 public:
  explicit SurfaceView(QWidget* parent = nullptr);

  /// The surface to show, and how its colours are shown; both outlive the view or are taken away with nullptr.
  void Show(SurfaceImage* surface, ColourMap* colours);
  void ShowChanges(WindowStrips& strips);
  /// Beyond the surface there is paper.
  bool CopyDots(const PaintTarget& target, const QRect& part) override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void Paint(const QRect& shown);
  QImage Mapped(const QImage& picture, const QRect& shown);

  SurfaceImage* surface_ = nullptr;
  ColourMap* colours_ = nullptr;
  QImage mapped_;  ///< the surface in other colours, as far as a painter has last shown it
};

}  // namespace velk
