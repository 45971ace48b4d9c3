#include "graphs/coordinates.h"

#include "base/errors.h"
#include "base/numbers.h"

namespace velk {

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

float LimitThroughText(double limit) {
  return NarrowOrNan(Val(NumberText(limit)));
}

}  // namespace

float TimeToY(double time, double origin, double pixelDivide, double timeStep) {
  const double distance = (time - origin) * pixelDivide;
  if (!std::isfinite(distance)) return kNan;
  if (timeStep == 0) throw RuntimeError(ErrorNumber::DivisionByZero);
  return NarrowOrNan(distance / timeStep);
}

Scale ScaleLimits(double min, double max) {
  if (!std::isfinite(min) || !std::isfinite(max)) return {kNan, kNan};
  return {LimitThroughText(min), LimitThroughText(max)};
}

void RaiseEmptyScale() {
  throw RuntimeError(ErrorNumber::DivisionByZero);
}

Scale ScaleCache::Find(double min, double max) {
  for (std::size_t tried = 0; tried < count_; ++tried) {
    const std::size_t index = (next_ + tried) % count_;
    const Entry& entry = entries_[index];
    if (entry.min == min && entry.max == max) {
      next_ = index + 1;
      return entry.limits;
    }
  }
  const std::size_t index = count_ < entries_.size() ? count_++ : next_ % entries_.size();
  entries_[index] = {min, max, ScaleLimits(min, max)};
  next_ = index + 1;
  return entries_[index].limits;
}

}  // namespace velk
