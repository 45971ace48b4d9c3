#pragma once

namespace velk {

struct PageSegment {
  double x1, y1, x2, y2;
};

/// Clips a segment to left <= x <= right; an end on an edge is inside. One that lies beyond an edge as a whole runs
/// along that edge.
PageSegment ClipLine(PageSegment segment, double left, double right);

}  // namespace velk
