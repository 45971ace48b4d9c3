#include "base/single.h"

#include <cmath>
#include <limits>

#include "base/errors.h"
#include "base/numbers.h"

namespace velk {

float ThroughText(double value) {
  return ToSingle(Val(NumberText(value)));
}

bool FitsSingle(double value) {
  return std::abs(value) <= static_cast<double>(std::numeric_limits<float>::max());
}

}  // namespace velk
