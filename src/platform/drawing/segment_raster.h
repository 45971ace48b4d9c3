#pragma once

#include <cstddef>
#include <cstdint>

namespace velk {

/// Pixels of 32 bits in memory, row by row.
struct PixelRows {
  std::uint32_t* pixels = nullptr;
  std::size_t stride = 0;  ///< pixels from one row to the next
  int width = 0;
  int height = 0;
};

/// Draws a straight segment with a square pen of `thickness` pixels; what lies outside is cut off. A curve is thousands
/// of such segments, each a few pixels long, and a general painter takes most of its time to get ready for one. The
/// ends have to be near the surface already (see segment_clip.h): every step between them is walked.
void RasterSegment(const PixelRows& surface, int x1, int y1, int x2, int y2, int thickness, std::uint32_t colour);
/// The same where the whole pen is known to stay on the surface.
void RasterInside(const PixelRows& surface, int x1, int y1, int x2, int y2, int thickness, std::uint32_t colour);

}  // namespace velk
