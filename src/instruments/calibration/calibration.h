#pragma once

#include <array>
#include <optional>

namespace velk {

/// A reference value that was shown to a channel, and what it has read.
struct CalibrationPoint {
  double reference = 0;
  double reading = 0;
};
using CalibrationPoints = std::array<CalibrationPoint, 2>;

/// The scale of a channel: reading x gain + offset.
struct ChannelScale {
  double gain = 1;
  double offset = 0;
};

/// The scale that gives each reading its reference; nothing where both readings are the same.
std::optional<ChannelScale> ScaleOf(const CalibrationPoints& points);

}  // namespace velk
