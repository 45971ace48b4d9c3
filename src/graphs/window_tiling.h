#pragma once

#include <vector>

namespace velk {

/// A place in the main window's client area, in pixels.
struct WindowPlace {
  int x = 0, y = 0, width = 0, height = 0;
};

/// Places for windows that want these heights, in an area of width x height pixels: one under the other where they fit,
/// side by side in as few columns as do otherwise, and in equal tiles where nothing fits. No window covers another.
std::vector<WindowPlace> TileWindows(int width, int height, const std::vector<int>& wantedHeights);

/// Places that fill an area of width x height pixels with windows that are at least so high: in as few columns as do,
/// the room that is over shared out. Where they find no room in any number of columns that are wide enough for a plot,
/// they reach beyond the bottom, in as many columns as are.
std::vector<WindowPlace> FillWithWindows(int width, int height, const std::vector<int>& leastHeights);

}  // namespace velk
