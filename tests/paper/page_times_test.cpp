#include "paper/page_times.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "base/dates.h"

namespace velk {
namespace {

constexpr double kSecond = 1.0 / 86400, kMinute = 60 * kSecond, kHour = 3600 * kSecond;

double Job() {
  return JoinDateTime(DateSerial(2026, 3, 14), TimeOfDay(9, 30, 0));
}

double StepOf(double span) {
  return TimesOf(Job(), Job() + span, true).step;
}

struct ScaleCase {
  int count;
  SpanUnit unit;
  double step;  ///< seconds
};

/// Worked by hand: the first round number that is not less, its quarter, cut to whole smaller units.
constexpr ScaleCase kScales[] = {
    {0, SpanUnit::Second, 0},   {1, SpanUnit::Second, 1},    {4, SpanUnit::Second, 1},   {5, SpanUnit::Second, 2},
    {25, SpanUnit::Second, 8},  {59, SpanUnit::Second, 15},  {60, SpanUnit::Second, 15}, {61, SpanUnit::Second, 0},
    {1, SpanUnit::Minute, 15},  {2, SpanUnit::Minute, 30},   {3, SpanUnit::Minute, 60},  {5, SpanUnit::Minute, 90},
    {9, SpanUnit::Minute, 150}, {60, SpanUnit::Minute, 900}, {61, SpanUnit::Minute, 0},  {1, SpanUnit::Hour, 1800},
    {3, SpanUnit::Hour, 3600},  {5, SpanUnit::Hour, 5400},   {9, SpanUnit::Hour, 9000},  {24, SpanUnit::Hour, 21600},
    {25, SpanUnit::Hour, 0},    {1, SpanUnit::Day, 10800},   {2, SpanUnit::Day, 10800},  {3, SpanUnit::Day, 14400},
    {4, SpanUnit::Day, 0},      {5, SpanUnit::Day, 10800},   {9, SpanUnit::Day, 10800},  {100, SpanUnit::Day, 0},
    {101, SpanUnit::Day, 0},
};

TEST(PageScaleTest, GivesAQuarterOfTheNextRoundNumber) {
  for (const ScaleCase& row : kScales)
    EXPECT_DOUBLE_EQ(PageScale(row.count, row.unit) * 86400, row.step)
        << row.count << " of " << static_cast<int>(row.unit);
}

TEST(PageTimesTest, TakeTheLargestUnitAndGoUpWhereTheNextOneHasARest) {
  EXPECT_DOUBLE_EQ(StepOf(3 * kHour + kMinute), kHour) << "as 4 hours";
  EXPECT_DOUBLE_EQ(StepOf(3 * kHour + 59 * kSecond), kHour) << "seconds are no rest of hours: 3 of them go to 4";
  EXPECT_DOUBLE_EQ(StepOf(4 * kHour + 59 * kSecond), kHour);
  EXPECT_DOUBLE_EQ(StepOf(4 * kHour + kMinute), 1.5 * kHour) << "as 6 hours";
  EXPECT_DOUBLE_EQ(StepOf(2 * kMinute), 30 * kSecond);
  EXPECT_DOUBLE_EQ(StepOf(2 * kMinute + kSecond), kMinute) << "as 4 minutes";
  EXPECT_DOUBLE_EQ(StepOf(2), 3 * kHour);
  EXPECT_DOUBLE_EQ(StepOf(2 + kHour), 4 * kHour) << "as 3 days";
}

TEST(PageTimesTest, TakeAQuarterOfTheSpanWhereNoRoundStepIsLeft) {
  EXPECT_NEAR(StepOf(0.5 * kSecond), 0.125 * kSecond, 1e-8);
  EXPECT_DOUBLE_EQ(StepOf(4), 1) << "4 days have no hours behind the whole days";
  EXPECT_DOUBLE_EQ(StepOf(200), 50);
  EXPECT_DOUBLE_EQ(StepOf(59 * kMinute + 30 * kSecond), 15 * kMinute) << "60 minutes are in the list";
}

/// 09:30 to 12:30 as day fractions differ by a bit less than three hours.
TEST(PageTimesTest, CountASpanThatMissesTheHourByABitAsTheHour) {
  for (int day = 0; day < 2000; ++day)
    for (const int hours : {1, 2, 3, 5, 7}) {
      const double first = JoinDateTime(40000 + day, TimeOfDay(9, day % 60, 0));
      const double last = JoinDateTime(40000 + day, TimeOfDay(9 + hours, day % 60, 0));
      EXPECT_DOUBLE_EQ(TimesOf(first, last, true).step, PageScale(hours, SpanUnit::Hour)) << day << " " << hours;
    }
}

TEST(PageTimesTest, EndOnAWholeInterval) {
  const PageTimes times = TimesOf(Job(), Job() + 3 * kHour + kMinute, true);
  EXPECT_NEAR(times.End(), Job() + 4 * kHour, 1e-9);
  EXPECT_FALSE(EndsBefore(times, Job() + 3 * kHour + kMinute));
}

TEST(PageTimesTest, TellWhereTheRoundStepLeavesRecordsOut) {
  const PageTimes times = TimesOf(Job(), Job() + 2, true);
  EXPECT_NEAR(times.End() - Job(), 0.5, 1e-9) << "two days show twelve hours";
  EXPECT_TRUE(EndsBefore(times, Job() + 2));
  EXPECT_FALSE(EndsBefore(TimesOf(Job(), Job() + 2, false), Job() + 2));
}

TEST(PageTimesTest, AreAQuarterOfTheSpanByHand) {
  EXPECT_DOUBLE_EQ(TimesOf(Job(), Job() + 2, false).step, 0.5);
}

TEST(PageTimesTest, AreNoPageWithoutASpan) {
  EXPECT_FALSE(TimesOf(Job(), Job(), true).IsSound());
  EXPECT_FALSE(TimesOf(Job(), Job() - 1, true).IsSound());
  EXPECT_FALSE(TimesOf(Job(), Job() - 1, false).IsSound());
  EXPECT_FALSE(TimesOf(std::nan(""), Job(), true).IsSound());
  EXPECT_FALSE(TimesOf(Job(), std::numeric_limits<double>::infinity(), true).IsSound());
  EXPECT_FALSE(PageTimes().IsSound());
  EXPECT_TRUE(TimesOf(Job(), Job() + kSecond, true).IsSound());
}

}  // namespace
}  // namespace velk
