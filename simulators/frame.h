#pragma once

#include <string>

#include "options.h"
#include "pumping_job.h"
#include "trip.h"

namespace sim {

/// Channels 1 to `analog` are analog, then counters up to `hardware`, then values that the unit computes.
struct Unit {
  int channels;
  int analog;
  int hardware;
};

Unit UnitNamed(const std::string& name);

/// Builds the frames of a unit: the time, a blank and a raw value a channel, CR LF. All frames are equally long, since
/// a reader believes a frame only if it is as long as the one before.
class FrameBuilder {
 public:
  explicit FrameBuilder(const Options& options);

  /// The next frame, `seconds` after the one before; `wide` gives each value one digit more.
  std::string Next(double seconds, bool wide);

  /// One in 1 / share frames comes back damaged: a byte changed, lost or put in, or the end cut off.
  bool Damage(std::string& frame, double share);

 private:
  double Analog(int channel) const;
  double OfTrip(int channel) const;
  long Counter(int place) const;
  double Computed(int place) const;
  std::string Value(int channel, bool wide) const;

  Unit unit_;
  int channels_;
  double clock_;  ///< seconds of the day
  PumpingJob job_;
  bool trips_;
  Trip trip_;
  PumpingJob dice_;  ///< of the damage, so that damage does not change the values
};

}  // namespace sim
