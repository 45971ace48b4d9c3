#include "platform/drawing/segment_raster.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace velk::test {

namespace {

/// A picture of 8 x 5 pixels within a frame that must stay untouched.
class Canvas {
 public:
  Canvas() { memory_.fill(kOutside); }

  void Line(int x1, int y1, int x2, int y2, int thickness) {
    RasterSegment({memory_.data() + kStride + 1, kStride, kWidth, kHeight}, x1, y1, x2, y2, thickness, 7);
  }
  std::string Row(int y) const {
    std::string row;
    for (int x = 0; x < kWidth; ++x) row += At(x, y) == 7 ? '#' : '.';
    return row;
  }
  bool FrameIsUntouched() const {
    for (int y = -1; y <= kHeight; ++y)
      for (int x = -1; x <= kWidth; ++x)
        if ((x < 0 || y < 0 || x == kWidth || y == kHeight) && At(x, y) != kOutside) return false;
    return true;
  }

 private:
  static constexpr int kWidth = 8, kHeight = 5;
  static constexpr std::size_t kStride = kWidth + 2;
  static constexpr std::uint32_t kOutside = 99;
  std::uint32_t At(int x, int y) const {
    return memory_[static_cast<std::size_t>(y + 1) * kStride + static_cast<std::size_t>(x + 1)];
  }
  std::array<std::uint32_t, kStride*(kHeight + 2)> memory_;
};

}  // namespace

TEST(RasterSegment, WalksADiagonalPixelByPixelInBothDirections) {
  for (const bool back : {false, true}) {
    Canvas canvas;
    back ? canvas.Line(4, 4, 1, 1, 1) : canvas.Line(1, 1, 4, 4, 1);
    EXPECT_EQ(canvas.Row(0), "........");
    EXPECT_EQ(canvas.Row(1), ".#......");
    EXPECT_EQ(canvas.Row(2), "..#.....");
    EXPECT_EQ(canvas.Row(3), "...#....");
    EXPECT_EQ(canvas.Row(4), "....#...");
  }
}

TEST(RasterSegment, LeavesNoHoleInAShallowLine) {
  Canvas canvas;
  canvas.Line(0, 1, 7, 2, 1);
  EXPECT_EQ(canvas.Row(1), "####....");
  EXPECT_EQ(canvas.Row(2), "....####");
}

TEST(RasterSegment, IsAsThickAsAsked) {
  Canvas canvas;
  canvas.Line(2, 2, 5, 2, 2);
  EXPECT_EQ(canvas.Row(0), "........");
  EXPECT_EQ(canvas.Row(1), ".#####..");
  EXPECT_EQ(canvas.Row(2), ".#####..");
  EXPECT_EQ(canvas.Row(3), "........");
}

TEST(RasterSegment, ShowsALineWithoutLengthAsASquare) {
  Canvas canvas;
  canvas.Line(3, 2, 3, 2, 3);
  for (int y = 1; y <= 3; ++y) EXPECT_EQ(canvas.Row(y), "..###...");
}

TEST(RasterSegment, WritesNothingOutsideTheSurface) {
  for (int x = -4; x < 12; ++x)
    for (int y = -4; y < 9; ++y)
      for (const int thickness : {1, 2, 3, 6}) {
        Canvas canvas;
        canvas.Line(x, y, 7 - x, 4 - y, thickness);
        canvas.Line(x, y, x, 4 - y, thickness);
        canvas.Line(x, y, 3, y, thickness);
        ASSERT_TRUE(canvas.FrameIsUntouched()) << x << " " << y << " " << thickness;
      }
}

}  // namespace velk::test
