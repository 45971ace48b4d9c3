#include "platform/drawing/segment_raster.h"

#include <algorithm>
#include <cstdlib>

namespace velk {

namespace {

/// Fills the rectangle from (left, top) up to, and without, (right, bottom).
void Fill(const PixelRows& surface, int left, int top, int right, int bottom, std::uint32_t colour) {
  left = std::max(left, 0);
  top = std::max(top, 0);
  right = std::min(right, surface.width);
  bottom = std::min(bottom, surface.height);
  if (left >= right) return;
  for (int y = top; y < bottom; ++y) {
    std::uint32_t* row = surface.pixels + static_cast<std::size_t>(y) * surface.stride;
    std::fill(row + left, row + right, colour);
  }
}

}  // namespace

void RasterSegment(const PixelRows& surface, int x1, int y1, int x2, int y2, int thickness, std::uint32_t colour) {
  const int before = thickness / 2, behind = thickness - before;
  if (x1 == x2 || y1 == y2) {
    Fill(surface, std::min(x1, x2) - before, std::min(y1, y2) - before, std::max(x1, x2) + behind,
         std::max(y1, y2) + behind, colour);
    return;
  }
  const int dx = std::abs(x2 - x1), dy = -std::abs(y2 - y1);
  const int stepX = x1 < x2 ? 1 : -1, stepY = y1 < y2 ? 1 : -1;
  for (int error = dx + dy, x = x1, y = y1;;) {
    Fill(surface, x - before, y - before, x + behind, y + behind, colour);
    if (x == x2 && y == y2) return;
    const int twice = 2 * error;
    if (twice >= dy) {
      error += dy;
      x += stepX;
    }
    if (twice <= dx) {
      error += dx;
      y += stepY;
    }
  }
}

}  // namespace velk
