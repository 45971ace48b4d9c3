#pragma once

#include <array>

namespace velk {

/// The unit list beside the sampling values, in its order.
enum class SamplingUnit { Seconds, Minutes, Hours };

/// The sampling values that are offered, in any unit.
inline constexpr std::array<int, 6> kSamplingNumbers{1, 5, 10, 15, 20, 30};

/// A sampling interval as the operator reads it.
struct SamplingChoice {
  double number = 1;
  SamplingUnit unit = SamplingUnit::Seconds;

  bool operator==(const SamplingChoice&) const = default;
};

/// A stored rate, in days, as an offered value where it is one; otherwise in the largest unit of which it is a whole
/// number, or in seconds.
SamplingChoice SamplingChoiceOf(double samplingRate);

/// The rate of a choice, in days.
double SamplingRateOf(const SamplingChoice& choice);

/// The rate once the operator has left the lists at `choice`: the `stored` one, to its last digit, where they show it.
double ChosenSamplingRate(const SamplingChoice& choice, double stored);

}  // namespace velk
