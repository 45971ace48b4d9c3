#include "platform/drawing/segment_clip.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace velk::test {

namespace {

/// Cut to the rectangle (0, 0)-(100, 50).
bool Cut(ClippedSegment& segment) {
  return ClipSegment(segment, 0, 0, 100, 50);
}

}  // namespace

TEST(ClipSegment, LeavesALineInsideAsItIs) {
  ClippedSegment segment{1, 2, 99, 49};
  ASSERT_TRUE(Cut(segment));
  EXPECT_EQ(segment.x1, 1);
  EXPECT_EQ(segment.y1, 2);
  EXPECT_EQ(segment.x2, 99);
  EXPECT_EQ(segment.y2, 49);
}

TEST(ClipSegment, CutsBothEndsOnTheLine) {
  ClippedSegment segment{-100, 20, 300, 40};  // y = 25 + x / 20
  ASSERT_TRUE(Cut(segment));
  EXPECT_NEAR(segment.x1, 0, 1e-9);
  EXPECT_NEAR(segment.y1, 25, 1e-9);
  EXPECT_NEAR(segment.x2, 100, 1e-9);
  EXPECT_NEAR(segment.y2, 30, 1e-9);
}

TEST(ClipSegment, DropsWhatLiesOutside) {
  for (ClippedSegment segment :
       {ClippedSegment{-5, 10, -1, 20}, ClippedSegment{101, 0, 300, 50}, ClippedSegment{0, -9, 100, -1},
        ClippedSegment{0, 51, 100, 90}, ClippedSegment{-60, 25, 25, -60}})
    EXPECT_FALSE(Cut(segment)) << segment.x1 << " " << segment.y1;
}

TEST(ClipSegment, KeepsAPointInsideAndDropsOneOutside) {
  ClippedSegment inside{50, 25, 50, 25}, outside{50, 60, 50, 60};
  EXPECT_TRUE(Cut(inside));
  EXPECT_FALSE(Cut(outside));
}

TEST(ClipSegment, DropsEndsThatAreNoNumbers) {
  const double nan = std::nan(""), inf = std::numeric_limits<double>::infinity();
  for (ClippedSegment segment :
       {ClippedSegment{nan, 1, 2, 3}, ClippedSegment{1, 2, 3, nan}, ClippedSegment{-inf, 1, 2, 3},
        ClippedSegment{inf, 1, inf, 3}, ClippedSegment{-1.7e308, 1, 1.7e308, 3}})
    EXPECT_FALSE(Cut(segment));
}

}  // namespace velk::test
