#include "graphs/scroll_range.h"

#include <gtest/gtest.h>

#include "graphs/chart_fixture.h"
#include "model/texts.h"

namespace velk::test {

namespace {

constexpr double kMinute = 60 * kSecond;

Session Recording() {
  Session session;
  session.StartTime = JobStart();
  session.RecordToDB = true;
  return session;
}

}  // namespace

TEST(ScrollRange, BeginsWithTheFifthMinute) {
  const Session session = Recording();
  EXPECT_FALSE(ScrollRangeUpTo(session, JobStart() + 4 * kMinute + 59 * kSecond).hasHistory);
  EXPECT_TRUE(ScrollRangeUpTo(session, JobStart() + 5 * kMinute).hasHistory);
  EXPECT_EQ(ScrollRangeUpTo(session, JobStart() + 5 * kMinute).maximum, 0);
}

TEST(ScrollRange, CountsTheMinutesSinceTheStartButForTheLastFive) {
  const Session session = Recording();
  EXPECT_EQ(ScrollRangeUpTo(session, JobStart() + 6 * kMinute).maximum, 1);
  EXPECT_EQ(ScrollRangeUpTo(session, JobStart() + 3 * 24 * 60 * kMinute + 30 * kSecond).maximum, 3 * 24 * 60 - 5);
}

TEST(ScrollRange, CountsFromTheWholeMinuteOfTheStart) {
  Session session = Recording();
  session.StartTime = JobStart() + 50 * kSecond;
  EXPECT_TRUE(ScrollRangeUpTo(session, JobStart() + 5 * kMinute).hasHistory);
}

TEST(ScrollRange, IsThereOnlyWithALog) {
  Session session = Recording();
  const double hourLater = JobStart() + 60 * kMinute;
  session.RecordToDB = false;
  EXPECT_FALSE(ScrollRangeUpTo(session, hourLater).hasHistory);
  for (const MessageText& status : {text::StatusPlayingBack, text::StatusPlayingBackPaused}) {
    session.CurrentStatus = status;
    EXPECT_TRUE(ScrollRangeUpTo(session, hourLater).hasHistory);
  }
}

}  // namespace velk::test
