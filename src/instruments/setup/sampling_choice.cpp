#include "instruments/setup/sampling_choice.h"

#include <cmath>

#include "instruments/setup/hardware_choices.h"

namespace velk {

namespace {

constexpr double kSecondsOfDay = 86400;
constexpr std::array<double, 3> kSecondsOfUnit{1, 60, 3600};

double SecondsOf(SamplingUnit unit) {
  return kSecondsOfUnit[static_cast<std::size_t>(unit)];
}

bool IsWhole(double number) {
  return number == std::round(number);
}

}  // namespace

SamplingChoice SamplingChoiceOf(double samplingRate) {
  // Rates went through texts of 15 digits: a microsecond is far above that noise and below any rate in use.
  constexpr double kMicro = 1e6;
  const double seconds = std::round(samplingRate * kSecondsOfDay * kMicro) / kMicro;
  for (const SamplingUnit unit : {SamplingUnit::Seconds, SamplingUnit::Minutes, SamplingUnit::Hours})
    if (PlaceOf(kSamplingNumbers, seconds / SecondsOf(unit)) >= 0) return {seconds / SecondsOf(unit), unit};
  for (const SamplingUnit unit : {SamplingUnit::Hours, SamplingUnit::Minutes})
    if (IsWhole(seconds / SecondsOf(unit))) return {seconds / SecondsOf(unit), unit};
  return {seconds, SamplingUnit::Seconds};
}

double SamplingRateOf(const SamplingChoice& choice) {
  return choice.number * SecondsOf(choice.unit) / kSecondsOfDay;
}

double ChosenSamplingRate(const SamplingChoice& choice, double stored) {
  return choice == SamplingChoiceOf(stored) ? stored : SamplingRateOf(choice);
}

}  // namespace velk
