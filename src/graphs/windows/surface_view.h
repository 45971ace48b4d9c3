#pragma once

#include <QImage>
#include <QWidget>

#include "platform/drawing/colour_map.h"
#include "platform/drawing/surface_image.h"

namespace velk {

class PaintTarget;

/// Shows a surface in the colours of a map. What the surface has changed is repainted when ShowChanges is called, not
/// before.
class SurfaceView : public QWidget {
  Q_OBJECT

 public:
  explicit SurfaceView(QWidget* parent = nullptr);

  /// The surface to show, and how its colours are shown; both outlive the view or are taken away with nullptr.
  void Show(SurfaceImage* surface, ColourMap* colours);
  void ShowChanges();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool IsInView(QRect rect) const;
  bool CopyTo(const PaintTarget& target, const QRegion& region);
  void Paint(const QRect& shown);
  QImage Mapped(const QImage& picture, const QRect& shown);

  SurfaceImage* surface_ = nullptr;
  ColourMap* colours_ = nullptr;
  QImage mapped_;  ///< the surface in other colours, as far as a painter has last shown it
};

}  // namespace velk
