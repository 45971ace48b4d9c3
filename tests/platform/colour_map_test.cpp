#include "platform/drawing/colour_map.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "base/colour.h"

namespace velk {
namespace {

std::uint32_t PixelOf(std::int32_t colour) {
  return 0xFF000000U | static_cast<std::uint32_t>(Red(colour) << 16 | Green(colour) << 8 | Blue(colour));
}

std::uint32_t Shown(ColourMap& map, std::uint32_t pixel) {
  std::uint32_t shown = 0;
  map.Map(&pixel, &shown, 1);
  return shown;
}

TEST(ColourMap, ShowsThePictureAsItIsByDay) {
  ColourMap map;
  EXPECT_TRUE(map.ChangesNothing());
  map.AddInk(Rgb(0xC8, 0x10, 0x2E));
  EXPECT_TRUE(map.ChangesNothing());
  for (const std::uint32_t pixel : {0xFFFFFFFFU, 0xFF000000U, 0xFFC0C0C0U, 0xFFC8102EU})
    EXPECT_EQ(Shown(map, pixel), pixel);
}

TEST(ColourMap, DarkensInksThatWhitePaperSwallows) {
  ColourMap map;
  EXPECT_TRUE(map.AddInk(Rgb(255, 255, 0)));
  EXPECT_FALSE(map.AddInk(Rgb(255, 255, 0))) << "known";
  EXPECT_FALSE(map.ChangesNothing());
  const std::int32_t shown = map.Shown(Rgb(255, 255, 0));
  EXPECT_GE(Contrast(shown, colour::White), 3);
  EXPECT_EQ(Shown(map, 0xFFFFFF00), 0xFF000000U | static_cast<std::uint32_t>(Red(shown) << 16 | Green(shown) << 8));
  EXPECT_EQ(Shown(map, 0xFFC0C0C0), 0xFFC0C0C0U) << "the grid stays faint";
  EXPECT_EQ(Shown(map, 0xFFFFFFFF), 0xFFFFFFFFU);
}

TEST(ColourMap, HasDarkPaperPaleRulesAndAFaintGridByNight) {
  ColourMap map;
  map.SetNight(true);
  EXPECT_EQ(map.Paper(), 0xFF14181DU);
  EXPECT_EQ(Shown(map, 0xFFFFFFFF), 0xFF14181DU);
  EXPECT_EQ(Shown(map, 0xFF000000), 0xFFAEB7C0U);
  EXPECT_EQ(Shown(map, 0xFFC0C0C0), 0xFF3A444EU);
}

TEST(ColourMap, GivesEachOfOurColoursItsPartnerAndLightensOthersByNight) {
  ColourMap map;
  map.SetNight(true);
  map.AddInk(Rgb(0x00, 0x57, 0xB8));
  map.AddInk(Rgb(0, 0, 255));
  EXPECT_EQ(Shown(map, 0xFF0057B8), 0xFF5AA9FFU);
  const std::int32_t blue = map.Shown(Rgb(0, 0, 255));
  EXPECT_GE(Contrast(blue, colour::NightPaper), 3);
  EXPECT_EQ(Blue(blue), 255);
}

TEST(ColourMap, MakesLettersReadableByNightToo) {
  ColourMap map;
  map.SetNight(true);
  for (const std::int32_t colour : {Rgb(0, 0x80, 0), Rgb(0, 0, 255), Rgb(255, 0, 0), Rgb(0x40, 0, 0)})
    EXPECT_GE(Contrast(map.Shown(colour), colour::NightPaper), 4.5) << colour;
}

TEST(ColourMap, ThinsTheShownInkWhereTheDrawnOneIsThin) {
  ColourMap map;
  map.SetNight(true);
  map.AddInk(Rgb(255, 0, 0));
  const std::int32_t red = map.Shown(Rgb(255, 0, 0));
  // Half red, half paper: 255, 127.5, 127.5 by day.
  const std::uint32_t half = Shown(map, 0xFFFF8080);
  EXPECT_NEAR(half >> 16 & 0xFF, (Red(red) + 0x14) / 2, 1);
  EXPECT_NEAR(half >> 8 & 0xFF, (Green(red) + 0x18) / 2, 1);
  EXPECT_NEAR(half & 0xFF, (Blue(red) + 0x1D) / 2, 1);
  // A fifth of black.
  const std::uint32_t grey = Shown(map, 0xFFCCCCCC);
  EXPECT_NEAR(grey >> 16 & 0xFF, 0x14 + 0.2 * (0xAE - 0x14), 1);
}

TEST(ColourMap, MapsEachPixelOfARowWhateverStandsBesideIt) {
  std::mt19937 random(3);
  for (const bool night : {false, true}) {
    ColourMap map;
    map.SetNight(night);
    std::vector<std::int32_t> inks{colour::White};
    for (int i = 0; i < 64; ++i) map.AddInk(inks.emplace_back(static_cast<std::int32_t>(random() & 0xFFFFFF)));
    for (int i = 0; i < 400; ++i) {
      std::vector<std::uint32_t> row, expected, shown(random() % 60);
      for (std::size_t k = 0; k < shown.size(); ++k) {
        const std::int32_t ink = inks[random() % 12 == 0 ? random() % inks.size() : 0];
        row.push_back(PixelOf(ink));
        expected.push_back(ink == colour::White ? map.Paper() : PixelOf(map.Shown(ink)));
      }
      map.Map(row.data(), shown.data(), row.size());
      ASSERT_EQ(shown, expected);
    }
  }
}

TEST(ColourMap, FollowsTheTimeOfDay) {
  ColourMap map;
  EXPECT_EQ(Shown(map, 0xFF000000), 0xFF000000U);
  map.SetNight(true);
  EXPECT_EQ(Shown(map, 0xFF000000), 0xFFAEB7C0U);
  map.SetNight(false);
  EXPECT_EQ(Shown(map, 0xFF000000), 0xFF000000U);
}

TEST(ColourMap, TakesAnyNumberOfInks) {
  ColourMap map;
  for (int i = 0; i < 2000; ++i) map.AddInk(Rgb(i % 200, i / 200, 90));
  map.SetNight(true);
  EXPECT_EQ(Shown(map, 0xFF000000), 0xFFAEB7C0U);
  EXPECT_EQ(Shown(map, 0xFFC0C0C0), 0xFF3A444EU);
}

}  // namespace
}  // namespace velk
