#include "platform/drawing/segment_clip.h"

#include <cmath>

namespace velk {

namespace {

/// Narrows the part [from, to] of the segment that lies on the inner side of one edge: `distance` is how far inside the
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

bool ClipSegment(ClippedSegment& segment, double left, double top, double right, double bottom) {
  const double dx = segment.x2 - segment.x1, dy = segment.y2 - segment.y1;
  if (!std::isfinite(dx) || !std::isfinite(dy)) return false;
  double from = 0, to = 1;
  if (!CutAtEdge(-dx, segment.x1 - left, from, to) || !CutAtEdge(dx, right - segment.x1, from, to) ||
      !CutAtEdge(-dy, segment.y1 - top, from, to) || !CutAtEdge(dy, bottom - segment.y1, from, to))
    return false;
  const double x = segment.x1, y = segment.y1;
  if (to < 1) {
    segment.x2 = x + to * dx;
    segment.y2 = y + to * dy;
  }
  if (from > 0) {
    segment.x1 = x + from * dx;
    segment.y1 = y + from * dy;
  }
  return true;
}

}  // namespace velk
