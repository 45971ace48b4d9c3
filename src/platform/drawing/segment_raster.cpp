#include "platform/drawing/segment_raster.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>

namespace velk {

namespace {

/// Fills the rectangle from (left, top) up to, and without, (right, bottom).
void Fill(const PixelRows& surface, int left, int top, int right, int bottom, std::uint32_t colour) {
  left = std::max(left, 0);
  top = std::max(top, 0);
  right = std::min(right, surface.width);
  bottom = std::min(bottom, surface.height);
  if (left >= right || top >= bottom) return;
  const auto width = static_cast<std::size_t>(right - left);
  std::uint32_t* row = surface.pixels + static_cast<std::size_t>(top) * surface.stride + left;
  for (int y = top; y < bottom; ++y, row += surface.stride)
    if (width == 1)
      *row = colour;  // a column of the grid
    else
      std::fill_n(row, width, colour);
}

/// A square of pixels that lies on the surface.
template <int thickness>
void Dot(std::uint32_t* corner, std::size_t stride, std::uint32_t colour) {
  for (int row = 0; row < thickness; ++row, corner += stride)
    for (int column = 0; column < thickness; ++column) corner[column] = colour;
}

/// Walks a segment whose pen stays on the surface.
template <int thickness>
void Walk(const PixelRows& surface, int x1, int y1, int x2, int y2, std::uint32_t colour) {
  const int dx = std::abs(x2 - x1), dy = -std::abs(y2 - y1);
  const std::ptrdiff_t stepX = x1 < x2 ? 1 : -1;
  const auto stride = static_cast<std::ptrdiff_t>(surface.stride);
  const std::ptrdiff_t stepY = y1 < y2 ? stride : -stride;
  std::uint32_t* corner = surface.pixels + (y1 - thickness / 2) * stride + (x1 - thickness / 2);
  std::uint32_t* const last = surface.pixels + (y2 - thickness / 2) * stride + (x2 - thickness / 2);
  // Most curves go so slowly that the ends are all: no step then has to be told by branches, which nobody can foresee.
  if (dx <= 1 && dy >= -1) {
    Dot<thickness>(corner, surface.stride, colour);
    return Dot<thickness>(last, surface.stride, colour);
  }
  for (int error = dx + dy;;) {
    Dot<thickness>(corner, surface.stride, colour);
    if (corner == last) return;
    const int twice = 2 * error;
    if (twice >= dy) {
      error += dy;
      corner += stepX;
    }
    if (twice <= dx) {
      error += dx;
      corner += stepY;
    }
  }
}

/// Whether every pixel of the pen is on the surface.
bool IsInside(const PixelRows& surface, int x1, int y1, int x2, int y2, int thickness) {
  const int before = thickness / 2, behind = thickness - before;
  return std::min(x1, x2) >= before && std::min(y1, y2) >= before && std::max(x1, x2) + behind <= surface.width &&
         std::max(y1, y2) + behind <= surface.height;
}

/// Any pen anywhere.
void RasterByRows(const PixelRows& surface, int x1, int y1, int x2, int y2, int thickness, std::uint32_t colour) {
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

}  // namespace

void RasterInside(const PixelRows& surface, int x1, int y1, int x2, int y2, int thickness, std::uint32_t colour) {
  // Lines of a grid are long and straight, and thin.
  if (thickness == 1 && x1 != x2 && y1 != y2) return Walk<1>(surface, x1, y1, x2, y2, colour);
  if (thickness == 2) return Walk<2>(surface, x1, y1, x2, y2, colour);
  if (thickness == 3) return Walk<3>(surface, x1, y1, x2, y2, colour);
  RasterByRows(surface, x1, y1, x2, y2, thickness, colour);
}

void RasterSegment(const PixelRows& surface, int x1, int y1, int x2, int y2, int thickness, std::uint32_t colour) {
  const bool isSlanted = x1 != x2 && y1 != y2;
  if (isSlanted && IsInside(surface, x1, y1, x2, y2, thickness))
    return RasterInside(surface, x1, y1, x2, y2, thickness, colour);
  RasterByRows(surface, x1, y1, x2, y2, thickness, colour);
}

}  // namespace velk
