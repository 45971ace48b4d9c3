#include "platform/drawing/line_clip.h"

#include <cmath>

namespace velk {

namespace {

/// Narrows the part [from, to] of the line that lies on the inner side of one edge: `distance` is how far inside the
/// first end lies, `slope` how much further outside the second.
bool CutAtEdge(double slope, double distance, double& from, double& to) {
  if (slope == 0) return distance >= 0;
  const double where = distance / slope;
  if (slope < 0) {
    if (where > to) return false;
    if (where > from) from = where;
  } else {
    if (where < from) return false;
    if (where < to) to = where;
  }
  return true;
}

}  // namespace

bool ClipLine(ClippedLine& line, double left, double top, double right, double bottom) {
  const double dx = line.x2 - line.x1, dy = line.y2 - line.y1;
  if (!std::isfinite(dx) || !std::isfinite(dy)) return false;
  double from = 0, to = 1;
  if (!CutAtEdge(-dx, line.x1 - left, from, to) || !CutAtEdge(dx, right - line.x1, from, to) ||
      !CutAtEdge(-dy, line.y1 - top, from, to) || !CutAtEdge(dy, bottom - line.y1, from, to))
    return false;
  const double x = line.x1, y = line.y1;
  if (to < 1) {
    line.x2 = x + to * dx;
    line.y2 = y + to * dy;
  }
  if (from > 0) {
    line.x1 = x + from * dx;
    line.y1 = y + from * dy;
  }
  return true;
}

}  // namespace velk
