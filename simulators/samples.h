#pragma once

#include <ctime>
#include <string>
#include <vector>

#include "pumping_job.h"

namespace sim {

/// What an instrument measures, sample by sample: a time of its own and a value a channel.
class Samples {
 public:
  /// `clock` is "hh:mm:ss" that the instrument's clock starts at, or empty for the wall clock.
  Samples(const std::string& clock, std::uint64_t seed);

  /// Goes on by some seconds.
  void Advance(double seconds);

  std::string Time() const;      ///< "hh:mm:ss"
  std::string DateTime() const;  ///< "dd-mmm-yyyy hh:mm:ss"
  /// The value of a channel, from 1 on, with three decimals and always as long.
  std::string Value(int channel) const;
  std::vector<std::string> Values(int channels) const;

  /// A fraction from 0 to below 1.
  double Random() { return dice_.Random(); }

 private:
  std::tm Local() const;

  double seconds_;  ///< of the instrument's clock, since 1970
  PumpingJob job_;
  PumpingJob dice_;  ///< apart from the job, so that damage does not change the values
};

}  // namespace sim
