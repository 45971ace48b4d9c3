#include "instruments/calibration/calibration.h"

#include <cmath>

namespace velk {

std::optional<ChannelScale> ScaleOf(const CalibrationPoints& points) {
  const double span = points[1].reading - points[0].reading;
  if (std::fpclassify(span) == FP_ZERO) return std::nullopt;
  const double gain = (points[1].reference - points[0].reference) / span;
  return ChannelScale{gain, points[0].reference - gain * points[0].reading};
}

}  // namespace velk
