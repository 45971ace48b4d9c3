#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

#include "base/single.h"

namespace velk {

// From times and values to places on a chart, in twips. A result that is no number, or lies beyond the 32-bit range, is
// given as NaN: the caller leaves without drawing.

/// A 64-bit result as 32-bit float, or NaN.
inline float NarrowOrNan(double value) {
  return FitsSingle(value) ? static_cast<float>(value) : std::numeric_limits<float>::quiet_NaN();
}

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

[[noreturn]] void RaiseEmptyScale();

/// x of a value on a scale that reaches from `leftMargin` to `width`. Raises DivisionByZero for an empty scale.
inline float ValueToX(double value, Scale scale, double leftMargin, double width) {
  const double above = value - static_cast<double>(scale.min);
  const double range = static_cast<double>(scale.max) - static_cast<double>(scale.min);
  if (!std::isfinite(range)) return std::numeric_limits<float>::quiet_NaN();
  if (range == 0 && std::isfinite(above)) RaiseEmptyScale();
  // What is no number, or infinite, above a sound scale comes out as such.
  return NarrowOrNan(leftMargin + (width - leftMargin) * above / range);
}

/// Remembers the limits of the curves that a chart draws in turn, so that a sample converts no text.
class ScaleCache {
 public:
  Scale Limits(double min, double max) {
    const std::size_t index = next_ < count_ ? next_ : 0;
    const Entry& entry = entries_[index];
    if (index >= count_ || entry.min != min || entry.max != max) return Find(min, max);
    next_ = index + 1;
    return entry.limits;
  }

 private:
  Scale Find(double min, double max);

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
