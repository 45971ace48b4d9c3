#include "wells/windows/well_picture.h"

#include <QMouseEvent>
#include <QPainter>

namespace velk {

namespace {

constexpr int kPictureSide = 620;
/// Of the toolkit: a step of the wheel is 15 degrees, in eighths of one.
constexpr double kWheelStep = 120;

}  // namespace

WellPicture::WellPicture(QWidget* parent) : QWidget(parent) {
  setFixedSize(kPictureSide, kPictureSide);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setCursor(Qt::OpenHandCursor);
}

void WellPicture::DrawScene(const WellScene& scene, const Language& language) {
  constexpr double kSide = kPictureSide * kTwipsPerPixel;
  if (!surface_) surface_.emplace(kSide, kSide, devicePixelRatioF(), font());
  surface_->Resize(kSide, kSide, devicePixelRatioF());
  surface_->Fill(0, 0, kSide, kSide, kColoursOnDark.ground);
  scene.Draw(*surface_, {0, 0, kSide, kTwipsPerPixel / devicePixelRatioF()}, kColoursOnDark, language);
  update();
}

void WellPicture::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (surface_)
    painter.drawImage(0, 0, surface_->View());
  else
    painter.fillRect(rect(), Qt::black);
}

void WellPicture::mousePressEvent(QMouseEvent* event) {
  last_ = event->position();
}

void WellPicture::mouseMoveEvent(QMouseEvent* event) {
  const QPointF by = event->position() - last_;
  last_ = event->position();
  const auto& work = event->buttons() == Qt::LeftButton ? onTurn : onMove;
  if (event->buttons() != Qt::NoButton && work) work(by);
}

void WellPicture::wheelEvent(QWheelEvent* event) {
  if (onZoom) onZoom(event->angleDelta().y() / kWheelStep);
  event->accept();
}

}  // namespace velk
