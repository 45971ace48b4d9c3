#pragma once

#include <cstdint>
#include <tuple>
#include <vector>

#include "paper/clip_line.h"
#include "platform/drawing/surface.h"

namespace velk {

/// One curve of a page as its device can show it. Ends of segments go to the nearest dot, so all that lies in one row
/// of dots is a few horizontal runs, however many records were drawn; what leads from row to row is kept as it is.
/// Drawn with one pen, this gives the dots that each segment by itself would give.
class DotCurve {
 public:
  /// The dots of a device of a sheet that is `height` millimetres high.
  DotCurve(double dotsPerMillimetre, double height);

  /// A segment in millimetres. One that is no number, or lies above or below the sheet, is left out.
  void Add(const PageSegment& segment);
  /// Draws on a surface in millimetres, with its present pen.
  void Draw(Surface& surface, std::int32_t colour) const;
  /// Lines that Draw draws.
  std::size_t LineCount() const;

 private:
  /// Dots of a row, both ends included.
  struct Run {
    int from, to;
  };
  struct Step {
    int x1, y1, x2, y2;
    auto Ends() const { return std::tie(x1, y1, x2, y2); }
    bool operator==(const Step& other) const { return Ends() == other.Ends(); }
    bool operator<(const Step& other) const { return Ends() < other.Ends(); }
  };
  void AddRun(std::vector<Run>& row, Run run);
  void AddStep(const Step& step);

  double dots_;
  std::vector<std::vector<Run>> rows_;  ///< of each row in order, none touching another
  std::vector<Step> steps_;
  std::size_t sorted_ = 0;  ///< how many of them are known to differ
};

}  // namespace velk
