#pragma once

#include <cmath>
#include <limits>

namespace velk {

/// A gain or an offset as values are scaled with it: taken through its decimal text of 15 digits and rounded to
/// 32 bits. Raises Overflow beyond that range.
float ThroughText(double value);

/// Whether a value lies within the 32-bit range; NaN does not.
inline bool FitsSingle(double value) {
  return std::abs(value) <= static_cast<double>(std::numeric_limits<float>::max());
}

}  // namespace velk
