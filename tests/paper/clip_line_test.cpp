#include "paper/clip_line.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

struct ClipCase {
  const char* what;
  PageSegment segment, clipped;
};

/// The band is 40 to 190.
constexpr ClipCase kCases[] = {
    {"inside", {50, 10, 60, 20}, {50, 10, 60, 20}},
    {"on both edges", {40, 10, 190, 20}, {40, 10, 190, 20}},
    {"along the left edge", {40, 10, 40, 20}, {40, 10, 40, 20}},
    {"left as a whole", {10, 10, 30, 20}, {40, 10, 40, 20}},
    {"right as a whole", {200, 10, 900, 20}, {190, 10, 190, 20}},
    {"in by the left edge", {20, 10, 60, 20}, {40, 15, 60, 20}},
    {"out by the left edge", {60, 10, 20, 20}, {60, 10, 40, 15}},
    {"out by the right edge", {180, 10, 200, 20}, {180, 10, 190, 15}},
    {"in by the right edge", {200, 10, 180, 20}, {190, 15, 180, 20}},
    {"through the band", {-110, 0, 340, 30}, {40, 10, 190, 20}},
    {"through the band backwards", {340, 0, -110, 30}, {190, 10, 40, 20}},
    {"from the edge outwards", {190, 10, 200, 20}, {190, 10, 190, 10}},
    {"a point", {50, 10, 50, 10}, {50, 10, 50, 10}},
    {"a point beyond", {500, 10, 500, 10}, {190, 10, 190, 10}},
};

TEST(ClipLineTest, KeepsASegmentWithinTheBand) {
  for (const ClipCase& row : kCases) {
    const PageSegment clipped = ClipLine(row.segment, 40, 190);
    EXPECT_DOUBLE_EQ(clipped.x1, row.clipped.x1) << row.what;
    EXPECT_DOUBLE_EQ(clipped.y1, row.clipped.y1) << row.what;
    EXPECT_DOUBLE_EQ(clipped.x2, row.clipped.x2) << row.what;
    EXPECT_DOUBLE_EQ(clipped.y2, row.clipped.y2) << row.what;
  }
}

}  // namespace
}  // namespace velk
