#include "support/fake_clock.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace velk::test {

class FakeClock::FakeTimer : public Timer {
 public:
  explicit FakeTimer(FakeClock& clock) : clock_(clock) { clock_.timers_.push_back(this); }
  ~FakeTimer() override { clock_.timers_.remove(this); }

  void SetHandler(std::function<void()> handler) override { handler_ = std::move(handler); }
  void SetInterval(int milliseconds) override {
    interval_ = std::max(1, milliseconds);
    due_ = clock_.milliseconds_ + interval_;
  }
  int Interval() const override { return interval_; }
  void SetEnabled(bool enabled) override {
    if (enabled && !enabled_) due_ = clock_.milliseconds_ + interval_;
    enabled_ = enabled;
  }
  bool Enabled() const override { return enabled_; }

  std::int64_t Due() const { return due_; }
  bool IsDue() const { return enabled_ && clock_.milliseconds_ >= due_; }
  void Fire() {
    due_ = clock_.milliseconds_ + interval_;
    if (handler_) handler_();
  }

 private:
  FakeClock& clock_;
  std::function<void()> handler_;
  int interval_ = 1000;
  bool enabled_ = false;
  std::int64_t due_ = 0;
};

double FakeClock::Now() const {
  // From whole days and a time of day, so that whole seconds give the same bits as everywhere else.
  const std::int64_t passed = milliseconds_ - baseMilliseconds_;
  const DateParts start = Split(dayZero_);
  const double midnight = DatePart(dayZero_);
  const std::int64_t sinceMidnight =
      ((start.hour * 60LL + start.minute) * 60 + start.second) * 1000 + start.millisecond + passed;
  const std::int64_t day = sinceMidnight / 86'400'000;
  const std::int64_t inDay = sinceMidnight % 86'400'000;
  return midnight + static_cast<double>(day) +
         TimeOfDay(static_cast<int>(inDay / 3'600'000), static_cast<int>(inDay / 60'000 % 60),
                   static_cast<double>(inDay % 60'000) / 1000);
}

void FakeClock::SetNow(double now) {
  dayZero_ = now;
  baseMilliseconds_ = milliseconds_;
}

void FakeClock::Yield() {
  ++yields;
  if (onYield) onYield();
  RunPosted();
}

void FakeClock::WaitRound() {
  const GateState open(gate_, GateState::Open);
  Advance(1);
  Yield();
}

void FakeClock::WaitMilliseconds(int milliseconds) {
  const GateState open(gate_, GateState::Open);
  Advance(milliseconds);
  Yield();
}

std::unique_ptr<Timer> FakeClock::MakeTimer() {
  return std::make_unique<FakeTimer>(*this);
}

void FakeClock::Advance(std::int64_t milliseconds) {
  for (const std::int64_t end = milliseconds_ + milliseconds; milliseconds_ < end;) {
    milliseconds_ = posted_.empty() ? std::min(end, NextDue()) : milliseconds_ + 1;
    FireTimers();
    RunPosted();
  }
}

std::int64_t FakeClock::NextDue() const {
  std::int64_t next = std::numeric_limits<std::int64_t>::max();
  for (const FakeTimer* timer : timers_)
    if (timer->Enabled()) next = std::min(next, timer->Due());
  return std::max(next, milliseconds_ + 1);
}

void FakeClock::RunPosted() {
  for (std::size_t waiting = posted_.size(); waiting > 0 && !posted_.empty(); --waiting) {
    const auto task = std::move(posted_.front());
    posted_.pop_front();
    task();
  }
}

void FakeClock::FireTimers() {
  const std::vector<FakeTimer*> now(timers_.begin(), timers_.end());
  for (FakeTimer* timer : now) {
    const bool stands = std::find(timers_.begin(), timers_.end(), timer) != timers_.end();
    if (stands && timer->IsDue()) timer->Fire();
  }
}

}  // namespace velk::test
