#pragma once

#include <QWidget>

#include "platform/drawing/surface_image.h"

namespace velk {

/// Shows a surface. What the surface has changed is repainted when ShowChanges is called, not before.
class SurfaceView : public QWidget {
  Q_OBJECT

 public:
  explicit SurfaceView(QWidget* parent = nullptr);

  /// The surface to show; it outlives the view or is taken away with nullptr.
  void SetSurface(SurfaceImage* surface);
  void ShowChanges();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  SurfaceImage* surface_ = nullptr;
};

}  // namespace velk
