#include "graphs/windows/surface_view.h"

#include <QPaintEvent>
#include <QPainter>

namespace velk {

SurfaceView::SurfaceView(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void SurfaceView::SetSurface(SurfaceImage* surface) {
  surface_ = surface;
  update();
}

void SurfaceView::ShowChanges() {
  if (surface_ == nullptr) return;
  const QRect changed = surface_->TakeDirty();
  if (!changed.isEmpty()) update(changed);
}

void SurfaceView::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  // The surface may be smaller than the view until a resize has gone through.
  painter.fillRect(event->rect(), Qt::white);
  if (surface_ != nullptr) painter.drawImage(0, 0, surface_->View());
}

}  // namespace velk
