#pragma once

namespace velk {

struct ClippedSegment {
  double x1, y1, x2, y2;
};

/// Cuts a segment to the rectangle (left, top)-(right, bottom) without bending it. Gives false when nothing of it lies
/// inside, or an end is no number.
bool ClipSegment(ClippedSegment& segment, double left, double top, double right, double bottom);

}  // namespace velk
