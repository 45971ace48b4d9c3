#include "shell/window_places.h"

#include <algorithm>

namespace velk {

namespace {

constexpr int kNarrowestColumn = 300;
constexpr int kLowestRow = 160;

/// Where part `index` of `parts` begins on a length that is shared out without a gap.
int Cut(int length, int index, int parts) {
  return static_cast<int>(qint64{length} * index / parts);
}

}  // namespace

std::vector<QRect> TilePlaces(QSize room, int windows, Qt::Orientation direction) {
  std::vector<QRect> places;
  const bool columns = direction == Qt::Vertical;
  const int across = columns ? room.width() : room.height();
  const int along = columns ? room.height() : room.width();
  const int strips = std::clamp(across / (columns ? kNarrowestColumn : kLowestRow), 1, std::max(windows, 1));
  for (int strip = 0; strip < strips; ++strip) {
    const int shared = windows / strips + (strip < windows % strips ? 1 : 0);
    const int begin = Cut(across, strip, strips);
    const int width = Cut(across, strip + 1, strips) - begin;
    for (int i = 0; i < shared; ++i) {
      const int from = Cut(along, i, shared);
      const int length = Cut(along, i + 1, shared) - from;
      places.push_back(columns ? QRect(begin, from, width, length) : QRect(from, begin, length, width));
    }
  }
  return places;
}

std::vector<QRect> IconPlaces(QSize room, int icons, QSize icon) {
  std::vector<QRect> places;
  const int inARow = std::max(room.width() / std::max(icon.width(), 1), 1);
  for (int i = 0; i < icons; ++i) {
    const int row = i / inARow + 1;
    places.emplace_back(QPoint(i % inARow * icon.width(), room.height() - row * icon.height()), icon);
  }
  return places;
}

}  // namespace velk
