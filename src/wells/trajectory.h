#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace velk {

/// The circle as the well tools count it. The last places of their results depend on these digits.
inline constexpr double kWellPi = 3.14159265358979;
inline constexpr double kWellTwoPi = 6.28318530717958;
/// What takes the place of a calculation interval below 1.
inline constexpr std::int16_t kDefaultInterval = 100;

inline double WellRadians(double degrees) {
  return degrees * kWellPi / 180;
}
inline double WellDegrees(double radians) {
  return radians * 180 / kWellPi;
}

/// A station as it was surveyed. Depths of the well tools are all in the survey's own unit.
struct SurveyStation {
  double depth = 0;        ///< measured along the hole
  double inclination = 0;  ///< degrees from the vertical
  double azimuth = 0;      ///< degrees, clockwise from north
  bool operator==(const SurveyStation&) const = default;
};

/// A computed point of the path, and the segment that ends there.
struct PathStation {
  double depth = 0;
  double tvd = 0;          ///< true vertical depth, positive down
  double east = 0;         ///< from the surface point
  double north = 0;        ///< from the surface point
  double radius = 0;       ///< of the segment's curvature; 0: it is straight
  double dogLeg = 0;       ///< the segment's severity, degrees per 100 units of depth
  double inclination = 0;  ///< radians
  double azimuth = 0;      ///< radians
};

struct WellPath {
  std::vector<PathStation> stations;
  double maxTvd = 0;
};

/// The path through a survey whose first row is the surface (0, 0, 0): a point at each station and at each whole
/// multiple of `interval`. An interval below 1 becomes kDefaultInterval. Displacement is by the average angle, vertical
/// depth by the radius of curvature of the change of inclination; the radius itself is this system's own measure.
/// Raises Overflow where a depth of the grid or a count passes 32767, DivisionByZero where two rows between which the
/// grid has a depth share theirs, SubscriptOutOfRange for a survey without a row, or without the surface.
WellPath CalculateTrajectory(std::span<const SurveyStation> survey, std::int16_t& interval);

/// The mean of two azimuths, across north where that is the shorter way; radians, 0 to two pi.
double MeanAzimuth(double a1, double a2);

/// The dog-leg severity between two stations, in degrees per 100 units of depth whichever way the depth runs; 0 where
/// depth or inclination does not change.
double SegmentDogLeg(const SurveyStation& previous, const SurveyStation& current);

}  // namespace velk
