#pragma once

#include <cstdint>
#include <deque>
#include <optional>

namespace velk {

/// How fast samples come, from their count at times that are looked at now and then.
class RateMeter {
 public:
  void Restart() { marks_.clear(); }
  /// `count` samples have come, the last of them at `ticks` (milliseconds). Looks back as far as `windowMs`.
  void Note(long long count, std::int64_t ticks, std::int64_t windowMs);
  /// Samples a second; none until two have come.
  std::optional<double> PerSecond() const;

 private:
  struct Mark {
    long long count;
    std::int64_t ticks;
  };
  std::deque<Mark> marks_;
};

}  // namespace velk
