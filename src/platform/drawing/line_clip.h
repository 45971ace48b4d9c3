#pragma once

namespace velk {

struct ClippedLine {
  double x1, y1, x2, y2;
};

/// Cuts a line to the rectangle (left, top)-(right, bottom) without bending it. Gives false when nothing of it lies
/// inside, or an end is no number.
bool ClipLine(ClippedLine& line, double left, double top, double right, double bottom);

}  // namespace velk
