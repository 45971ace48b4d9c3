#include <gtest/gtest.h>

#include "graphs/window_tiling.h"

namespace velk {
namespace {

void ExpectCovers(int width, int height, const std::vector<WindowPlace>& places) {
  long long area = 0;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const WindowPlace& a = places[i];
    EXPECT_GE(a.x, 0);
    EXPECT_LE(a.x + a.width, width);
    EXPECT_LE(a.y + a.height, height);
    area += static_cast<long long>(a.width) * a.height;
    for (std::size_t j = 0; j < i; ++j) {
      const WindowPlace& b = places[j];
      EXPECT_TRUE(a.x + a.width <= b.x || b.x + b.width <= a.x || a.y + a.height <= b.y || b.y + b.height <= a.y);
    }
  }
  EXPECT_EQ(area, static_cast<long long>(width) * height);
}

TEST(FillWithWindows, GivesOneWindowTheWholeArea) {
  const auto places = FillWithWindows(1280, 690, {230});
  ASSERT_EQ(places.size(), 1u);
  ExpectCovers(1280, 690, places);
}

TEST(FillWithWindows, StacksThemWhereTheyFitAndElseTakesTheFewestColumns) {
  auto places = FillWithWindows(1280, 690, {230, 230, 230});
  for (const WindowPlace& place : places) EXPECT_EQ(place.width, 1280);
  ExpectCovers(1280, 690, places);
  places = FillWithWindows(1280, 690, {230, 230, 230, 230});
  for (const WindowPlace& place : places) EXPECT_EQ(place.width, 640);
  ExpectCovers(1280, 690, places);
}

TEST(FillWithWindows, LeavesEightWindowsOfEightCurvesOnASmallScreenAPlotEachAndScrolls) {
  const std::vector<int> least(8, 339);
  const auto places = FillWithWindows(1280, 690, least);
  ASSERT_EQ(places.size(), 8u);
  // Labels and the frame take 194 pixels, the axis 65.
  for (const WindowPlace& place : places) EXPECT_GE(place.width - 194 - 65, 140);
  for (const WindowPlace& place : places) EXPECT_GE(place.height, 339);
  ExpectCovers(1280, 3 * 339, places);  // columns of two, three and three
}

TEST(FillWithWindows, LetsTheAreaScrollBeforeAPlotIsTooSmall) {
  const std::vector<int> least(8, 339);
  const auto places = FillWithWindows(1024, 640, least);
  int bottom = 0;
  for (const WindowPlace& place : places) {
    EXPECT_GE(place.width, 400);
    EXPECT_EQ(place.height, 339);
    EXPECT_LE(place.x + place.width, 1024);
    bottom = std::max(bottom, place.y + place.height);
  }
  EXPECT_EQ(bottom, 4 * 339);  // two columns of four
}

TEST(FillWithWindows, SharesOutHeaderAndPlotWhereCurvesDiffer) {
  const auto places = FillWithWindows(1000, 600, {200, 300});
  EXPECT_EQ(places[0].height, 250);
  EXPECT_EQ(places[1].height, 350);
}

TEST(FillWithWindows, PlacesAnyNumberInAnyArea) {
  EXPECT_TRUE(FillWithWindows(1000, 600, {}).empty());
  for (int count = 1; count <= 64; ++count)
    for (const int width : {1, 300, 1280, 3840})
      EXPECT_EQ(FillWithWindows(width, 10, std::vector<int>(static_cast<std::size_t>(count), 230)).size(),
                static_cast<std::size_t>(count));
}

}  // namespace
}  // namespace velk
