#pragma once

#include "model/session.h"
#include "platform/loop/clock.h"

namespace velk {

/// How long an instrument may take: TheTimeOut sampling intervals from the moment this is made.
class TimeLimit {
 public:
  TimeLimit(const Clock& clock, const Session& session)
      : clock_(clock),
        begun_(clock.Ticks()),
        milliseconds_(session.TheTimeOut * session.SamplingRate * kMillisecondsPerDay) {}

  bool IsExceeded() const { return static_cast<double>(clock_.Ticks() - begun_) > milliseconds_; }

 private:
  static constexpr double kMillisecondsPerDay = 86'400'000;

  const Clock& clock_;
  std::int64_t begun_;
  double milliseconds_;
};

}  // namespace velk
