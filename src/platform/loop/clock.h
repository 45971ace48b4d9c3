#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace velk {

/// A timer of the event loop. Its ticks are posted, at most one waiting, so that a handler that shows a box does not
/// stop the timer.
class Timer {
 public:
  virtual ~Timer() = default;
  virtual void SetHandler(std::function<void()> handler) = 0;
  /// Milliseconds; below 1 counts as 1, or, for a quick timer, as the next round of the event loop.
  virtual void SetInterval(int milliseconds) = 0;
  virtual int Interval() const = 0;
  virtual void SetEnabled(bool enabled) = 0;
  virtual bool Enabled() const = 0;
};

/// Time and the event loop. Tests put a FakeClock here.
class Clock {
 public:
  virtual ~Clock() = default;

  /// Local wall clock in days (see dates.h), with milliseconds.
  virtual double Now() const = 0;
  /// Milliseconds that only run forward; for measuring waits.
  virtual std::int64_t Ticks() const = 0;
  /// Lets pending events run and returns.
  virtual void Yield() = 0;
  /// One round of a wait for an instrument: yields and rests a full millisecond, so that 7000 rounds are 7 seconds.
  /// Opens the gate for its duration.
  virtual void WaitRound() = 0;
  /// Waits, yielding, until the time has passed.
  virtual void WaitMilliseconds(int milliseconds) = 0;
  /// Runs `task` from the event loop, after what is already pending.
  virtual void Post(std::function<void()> task) = 0;
  /// A timer that is off and has an interval of 1000 ms.
  virtual std::unique_ptr<Timer> MakeTimer() = 0;
  /// The same for a handler that runs no events and shows no box: its ticks may run at once when they are due, which
  /// spares the event loop a round.
  virtual std::unique_ptr<Timer> MakeQuickTimer() { return MakeTimer(); }
};

}  // namespace velk
