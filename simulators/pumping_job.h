#pragma once

#include <cstdint>
#include <vector>

namespace sim {

/// A cementing job as a unit would measure it: stages with their own rate and fluid, pressures that follow the rate,
/// totals that add up. It repeats without an end, totals going on.
class PumpingJob {
 public:
  explicit PumpingJob(std::uint64_t seed) : random_(seed * 2 + 1) {}

  /// Goes on by some seconds.
  void Advance(double seconds);

  struct State {
    double treatingPressure;  ///< psi
    double annulusPressure;   ///< psi
    double density;           ///< lb/gal
    double rate;              ///< bbl/min
    double temperature;       ///< degF
    double stageTotal;        ///< bbl
    double jobTotal;          ///< bbl
    double strokes;           ///< of the pump, since the start
  };
  const State& Now() const { return state_; }

  /// A fraction from 0 to below 1.
  double Random();

 private:
  double Noise(double size) { return (Random() - 0.5) * 2 * size; }

  std::uint64_t random_;
  double inStage_ = 0;
  std::size_t stage_ = 0;
  State state_{50, 20, 8.34, 0, 70, 0, 0, 0};
};

}  // namespace sim
