#include "instruments/reading/time_check.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

TEST(TimeCheck, TakesEveryHourAndMinuteOfTheDay) {
  for (const char* line : {"00:00:00", "23:59:59", "09:30:15 1 2", "12:00:"}) EXPECT_TRUE(HasTime(line)) << line;
}

TEST(TimeCheck, RefusesAnHourOrMinuteThatNoClockShows) {
  for (const char* line : {"24:00:00", "25:00:00 1", "00:60:00", "23:99:00", "-1:00:00", "10:-1:00"})
    EXPECT_FALSE(HasTime(line)) << line;
}

TEST(TimeCheck, NeverLooksAtTheSeconds) {
  for (const char* line : {"23:59:61", "23:59:99", "23:59:xx", "23:59:"}) EXPECT_TRUE(HasTime(line)) << line;
}

TEST(TimeCheck, WantsBothColons) {
  for (const char* line : {"23.59:00", "23:59.00", "235959", "", "23:59", "1:02:03"})
    EXPECT_FALSE(HasTime(line)) << line;
}

TEST(TimeCheck, ReadsTextThatIsNoNumberAsZero) {
  EXPECT_TRUE(HasTime("xx:yy:00"));
}

TEST(DelimiterCount, SearchesEachTimeBehindTheLastHit) {
  EXPECT_EQ(CountDelimiters("1,2,,3", ","), 3);
  EXPECT_EQ(CountDelimiters("aaaa", "aa"), 2);
  EXPECT_EQ(CountDelimiters("", ","), 0);
  EXPECT_EQ(CountDelimiters("1,2", ""), 0);
}

}  // namespace
}  // namespace velk
