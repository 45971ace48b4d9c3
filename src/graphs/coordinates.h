#pragma once

#include <array>
#include <cstddef>

namespace velk {

// From times and values to places on a chart, in twips. A result that is no number, or lies beyond the 32-bit range, is
// given as NaN: the caller leaves without drawing.

/// A 64-bit result as 32-bit float, or NaN.
float NarrowOrNan(double value);

/// y of a time: `pixelDivide` twips for each `timeStep` days behind `origin`. Raises DivisionByZero for a step of 0.
float TimeToY(double time, double origin, double pixelDivide, double timeStep);

/// Origin of a page that moves up because the block that begins at `blockStart` would pass its bottom.
inline double OriginBehindScroll(double origin, double blockStart) {
  return (origin + blockStart) / 2;
}

/// The limits of a curve's scale, as they are drawn with.
struct Scale {
  float min = 0;
  float max = 0;
};

/// A limit goes through its decimal text: what the operator reads in the table is what the curve is drawn with. Gains
/// and offsets do the same (platform/single.h), but raise beyond 32 bits: a sample can't be told without them.
Scale ScaleLimits(double min, double max);

/// x of a value on a scale that reaches from `leftMargin` to `width`. Raises DivisionByZero for an empty scale.
float ValueToX(double value, Scale scale, double leftMargin, double width);

/// Remembers the limits of the curves that a chart draws in turn, so that a sample converts no text.
class ScaleCache {
 public:
  Scale Limits(double min, double max);

 private:
  struct Entry {
    double min = 0;
    double max = 0;
    Scale limits;
  };
  std::array<Entry, 64> entries_;
  std::size_t count_ = 0;
  std::size_t next_ = 0;  ///< where the next curve stands if the order is that of the last sample
};

}  // namespace velk
