#include "platform/loop/system_clock.h"

#include <QCoreApplication>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

#include "base/dates.h"

namespace velk {

namespace {

/// The slot of a QTimer is not entered again while it runs, so a handler that shows a box would stop its own timer.
/// The slot therefore only posts a tick and returns, unless the handler is known to be short.
class EventLoopTimer : public Timer {
 public:
  enum class Ticks { Posted, AtOnce };

  explicit EventLoopTimer(Ticks ticks) : least_(ticks == Ticks::AtOnce ? 0 : 1) {
    source_.setTimerType(Qt::PreciseTimer);
    source_.setInterval(1000);
    QObject::connect(&source_, &QTimer::timeout, &context_, [this, ticks] {
      if (ticks == Ticks::Posted)
        PostTick();
      else
        Tick(period_);
    });
  }

  void SetHandler(std::function<void()> handler) override { handler_ = std::move(handler); }

  void SetInterval(int milliseconds) override {
    DropWaitingTick();
    source_.setInterval(std::max(least_, milliseconds));
  }

  int Interval() const override { return source_.interval(); }

  void SetEnabled(bool enabled) override {
    if (enabled == source_.isActive()) return;
    DropWaitingTick();
    if (enabled) {
      source_.start();
    } else {
      source_.stop();
    }
  }

  bool Enabled() const override { return source_.isActive(); }

 private:
  void PostTick() {
    if (tickWaits_) return;
    tickWaits_ = true;
    QMetaObject::invokeMethod(
        &context_, [this, period = period_] { Tick(period); }, Qt::QueuedConnection);
  }

  void Tick(int period) {
    if (period != period_) return;
    tickWaits_ = false;
    // A copy, since the handler may put another in its place or destroy this timer.
    const std::function<void()> handler = handler_;
    if (handler) handler();
  }

  void DropWaitingTick() {
    ++period_;
    tickWaits_ = false;
  }

  const int least_;  ///< milliseconds
  QObject context_;
  QTimer source_;
  std::function<void()> handler_;
  int period_ = 0;  ///< counts settings; a tick posted under an earlier one is stale
  bool tickWaits_ = false;
};

}  // namespace

SystemClock::SystemClock(Gate& gate) : gate_(gate) {
  running_.start();
}

double SystemClock::ToDays(const QDateTime& local) {
  const QDate date = local.date();
  const QTime time = local.time();
  return DateSerial(date.year(), date.month(), date.day()) +
         TimeOfDay(time.hour(), time.minute(), (time.second() * 1000 + time.msec()) / 1000.0);
}

double SystemClock::Now() const {
  // Asking for it makes the system look at the time zone's file. It changes at whole minutes of UTC only.
  constexpr qint64 kMinuteMs = 60'000;
  const qint64 now = QDateTime::currentMSecsSinceEpoch();
  if (now / kMinuteMs != offsetMinute_) {
    offsetMinute_ = now / kMinuteMs;
    offsetSeconds_ = QDateTime::fromMSecsSinceEpoch(now).offsetFromUtc();
  }
  return ToDays(QDateTime::fromMSecsSinceEpoch(now, Qt::OffsetFromUTC, offsetSeconds_));
}

std::int64_t SystemClock::Ticks() const {
  return running_.elapsed();
}

void SystemClock::Yield() {
  QCoreApplication::processEvents();
}

void SystemClock::WaitRound() {
  const GateState open(gate_, GateState::Open);
  Yield();
  if (!ending_) std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

void SystemClock::WaitMilliseconds(int milliseconds) {
  const GateState open(gate_, GateState::Open);
  const std::int64_t end = Ticks() + milliseconds;
  do WaitRound();
  while (!ending_ && Ticks() < end);
}

void SystemClock::Post(std::function<void()> task) {
  QMetaObject::invokeMethod(&context_, std::move(task), Qt::QueuedConnection);
}

std::unique_ptr<Timer> SystemClock::MakeTimer() {
  return std::make_unique<EventLoopTimer>(EventLoopTimer::Ticks::Posted);
}

std::unique_ptr<Timer> SystemClock::MakeQuickTimer() {
  return std::make_unique<EventLoopTimer>(EventLoopTimer::Ticks::AtOnce);
}

}  // namespace velk
