#include "samples.h"

#include <array>
#include <cstdio>

namespace sim {

namespace {

double StartOf(const std::string& clock) {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  if (std::sscanf(clock.c_str(), "%d:%d:%d", &local.tm_hour, &local.tm_min, &local.tm_sec) != 3)
    return static_cast<double>(now);
  local.tm_isdst = -1;
  return static_cast<double>(std::mktime(&local));
}

}  // namespace

Samples::Samples(const std::string& clock, std::uint64_t seed)
    : seconds_(StartOf(clock)), job_(seed), dice_(seed + 0x9E3779B9U) {
}

void Samples::Advance(double seconds) {
  job_.Advance(seconds);
  seconds_ += seconds;
}

std::tm Samples::Local() const {
  const auto now = static_cast<std::time_t>(seconds_);
  std::tm local{};
  localtime_r(&now, &local);
  return local;
}

std::string Samples::Time() const {
  const std::tm local = Local();
  std::array<char, 48> text{};
  std::snprintf(text.data(), text.size(), "%02d:%02d:%02d", local.tm_hour, local.tm_min, local.tm_sec);
  return text.data();
}

std::string Samples::DateTime() const {
  static constexpr std::array<const char*, 12> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                          "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  const std::tm local = Local();
  std::array<char, 48> date{};
  std::snprintf(date.data(), date.size(), "%02d-%s-%04d ", local.tm_mday,
                kMonths[static_cast<std::size_t>(local.tm_mon)], local.tm_year + 1900);
  return date.data() + Time();
}

std::string Samples::Value(int channel) const {
  const PumpingJob::State& now = job_.Now();
  const double measured[] = {now.treatingPressure, now.rate,       now.density, now.annulusPressure,
                             now.temperature,      now.stageTotal, now.jobTotal};
  const int kinds = static_cast<int>(std::size(measured));
  // Further channels repeat the first ones, each set a little apart.
  const int repeat = (channel - 1) / kinds;
  const double value = measured[(channel - 1) % kinds] + repeat * 0.125;
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%09.3f", value);
  return text.data();
}

std::vector<std::string> Samples::Values(int channels) const {
  std::vector<std::string> values;
  for (int channel = 1; channel <= channels; ++channel) values.push_back(Value(channel));
  return values;
}

}  // namespace sim
