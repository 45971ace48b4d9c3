#pragma once

namespace sim {

/// A string of pipe that is run into a well and pulled out of it, over and over, with a rest at either end, and what a
/// tool at its lower end measures: the direction of the hole there.
class Trip {
 public:
  /// Down to `depth`, in so many seconds each way.
  Trip(double depth, double seconds) : depth_(depth), seconds_(seconds) {}

  /// Goes on by some seconds.
  void Advance(double seconds);

  struct State {
    double depth = 0;        ///< ft
    double speed = 0;        ///< ft/min, below 0 while it is pulled
    double inclination = 0;  ///< degrees
    double azimuth = 0;      ///< degrees
    double rpm = 0;
  };
  State Now() const;

 private:
  double depth_;
  double seconds_;
  double gone_ = 0;  ///< since it began to be run in
};

}  // namespace sim
