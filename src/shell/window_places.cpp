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

int Strips(int across, int narrowest, int windows) {
  return std::clamp(across / narrowest, 1, std::max(windows, 1));
}

/// The room itself, or a higher one in which every window is as high as it has to be.
QSize RoomFor(QSize room, int windows, bool columns, int leastHeight) {
  if (!columns) return {room.width(), std::max(room.height(), leastHeight)};
  const int strips = Strips(room.width(), kNarrowestColumn, windows);
  const int mostInAColumn = (windows + strips - 1) / strips;
  return {room.width(), std::max(room.height(), mostInAColumn * leastHeight)};
}

}  // namespace

std::vector<QRect> TilePlaces(QSize room, int windows, Qt::Orientation direction, int leastHeight) {
  std::vector<QRect> places;
  const bool columns = direction == Qt::Vertical;
  room = RoomFor(room, windows, columns, std::max(leastHeight, 1));
  const int across = columns ? room.width() : room.height();
  const int along = columns ? room.height() : room.width();
  const int strips = Strips(across, columns ? kNarrowestColumn : std::max(kLowestRow, leastHeight), windows);
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
