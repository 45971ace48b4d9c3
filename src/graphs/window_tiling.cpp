#include "graphs/window_tiling.h"

#include <algorithm>
#include <numeric>

namespace velk {

namespace {

/// Beside labels and axis this leaves a plot of 140 pixels: a narrower one shows too little to be worth a column.
constexpr int kLeastWidth = 400;

/// Windows placed column by column, `rows` in each.
std::vector<WindowPlace> InColumns(int width, int height, const std::vector<int>& heights, int columns) {
  const int count = static_cast<int>(heights.size());
  const int rows = (count + columns - 1) / columns;
  std::vector<WindowPlace> places;
  for (int i = 0; i < count; ++i) {
    const int column = i / rows;
    const bool top = i % rows == 0;
    const int left = width * column / columns, right = width * (column + 1) / columns;
    const int y = top ? 0 : places.back().y + places.back().height;
    places.push_back({left, y, right - left, std::min(heights[i], height)});
  }
  return places;
}

bool Fits(const std::vector<WindowPlace>& places, int height) {
  return std::all_of(places.begin(), places.end(), [&](const WindowPlace& p) { return p.y + p.height <= height; });
}

std::vector<WindowPlace> EqualTiles(int width, int height, int count) {
  int columns = 1;
  while (columns * columns < count) ++columns;
  const int rows = (count + columns - 1) / columns;
  std::vector<WindowPlace> places;
  for (int i = 0; i < count; ++i) {
    const int column = i / rows, row = i % rows;
    const int left = width * column / columns, right = width * (column + 1) / columns;
    const int top = height * row / rows, bottom = height * (row + 1) / rows;
    places.push_back({left, top, right - left, bottom - top});
  }
  return places;
}

}  // namespace

std::vector<WindowPlace> TileWindows(int width, int height, const std::vector<int>& wantedHeights) {
  const int count = static_cast<int>(wantedHeights.size());
  for (int columns = 1; columns <= count && (columns == 1 || width / columns >= kLeastWidth); ++columns) {
    auto places = InColumns(width, height, wantedHeights, columns);
    if (Fits(places, height)) return places;
  }
  return EqualTiles(width, height, count);
}

namespace {

/// The windows of one column: the room that is over shared out equally.
void FillColumn(std::vector<WindowPlace>& places, int left, int width, int height, const std::vector<int>& least) {
  const int count = static_cast<int>(least.size());
  const int over = height - std::accumulate(least.begin(), least.end(), 0);
  int top = 0;
  for (int i = 0; i < count; ++i) {
    const int high = least[static_cast<std::size_t>(i)] + over * (i + 1) / count - over * i / count;
    places.push_back({left, top, width, high});
    top += high;
  }
}

using Heights = std::vector<int>;

/// The windows of a column; they stand in their order, column by column.
Heights OfColumn(const Heights& all, int column, int columns) {
  const int count = static_cast<int>(all.size());
  return {all.begin() + count * column / columns, all.begin() + count * (column + 1) / columns};
}

/// Columns that are as high as the area, or as the highest of them has to be.
std::vector<WindowPlace> FilledColumns(int width, int height, const Heights& least, int columns) {
  for (int column = 0; column < columns; ++column) {
    const Heights own = OfColumn(least, column, columns);
    height = std::max(height, std::accumulate(own.begin(), own.end(), 0));
  }
  std::vector<WindowPlace> places;
  for (int column = 0; column < columns; ++column) {
    const int left = width * column / columns;
    FillColumn(places, left, width * (column + 1) / columns - left, height, OfColumn(least, column, columns));
  }
  return places;
}

}  // namespace

std::vector<WindowPlace> FillWithWindows(int width, int height, const std::vector<int>& leastHeights) {
  const int count = static_cast<int>(leastHeights.size());
  std::vector<WindowPlace> places;
  for (int columns = 1; columns == 1 || (columns <= count && width / columns >= kLeastWidth); ++columns) {
    places = FilledColumns(width, height, leastHeights, columns);
    if (Fits(places, height)) break;
  }
  return places;
}

}  // namespace velk
