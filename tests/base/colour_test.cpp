#include "base/colour.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

TEST(Colours, ThatCanBeReadStayAsTheyAre) {
  EXPECT_EQ(ReadableOn(Rgb(0xC8, 0x10, 0x2E), colour::White, 4.5), Rgb(0xC8, 0x10, 0x2E));
  EXPECT_EQ(ReadableOn(Rgb(0xFF, 0xFF, 0), colour::NightPaper, 3), Rgb(0xFF, 0xFF, 0));
}

TEST(Colours, ThatArePaleGetDarkerOnWhiteAndKeepTheirHue) {
  const std::int32_t yellow = ReadableOn(Rgb(255, 255, 0), colour::White, 3);
  EXPECT_GE(Contrast(yellow, colour::White), 3);
  EXPECT_LT(Contrast(yellow, colour::White), 3.5) << "no darker than it has to be";
  EXPECT_EQ(Red(yellow), Green(yellow));
  EXPECT_EQ(Blue(yellow), 0);
}

TEST(Colours, ThatAreDarkGetLighterOnDarkPaper) {
  const std::int32_t blue = ReadableOn(Rgb(0, 0, 255), colour::NightPaper, 3);
  EXPECT_GE(Contrast(blue, colour::NightPaper), 3);
  EXPECT_EQ(Blue(blue), 255);
  EXPECT_EQ(Red(blue), Green(blue));
  EXPECT_GT(Red(blue), 0);
}

TEST(Colours, CanAllBeReadOnAnyGround) {
  for (const std::int32_t ground : {colour::White, colour::Black, colour::NightPaper, colour::Grid, Rgb(128, 128, 128)})
    for (const std::int32_t colour : {colour::White, colour::Black, Rgb(255, 0, 0), Rgb(127, 128, 129), colour::Grid})
      EXPECT_GE(Contrast(ReadableOn(colour, ground, 4.5), ground), 4.5) << std::hex << colour << " on " << ground;
}

}  // namespace
}  // namespace velk
