#pragma once

#include "platform/loop/clock.h"

namespace velk::test {

/// A clock whose waits are over at once: only the count of milliseconds moves. For loops of millions.
class QuickClock : public Clock {
 public:
  double Now() const override { return 46095.5; }
  std::int64_t Ticks() const override { return ticks_; }
  void Yield() override {}
  void WaitRound() override { ++ticks_; }
  void WaitMilliseconds(int milliseconds) override { ticks_ += milliseconds; }
  void Post(std::function<void()>) override {}
  std::unique_ptr<Timer> MakeTimer() override { return nullptr; }

 private:
  std::int64_t ticks_ = 0;
};

}  // namespace velk::test
