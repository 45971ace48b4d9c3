#include "graphs/window_tiling.h"

#include <algorithm>

namespace velk {

namespace {

/// Below this a plot shows too little to be worth a column of its own.
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

}  // namespace velk
