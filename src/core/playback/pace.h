#pragma once

#include <algorithm>
#include <cstdint>

namespace velk {

/// Which rows are due at a speed. A timer's tick is late or lost while the program draws or reads; the rows of such
/// ticks are made up for, so that a speed is what it says. What a box or a sleeping machine holds up for longer isn't.
class PlaybackPace {
 public:
  /// From `now` on a row is due each interval; both in milliseconds.
  void Begin(std::int64_t now, int interval) {
    begun_ = now;
    interval_ = std::max(interval, 1);
    played_ = 0;
  }

  /// Takes a row that is due; false where none is.
  bool TakeRow(std::int64_t now) {
    const std::int64_t due = (now - begun_) / interval_;
    played_ = std::max(played_, due - std::max<std::int64_t>(kMostOwed / interval_, 1));
    if (played_ >= due) return false;
    ++played_;
    return true;
  }

 private:
  static constexpr std::int64_t kMostOwed = 100;  ///< ms

  std::int64_t begun_ = 0;
  std::int64_t played_ = 0;
  int interval_ = 1;
};

}  // namespace velk
