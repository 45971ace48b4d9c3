#include "platform/drawing/line_clip.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace velk::test {

namespace {

/// Cut to the rectangle (0, 0)-(100, 50).
bool Cut(ClippedLine& line) {
  return ClipLine(line, 0, 0, 100, 50);
}

}  // namespace

TEST(ClipLine, LeavesALineInsideAsItIs) {
  ClippedLine line{1, 2, 99, 49};
  ASSERT_TRUE(Cut(line));
  EXPECT_EQ(line.x1, 1);
  EXPECT_EQ(line.y1, 2);
  EXPECT_EQ(line.x2, 99);
  EXPECT_EQ(line.y2, 49);
}

TEST(ClipLine, CutsBothEndsOnTheLine) {
  ClippedLine line{-100, 20, 300, 40};  // y = 25 + x / 20
  ASSERT_TRUE(Cut(line));
  EXPECT_NEAR(line.x1, 0, 1e-9);
  EXPECT_NEAR(line.y1, 25, 1e-9);
  EXPECT_NEAR(line.x2, 100, 1e-9);
  EXPECT_NEAR(line.y2, 30, 1e-9);
}

TEST(ClipLine, DropsWhatLiesOutside) {
  for (ClippedLine line : {ClippedLine{-5, 10, -1, 20}, ClippedLine{101, 0, 300, 50}, ClippedLine{0, -9, 100, -1},
                           ClippedLine{0, 51, 100, 90}, ClippedLine{-60, 25, 25, -60}})
    EXPECT_FALSE(Cut(line)) << line.x1 << " " << line.y1;
}

TEST(ClipLine, KeepsAPointInsideAndDropsOneOutside) {
  ClippedLine inside{50, 25, 50, 25}, outside{50, 60, 50, 60};
  EXPECT_TRUE(Cut(inside));
  EXPECT_FALSE(Cut(outside));
}

TEST(ClipLine, DropsEndsThatAreNoNumbers) {
  const double nan = std::nan(""), inf = std::numeric_limits<double>::infinity();
  for (ClippedLine line : {ClippedLine{nan, 1, 2, 3}, ClippedLine{1, 2, 3, nan}, ClippedLine{-inf, 1, 2, 3},
                           ClippedLine{inf, 1, inf, 3}, ClippedLine{-1.7e308, 1, 1.7e308, 3}})
    EXPECT_FALSE(Cut(line));
}

}  // namespace velk::test
