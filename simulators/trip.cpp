#include "trip.h"

#include <algorithm>
#include <cmath>

namespace sim {

namespace {

/// Shares of the way at which the hole leaves the vertical, and from which on it is straight again.
constexpr double kKickOff = 0.2, kTangent = 0.7;
constexpr double kInclination = 60;
constexpr double kAzimuth = 340, kWalk = 50;  ///< turns by so much, across north
constexpr double kRpm = 40;
/// Of the time of one way.
constexpr double kRest = 0.1;

}  // namespace

void Trip::Advance(double seconds) {
  gone_ = std::fmod(gone_ + seconds, 2 * (1 + kRest) * seconds_);
}

Trip::State Trip::Now() const {
  const double half = (1 + kRest) * seconds_;
  const bool pulls = gone_ >= half;
  const double way = std::min((pulls ? gone_ - half : gone_) / seconds_, 1.0);
  const double share = pulls ? 1 - way : way;
  const double bent = std::clamp((share - kKickOff) / (kTangent - kKickOff), 0.0, 1.0);
  State now;
  now.depth = share * depth_;
  if (way < 1) now.speed = (pulls ? -60 : 60) * depth_ / seconds_;
  now.inclination = kInclination * bent;
  now.azimuth = std::fmod(kAzimuth + kWalk * bent, 360);
  now.rpm = pulls ? 0 : kRpm;
  return now;
}

}  // namespace sim
