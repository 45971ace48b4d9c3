#include "platform/windows/window_strips.h"

#include <QBackingStore>
#include <QCoreApplication>
#include <QRegion>
#include <QWindow>
#include <algorithm>
#include <tuple>

#include "platform/windows/paint_target.h"

namespace velk {

namespace {

/// Where a widget is moved within its parent, the toolkit would have the display copy its dots. Where another lies over
/// it, some copies are of what stood there before, and old digits would stay on the screen until their value changes.
void PaintMovedWidgets() {
  qputenv("QT_NO_FAST_MOVE", "1");
}
Q_COREAPP_STARTUP_FUNCTION(PaintMovedWidgets)

/// Whether a child that stands above one of its children, or above `parent` itself, may touch a part of it.
bool IsCovered(const QWidget& parent, const QWidget* child, const QRect& part) {
  const QObjectList& children = parent.children();
  // From the topmost down.
  for (auto above = children.rbegin(); above != children.rend() && *above != child; ++above) {
    if (!(*above)->isWidgetType()) continue;
    const auto& widget = static_cast<const QWidget&>(**above);
    if (widget.isVisible() && !widget.isWindow() && widget.geometry().intersects(part)) return true;
  }
  return false;
}

/// Whether a part lies in the shape of a widget: that of a frame has its corners rounded.
bool IsInShape(const QWidget& widget, const QRect& part) {
  const QRegion shape = widget.mask();
  return shape.isEmpty() ||
         std::any_of(shape.begin(), shape.end(), [&](const QRect& rect) { return rect.contains(part); });
}

/// The picture of a window, if it may be copied into at any time.
QBackingStore* PictureOf(const QWidget& window) {
  const QWindow* const handle = window.windowHandle();
  if (handle == nullptr || !handle->isExposed()) return nullptr;
  QBackingStore* const store = window.backingStore();
  // Another size or ratio is followed with the next repainting, which is of all.
  if (store == nullptr || store->size() != window.size()) return nullptr;
  const PaintTarget picture(store->paintDevice(), {});
  return picture.HasDots() && picture.Ratio() == window.devicePixelRatioF() ? store : nullptr;
}

}  // namespace

bool ReadyDots::CopyAll(const PaintTarget& target, const QRegion& region) {
  return target.HasDots() &&
         std::all_of(region.begin(), region.end(), [&](const QRect& part) { return CopyDots(target, part); });
}

void WindowStrips::Add(QWidget& widget, ReadyDots& dots, std::span<const QRect> parts) {
  QRect all;
  for (const QRect& part : parts) all |= part;
  if (all.isEmpty() || !widget.isVisible()) return;
  if (!widget.updatesEnabled()) return widget.update(all);
  QRect place = all;
  QPoint corner;
  QWidget* in = &widget;
  for (const QWidget* below = nullptr;; below = in, in = in->parentWidget()) {
    place &= in->rect();
    if (place.isEmpty()) return;
    if (IsCovered(*in, below, place) || !IsInShape(*in, place)) return widget.update(all);
    if (in->isWindow()) break;
    if (in->testAttribute(Qt::WA_NativeWindow)) return widget.update(all);
    place.translate(in->pos());
    corner += in->pos();
  }
  const qsizetype begin = parts_.size();
  const QRect seen = place.translated(-corner);
  for (const QRect& part : parts)
    if (part.intersects(seen)) parts_.push_back(part & seen);
  if (parts_.size() == begin) return;
  strips_.push_back({in, &widget, &dots, corner, place, begin, parts_.size()});
}

void WindowStrips::Show() {
  // Regions take rectangles best from the top down.
  std::sort(strips_.begin(), strips_.end(), [](const Strip& a, const Strip& b) {
    return std::tuple(a.window, a.place.y(), a.place.x()) < std::tuple(b.window, b.place.y(), b.place.x());
  });
  for (const Strip *begin = strips_.cbegin(), *end = begin; begin != strips_.cend(); begin = end) {
    end = std::find_if(begin, strips_.cend(), [&](const Strip& strip) { return strip.window != begin->window; });
    ShowIn(*begin->window, {begin, end});
  }
  strips_.clear();
  parts_.clear();
}

void WindowStrips::ShowIn(QWidget& window, std::span<const Strip> strips) const {
  QBackingStore* const store = PictureOf(window);
  QRegion shown;
  for (const Strip& strip : strips) {
    if (store != nullptr && CopyTo(*store, strip))
      shown += strip.place;
    else
      strip.widget->update(strip.place.translated(-strip.corner));
  }
  if (!shown.isEmpty()) store->flush(shown);
}

bool WindowStrips::CopyTo(QBackingStore& store, const Strip& strip) const {
  const std::span<const QRect> parts(parts_.begin() + strip.begin, parts_.begin() + strip.end);
  // What is begun is sent from memory, which holds older dots where the display has moved some by itself.
  QRegion drawn;
  drawn.setRects(parts.data(), static_cast<int>(parts.size()));
  drawn.translate(strip.corner);
  store.beginPaint(drawn);
  const PaintTarget target(store.paintDevice(), -strip.corner);
  const bool isCopied =
      std::all_of(parts.begin(), parts.end(), [&](const QRect& part) { return strip.dots->CopyDots(target, part); });
  store.endPaint();
  return isCopied;
}

}  // namespace velk
