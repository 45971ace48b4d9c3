#include "pumping_job.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace sim {

namespace {

struct Stage {
  double seconds;
  double rate;     ///< bbl/min
  double density;  ///< lb/gal
  double shutIn;   ///< psi that stand on the line without any rate
};

constexpr Stage kStages[] = {
    {4, 0, 8.34, 50},                          // lines open
    {10, 1.5, 8.34, 400},                      // filling the lines
    {12, 0, 8.34, 5200},                       // pressure test
    {6, 0, 8.34, 80},     {30, 5, 10.0, 300},  // spacer
    {90, 6.5, 12.5, 250},                      // lead slurry
    {60, 5, 15.8, 200},                        // tail slurry
    {8, 0, 15.8, 60},                          // plug
    {80, 7, 8.34, 600},                        // displacement
    {20, 2, 8.34, 1500},                       // bump
    {40, 0, 8.34, 2600},                       // holding
};

constexpr double kStrokesPerBarrel = 17;

/// The part of the way to a new value that is gone after `seconds`, for a change that takes about `lag` seconds.
double Follow(double seconds, double lag) {
  return 1 - std::exp(-seconds / lag);
}

}  // namespace

double PumpingJob::Random() {
  random_ ^= random_ << 13;
  random_ ^= random_ >> 7;
  random_ ^= random_ << 17;
  return static_cast<double>(random_ >> 11) * 0x1p-53;
}

void PumpingJob::Advance(double seconds) {
  inStage_ += seconds;
  if (inStage_ >= kStages[stage_].seconds) {
    inStage_ = 0;
    stage_ = (stage_ + 1) % std::size(kStages);
    state_.stageTotal = 0;
  }
  const Stage& stage = kStages[stage_];
  const double rateGoal = stage.rate > 0 ? stage.rate + Noise(0.08) : 0;
  state_.rate = std::max(0.0, state_.rate + (rateGoal - state_.rate) * Follow(seconds, 2));
  const double friction = 38 * std::pow(state_.rate, 1.8);
  const double pressureGoal = stage.shutIn + friction + Noise(12);
  state_.treatingPressure =
      std::max(0.0, state_.treatingPressure + (pressureGoal - state_.treatingPressure) * Follow(seconds, 1.5));
  state_.annulusPressure = std::max(0.0, 20 + state_.treatingPressure * 0.06 + Noise(2));
  state_.density += (stage.density + Noise(0.03) - state_.density) * Follow(seconds, 5);
  state_.temperature += (70 + state_.rate * 2.5 + Noise(0.2) - state_.temperature) * Follow(seconds, 30);
  const double barrels = state_.rate * seconds / 60;
  state_.stageTotal += barrels;
  state_.jobTotal += barrels;
  state_.strokes += barrels * kStrokesPerBarrel;
}

}  // namespace sim
