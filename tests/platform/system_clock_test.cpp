#include "platform/loop/system_clock.h"

#include <gtest/gtest.h>

#include <bit>
#include <chrono>
#include <cstdint>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "base/dates.h"

namespace velk {
namespace {

/// Far beyond what any of these tests takes; only a broken clock gets there.
constexpr auto kBound = std::chrono::seconds(20);

/// Runs the event loop until `done`, resting between rounds; false when the bound was reached.
bool RunUntil(SystemClock& clock, const std::function<bool()>& done) {
  const auto end = std::chrono::steady_clock::now() + kBound;
  while (!done()) {
    if (std::chrono::steady_clock::now() > end) return false;
    clock.WaitRound();
  }
  return true;
}

double CpuSeconds() {
  return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

class SystemClockTest : public testing::Test {
 protected:
  Gate gate_;
  SystemClock clock_{gate_};
};

TEST_F(SystemClockTest, GivesAWholeSecondTheBitsOfDateAndTimeOfDay) {
  const QDate day(2026, 3, 14);
  for (int second = 0; second < 86400; ++second) {
    const QDateTime local(day, QTime::fromMSecsSinceStartOfDay(second * 1000));
    if (!local.isValid()) continue;  // left out where summer time begins
    const double expected = DateSerial(2026, 3, 14) + TimeOfDay(second / 3600, second / 60 % 60, second % 60);
    ASSERT_EQ(std::bit_cast<std::uint64_t>(SystemClock::ToDays(local)), std::bit_cast<std::uint64_t>(expected))
        << second;
  }
}

TEST_F(SystemClockTest, CountsDaysFromThirtiethDecember1899WithMilliseconds) {
  EXPECT_EQ(SystemClock::ToDays(QDateTime(QDate(1899, 12, 31), QTime(12, 0))), 1.5);
  EXPECT_DOUBLE_EQ(SystemClock::ToDays(QDateTime(QDate(2000, 1, 1), QTime(0, 0, 0, 864))), 36526.00001);
}

TEST_F(SystemClockTest, ShowsTheLocalWallClock) {
  const auto wall = [] {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return DateSerial(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday) +
           TimeOfDay(local.tm_hour, local.tm_min, local.tm_sec);
  };
  const double before = wall();
  const double now = clock_.Now();
  const double after = wall();
  EXPECT_GE(now, before);
  EXPECT_LE(now, after + TimeOfDay(0, 0, 2));
}

TEST_F(SystemClockTest, RestsAFullMillisecondInEachRound) {
  const std::int64_t start = clock_.Ticks();
  for (int round = 0; round < 50; ++round) clock_.WaitRound();
  EXPECT_GE(clock_.Ticks() - start, 50);
}

TEST_F(SystemClockTest, WaitsTheWholeTimeWithoutBurningACore) {
  const double cpuBefore = CpuSeconds();
  const std::int64_t start = clock_.Ticks();
  clock_.WaitMilliseconds(400);
  EXPECT_GE(clock_.Ticks() - start, 400);
  EXPECT_LT(CpuSeconds() - cpuBefore, 0.2);
}

TEST_F(SystemClockTest, LetsEventsRunInEveryKindOfWait) {
  int ran = 0;
  clock_.Post([&] { ++ran; });
  clock_.Yield();
  EXPECT_EQ(ran, 1);
  clock_.Post([&] { ++ran; });
  clock_.WaitRound();
  EXPECT_EQ(ran, 2);
  clock_.Post([&] { ++ran; });
  clock_.WaitMilliseconds(0);
  EXPECT_EQ(ran, 3);
}

TEST_F(SystemClockTest, OpensTheGateDuringWaitsButNotDuringAYield) {
  const GateState shut(gate_, GateState::Shut);
  std::vector<bool> open;
  const auto note = [&] { open.push_back(gate_.IsOpen()); };
  clock_.Post(note);
  clock_.Yield();
  clock_.Post(note);
  clock_.WaitRound();
  clock_.Post(note);
  clock_.WaitMilliseconds(1);
  EXPECT_EQ(open, (std::vector<bool>{false, true, true}));
  EXPECT_FALSE(gate_.IsOpen());
}

TEST_F(SystemClockTest, RunsPostedTasksInOrderAndNeverAtOnce) {
  std::string order;
  clock_.Post([&] { order += 'a'; });
  clock_.Post([&] { order += 'b'; });
  EXPECT_EQ(order, "");
  clock_.Yield();
  EXPECT_EQ(order, "ab");
}

TEST_F(SystemClockTest, ForgetsPostedTasksWithTheClock) {
  int ran = 0;
  {
    SystemClock other(gate_);
    other.Post([&] { ++ran; });
  }
  clock_.Yield();
  EXPECT_EQ(ran, 0);
}

TEST_F(SystemClockTest, EndsAWaitEarlyWhenTheProgramEnds) {
  clock_.Post([&] { clock_.SetEnding(); });
  const std::int64_t start = clock_.Ticks();
  clock_.WaitMilliseconds(3'600'000);
  EXPECT_LT(clock_.Ticks() - start, 20'000);
  for (int round = 0; round < 20'000; ++round) clock_.WaitRound();
  EXPECT_LT(clock_.Ticks() - start, 20'000) << "rounds no longer rest";
}

TEST_F(SystemClockTest, MakesATimerThatIsOffAndHasASecond) {
  const auto timer = clock_.MakeTimer();
  EXPECT_FALSE(timer->Enabled());
  EXPECT_EQ(timer->Interval(), 1000);
  timer->SetInterval(0);
  EXPECT_EQ(timer->Interval(), 1);
  timer->SetInterval(-5);
  EXPECT_EQ(timer->Interval(), 1);
}

TEST_F(SystemClockTest, TicksWhileEnabledAndStopsWhenDisabled) {
  const auto timer = clock_.MakeTimer();
  int ticks = 0;
  timer->SetHandler([&] { ++ticks; });
  timer->SetInterval(1);
  clock_.WaitMilliseconds(20);
  EXPECT_EQ(ticks, 0);
  timer->SetEnabled(true);
  EXPECT_TRUE(timer->Enabled());
  EXPECT_TRUE(RunUntil(clock_, [&] { return ticks >= 5; }));
  timer->SetEnabled(false);
  EXPECT_FALSE(timer->Enabled());
  const int before = ticks;
  clock_.WaitMilliseconds(20);
  EXPECT_EQ(ticks, before);
}

TEST_F(SystemClockTest, AQuickTimerTicksWhileEnabledAndItsHandlerMayStopIt) {
  const auto timer = clock_.MakeQuickTimer();
  int ticks = 0;
  timer->SetHandler([&] {
    if (++ticks == 3) timer->SetEnabled(false);
  });
  timer->SetInterval(1);
  clock_.WaitMilliseconds(10);
  EXPECT_EQ(ticks, 0);
  timer->SetEnabled(true);
  EXPECT_TRUE(RunUntil(clock_, [&] { return !timer->Enabled(); }));
  clock_.WaitMilliseconds(20);
  EXPECT_EQ(ticks, 3);
}

TEST_F(SystemClockTest, DoesNotTickFasterThanTheInterval) {
  const auto timer = clock_.MakeTimer();
  int ticks = 0;
  timer->SetHandler([&] { ++ticks; });
  timer->SetInterval(20);
  const std::int64_t start = clock_.Ticks();
  timer->SetEnabled(true);
  EXPECT_TRUE(RunUntil(clock_, [&] { return ticks >= 5; }));
  EXPECT_GE(clock_.Ticks() - start, 5 * 20 - 5);
}

TEST_F(SystemClockTest, KeepsOneTickWaitingAtMost) {
  const auto timer = clock_.MakeTimer();
  int ticks = 0;
  timer->SetHandler([&] {
    // Blocks the loop: many periods pass, and they must not pile up.
    if (++ticks == 1) {
      const std::int64_t end = clock_.Ticks() + 50;
      while (clock_.Ticks() < end) {
      }
      clock_.Post([&] { timer->SetEnabled(false); });
    }
  });
  timer->SetInterval(1);
  timer->SetEnabled(true);
  EXPECT_TRUE(RunUntil(clock_, [&] { return ticks > 0 && !timer->Enabled(); }));
  clock_.WaitMilliseconds(5);
  EXPECT_LE(ticks, 3);
}

TEST_F(SystemClockTest, GoesOnTickingUnderAHandlerThatRunsEvents) {
  const auto timer = clock_.MakeTimer();
  int ticks = 0;
  bool nested = false;
  bool reached = false;
  timer->SetHandler([&] {
    ++ticks;
    if (nested) return;
    nested = true;
    reached = RunUntil(clock_, [&] { return ticks >= 5; });
  });
  timer->SetInterval(1);
  timer->SetEnabled(true);
  EXPECT_TRUE(RunUntil(clock_, [&] { return ticks >= 5 && reached; }));
}

TEST_F(SystemClockTest, ATickThatFellDueWhileItsHandlerWorkedRunsBehindAYieldOfTheHandler) {
  const auto timer = clock_.MakeTimer();
  int ticks = 0, running = 0, nested = 0;
  timer->SetInterval(20);
  timer->SetHandler([&] {
    ++ticks;
    if (running > 0) ++nested;  // a sample would be swallowed here
    ++running;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    clock_.Yield();
    --running;
  });
  timer->SetEnabled(true);
  ASSERT_TRUE(RunUntil(clock_, [&] { return ticks >= 5; }));
  EXPECT_EQ(nested, 0);
}

TEST_F(SystemClockTest, LetsAHandlerDisableItsTimer) {
  const auto timer = clock_.MakeTimer();
  int ticks = 0;
  timer->SetHandler([&] {
    ++ticks;
    timer->SetEnabled(false);
  });
  timer->SetInterval(1);
  timer->SetEnabled(true);
  EXPECT_TRUE(RunUntil(clock_, [&] { return ticks > 0; }));
  clock_.WaitMilliseconds(20);
  EXPECT_EQ(ticks, 1);
}

TEST_F(SystemClockTest, LetsAHandlerDestroyItsTimer) {
  auto timer = clock_.MakeTimer();
  const auto alive = std::make_shared<int>(0);
  int ticks = 0;
  timer->SetHandler([&, alive] {
    timer.reset();
    *alive = 1;
    ++ticks;
  });
  timer->SetInterval(1);
  timer->SetEnabled(true);
  EXPECT_TRUE(RunUntil(clock_, [&] { return ticks > 0; }));
  clock_.WaitMilliseconds(20);
  EXPECT_EQ(ticks, 1);
  EXPECT_EQ(alive.use_count(), 1) << "the handler went with its timer";
}

TEST_F(SystemClockTest, DropsAWaitingTickOfATimerThatWasDisabled) {
  const auto slow = clock_.MakeTimer();
  int ticks = 0;
  slow->SetHandler([&] { ++ticks; });
  slow->SetInterval(1);
  slow->SetEnabled(true);
  const auto other = clock_.MakeTimer();
  bool swapped = false;
  other->SetHandler([&] {
    // Whatever tick of `slow` waits by now is from before.
    slow->SetEnabled(false);
    slow->SetInterval(3'600'000);
    slow->SetEnabled(true);
    other->SetEnabled(false);
    ticks = 0;
    swapped = true;
  });
  other->SetInterval(5);
  other->SetEnabled(true);
  EXPECT_TRUE(RunUntil(clock_, [&] { return swapped; }));
  clock_.WaitMilliseconds(20);
  EXPECT_EQ(ticks, 0);
}

TEST_F(SystemClockTest, LetsAHandlerPutAnotherInItsPlace) {
  const auto timer = clock_.MakeTimer();
  std::string order;
  timer->SetHandler([&] {
    order += 'a';
    timer->SetHandler([&] {
      order += 'b';
      timer->SetEnabled(false);
    });
  });
  timer->SetInterval(1);
  timer->SetEnabled(true);
  EXPECT_TRUE(RunUntil(clock_, [&] { return order.size() >= 2; }));
  EXPECT_EQ(order, "ab");
}

TEST_F(SystemClockTest, RunsATimerWithoutAHandler) {
  const auto timer = clock_.MakeTimer();
  timer->SetInterval(1);
  timer->SetEnabled(true);
  clock_.WaitMilliseconds(10);
  EXPECT_TRUE(timer->Enabled());
}

}  // namespace
}  // namespace velk
