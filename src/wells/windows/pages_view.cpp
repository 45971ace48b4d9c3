#include "wells/windows/pages_view.h"

#include <QPainter>
#include <QScrollBar>
#include <algorithm>

namespace velk {

namespace {

constexpr int kGap = 8;
constexpr double kHeightOfWidth = 297.0 / 210;

}  // namespace

PagesView::PagesView(QWidget* parent) : QAbstractScrollArea(parent) {
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::StrongFocus);
}

void PagesView::Show(int pages, std::function<QImage(int page, QSize dots)> draw) {
  pages_ = pages;
  draw_ = std::move(draw);
  drawn_.clear();
  UpdateBar();
  viewport()->update();
}

QSize PagesView::SheetSize() const {
  const int width = std::max(100, viewport()->width() - 2 * kGap);
  return {width, static_cast<int>(width * kHeightOfWidth)};
}

void PagesView::UpdateBar() {
  const int step = SheetSize().height() + kGap;
  verticalScrollBar()->setRange(0, std::max(0, pages_ * step + kGap - viewport()->height()));
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(40);
}

void PagesView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  drawn_.clear();
  UpdateBar();
}

void PagesView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(viewport());
  painter.fillRect(viewport()->rect(), palette().color(QPalette::Mid));
  if (!draw_) return;
  const QSize sheet = SheetSize();
  const int step = sheet.height() + kGap, top = verticalScrollBar()->value();
  const int first = std::max(0, (top - kGap) / step);
  const int last = std::min(pages_ - 1, (top + viewport()->height()) / step);
  std::erase_if(drawn_, [&](const auto& page) { return page.first < first || page.first > last; });
  for (int page = first; page <= last; ++page) {
    QImage& image = drawn_[page];
    if (image.isNull()) {
      image = draw_(page, sheet * devicePixelRatioF());
      image.setDevicePixelRatio(devicePixelRatioF());
    }
    painter.drawImage(QPoint(kGap, kGap + page * step - top), image);
  }
}

}  // namespace velk
