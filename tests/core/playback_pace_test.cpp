#include "core/playback/pace.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

int RowsAt(PlaybackPace& pace, std::int64_t now) {
  int rows = 0;
  while (pace.TakeRow(now)) ++rows;
  return rows;
}

TEST(PlaybackPace, GivesARowAnInterval) {
  PlaybackPace pace;
  pace.Begin(5000, 100);
  EXPECT_EQ(RowsAt(pace, 5000), 0);
  EXPECT_EQ(RowsAt(pace, 5099), 0);
  EXPECT_EQ(RowsAt(pace, 5100), 1);
  EXPECT_EQ(RowsAt(pace, 5100), 0);
  EXPECT_EQ(RowsAt(pace, 5200), 1);
}

TEST(PlaybackPace, MakesUpForLateTicks) {
  PlaybackPace pace;
  pace.Begin(0, 1);
  EXPECT_EQ(RowsAt(pace, 30), 30);
  EXPECT_EQ(RowsAt(pace, 31), 1);
}

TEST(PlaybackPace, OwesATenthOfASecondAtMost) {
  PlaybackPace pace;
  pace.Begin(0, 2);
  EXPECT_EQ(RowsAt(pace, 60'000), 50);
  EXPECT_EQ(RowsAt(pace, 60'002), 1) << "and goes on from there";
}

TEST(PlaybackPace, OwesOneRowWhereTheyAreSlow) {
  PlaybackPace pace;
  pace.Begin(0, 1000);
  EXPECT_EQ(RowsAt(pace, 60'000), 1);
  EXPECT_EQ(RowsAt(pace, 61'000), 1);
}

}  // namespace
}  // namespace velk
