#include "frame.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace sim {

namespace {

constexpr int kTripChannels = 5;

template <class... Arguments>
std::string Print(const char* picture, Arguments... arguments) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), picture, arguments...);
  return text.data();
}

int SecondsOfDay(const std::string& clock) {
  int hour = 0, minute = 0, second = 0;
  if (std::sscanf(clock.c_str(), "%d:%d:%d", &hour, &minute, &second) == 3) return hour * 3600 + minute * 60 + second;
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec;
}

}  // namespace

Unit UnitNamed(const std::string& name) {
  if (name == "KESTA version 5") return {22, 8, 13};
  if (name == "LUMO version A") return {4, 2, 3};
  if (name == "LUMO version B") return {10, 4, 7};
  return {18, 8, 13};
}

FrameBuilder::FrameBuilder(const Options& options)
    : unit_(UnitNamed(options.unit)),
      channels_(options.channels > 0 ? options.channels : unit_.channels),
      clock_(SecondsOfDay(options.clock)),
      job_(options.seed),
      trips_(options.trip > 0 && options.tripTime > 0),
      trip_(options.trip, options.tripTime),
      dice_(options.seed + 0x9E3779B9U) {
}

double FrameBuilder::OfTrip(int channel) const {
  const Trip::State now = trip_.Now();
  const double values[kTripChannels] = {now.depth, now.speed, now.inclination, now.azimuth, now.rpm};
  return values[channel - 1];
}

double FrameBuilder::Analog(int channel) const {
  if (trips_ && channel <= kTripChannels) return OfTrip(channel);
  const PumpingJob::State& now = job_.Now();
  switch (channel) {
    case 1:
      return now.treatingPressure;
    case 2:
      return now.rate;
    case 3:
      return now.density;
    case 4:
      return now.annulusPressure;
    case 5:
      return now.temperature;
    case 6:
      return now.density + 0.05;  // second densitometer
    case 7:
      return now.treatingPressure * 0.5;  // second pump's line
    default:
      return now.rate * 0.5;  // additive
  }
}

long FrameBuilder::Counter(int place) const {
  const double strokes = job_.Now().strokes;
  return std::lround(place == 1 ? strokes : strokes / place);
}

double FrameBuilder::Computed(int place) const {
  const PumpingJob::State& now = job_.Now();
  switch (place) {
    case 1:
      return now.stageTotal;
    case 2:
      return now.jobTotal;
    case 3:
      return now.treatingPressure * now.rate / 40.8;  // hydraulic horsepower
    case 4:
      return now.treatingPressure - now.annulusPressure;
    default:
      return now.jobTotal * 42 / place;
  }
}

std::string FrameBuilder::Value(int channel, bool wide) const {
  if (channel > unit_.analog && channel <= unit_.hardware)
    return Print(wide ? "%08ld" : "%07ld", Counter(channel - unit_.analog));
  const double value = channel <= unit_.analog ? Analog(channel) : Computed(channel - unit_.hardware);
  return Print(wide ? "%010.3f" : "%09.3f", value);
}

std::string FrameBuilder::Next(double seconds, bool wide) {
  job_.Advance(seconds);
  if (trips_) trip_.Advance(seconds);
  const long second = static_cast<long>(clock_) % 86400;
  clock_ += seconds;
  std::string frame = Print("%02ld:%02ld:%02ld", second / 3600, second / 60 % 60, second % 60);
  for (int channel = 1; channel <= channels_; ++channel) frame += " " + Value(channel, wide);
  return frame + "\r\n";
}

bool FrameBuilder::Damage(std::string& frame, double share) {
  if (dice_.Random() >= share) return false;
  const std::size_t last = frame.size() - 2;  // the terminator stays, but for the cut
  const auto at = static_cast<std::size_t>(dice_.Random() * static_cast<double>(last));
  const char noise = static_cast<char>(dice_.Random() * 256);
  switch (static_cast<int>(dice_.Random() * 4)) {
    case 0:
      frame[at] = frame[at] == noise ? '#' : noise;
      break;
    case 1:
      frame.erase(at, 1);
      break;
    case 2:
      frame.insert(at, 1, noise);
      break;
    default:
      frame.resize(at);
  }
  return true;
}

}  // namespace sim
