#pragma once

#include <deque>
#include <list>

#include "base/dates.h"
#include "platform/loop/clock.h"
#include "platform/loop/gate.h"

namespace velk::test {

/// Time that stands still until a test moves it. Timers fire and posted tasks run only inside Advance, RunPosted,
/// Yield and the waits; a wait moves the time itself.
class FakeClock : public Clock {
 public:
  explicit FakeClock(Gate& gate) : gate_(gate) {}

  double Now() const override;
  std::int64_t Ticks() const override { return milliseconds_; }
  void Yield() override;
  void WaitRound() override;
  void WaitMilliseconds(int milliseconds) override;
  void Post(std::function<void()> task) override { posted_.push_back(std::move(task)); }
  std::unique_ptr<Timer> MakeTimer() override;

  /// The wall clock jumps; timers don't notice.
  void SetNow(double now);
  /// Time passes; timers fire at the millisecond when they are due, and posted tasks run a millisecond later at most.
  void Advance(std::int64_t milliseconds);
  void RunPosted();

  int yields = 0;
  /// Called in every Yield and round of a wait: the events that come in the meantime.
  std::function<void()> onYield;

 private:
  class FakeTimer;
  void FireTimers();
  /// The next millisecond at which a timer fires.
  std::int64_t NextDue() const;

  Gate& gate_;
  double dayZero_ = DateSerial(2026, 3, 14) + TimeOfDay(9, 30, 0);
  std::int64_t baseMilliseconds_ = 0;
  std::int64_t milliseconds_ = 0;
  std::deque<std::function<void()>> posted_;
  std::list<FakeTimer*> timers_;
};

}  // namespace velk::test
