#include "graphs/window_tiling.h"

#include <gtest/gtest.h>

namespace velk::test {

namespace {

bool Overlap(const WindowPlace& a, const WindowPlace& b) {
  return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height && b.y < a.y + a.height;
}

}  // namespace

TEST(TileWindows, GivesASingleWindowTheWholeWidthAndTheHeightItWants) {
  const auto places = TileWindows(1200, 700, {350});
  ASSERT_EQ(places.size(), 1u);
  EXPECT_EQ(places[0].width, 1200);
  EXPECT_EQ(places[0].height, 350);
}

TEST(TileWindows, PutsWindowsUnderEachOtherWhereTheyFit) {
  const auto places = TileWindows(1200, 700, {350, 300});
  EXPECT_EQ(places[1].x, 0);
  EXPECT_EQ(places[1].y, 350);
  EXPECT_EQ(places[1].width, 1200);
}

TEST(TileWindows, PutsThemSideBySideWhereTheyDoNot) {
  const auto places = TileWindows(1200, 700, {350, 350, 350});
  EXPECT_EQ(places[2].x, 600);
  EXPECT_EQ(places[2].y, 0);
  EXPECT_EQ(places[0].width, 600);
}

TEST(TileWindows, KeepsEveryWindowInViewAndClearOfTheOthers) {
  for (const int width : {300, 800, 1900})
    for (const int height : {200, 600, 1000})
      for (int count = 1; count <= 64; ++count) {
        const auto places = TileWindows(width, height, std::vector<int>(count, 349));
        ASSERT_EQ(places.size(), static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i) {
          EXPECT_GT(places[i].width, 0);
          EXPECT_GT(places[i].height, 0);
          EXPECT_GE(places[i].x, 0);
          EXPECT_LE(places[i].x + places[i].width, width);
          EXPECT_LE(places[i].y + places[i].height, height);
          for (int k = 0; k < i; ++k) ASSERT_FALSE(Overlap(places[i], places[k])) << count << ": " << i << " " << k;
        }
      }
}

TEST(TileWindows, GivesNothingForNoWindows) {
  EXPECT_TRUE(TileWindows(800, 600, {}).empty());
}

}  // namespace velk::test
