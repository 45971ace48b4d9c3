#include "shell/window_places.h"

#include <algorithm>

namespace velk {

namespace {

constexpr int kNarrowestColumn = 300;
constexpr int kLowestRow = 160;
constexpr QSize kCascaded(480, 320);

/// Where part `index` of `parts` begins on a length that is shared out without a gap.
int Cut(int length, int index, int parts) {
  return static_cast<int>(qint64{length} * index / parts);
}

/// The rounded up share of each of `strips`.
int Shared(int windows, int strips) {
  return (windows + strips - 1) / strips;
}

int Columns(QSize room, int windows, QSize least) {
  return std::clamp(room.width() / std::max(kNarrowestColumn, least.width()), 1, std::max(windows, 1));
}

/// More of them than the room is high for, where fewer would make the windows too narrow.
int Rows(QSize room, int windows, QSize least) {
  const int rows = std::clamp(room.height() / std::max(kLowestRow, least.height()), 1, std::max(windows, 1));
  return std::max(rows, Shared(windows, std::max(room.width() / least.width(), 1)));
}

}  // namespace

std::vector<QRect> TilePlaces(QSize room, int windows, Qt::Orientation direction, QSize least) {
  std::vector<QRect> places;
  const bool columns = direction == Qt::Vertical;
  least = least.expandedTo({1, 1});
  const int strips = columns ? Columns(room, windows, least) : Rows(room, windows, least);
  const int belowEachOther = columns ? Shared(windows, strips) : strips;
  room.setHeight(std::max(room.height(), belowEachOther * least.height()));
  const int across = columns ? room.width() : room.height();
  const int along = columns ? room.height() : room.width();
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

std::vector<QRect> CascadePlaces(QSize room, int windows, int step) {
  step = std::max(step, 1);
  const QSize size =
      QSize(room.width() * 3 / 4, room.height() * 3 / 4).expandedTo(kCascaded).boundedTo(room).expandedTo({1, 1});
  const int inARow = std::max((room.height() - size.height()) / step + 1, 1);
  std::vector<QRect> places;
  for (int i = 0; i < windows; ++i) {
    const int down = i % inARow * step;
    // The next row begins beside the last, as far as there is room.
    const int right = std::min(down + i / inARow * step, std::max(room.width() - size.width(), 0));
    places.emplace_back(QPoint(right, down), size);
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
