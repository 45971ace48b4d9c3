#include "paper/clip_line.h"

namespace velk {

PageSegment ClipLine(PageSegment segment, double left, double right) {
  const PageSegment whole = segment;
  if (whole.x1 < left && whole.x2 < left) return {left, whole.y1, left, whole.y2};
  if (whole.x1 > right && whole.x2 > right) return {right, whole.y1, right, whole.y2};
  const auto clip = [&](double& x, double& y) {
    if (x >= left && x <= right) return;
    x = x < left ? left : right;
    y = whole.y1 + (whole.y2 - whole.y1) * (x - whole.x1) / (whole.x2 - whole.x1);
  };
  clip(segment.x1, segment.y1);
  clip(segment.x2, segment.y2);
  return segment;
}

}  // namespace velk
