#include "paper/page_layout.h"

#include <gtest/gtest.h>

#include "base/colour.h"

namespace velk {
namespace {

constexpr PageBox kNone;
const PageBox kLogo{20, 15, 30, 20, true}, kText{60, 10, 60, 30, true};

TEST(PageLayoutTest, MovesThePlotDownARowForEachCurve) {
  EXPECT_DOUBLE_EQ(LayOut(1, kNone, kNone, PageTarget::Preview).plotTop, 28);
  EXPECT_DOUBLE_EQ(LayOut(2, kNone, kNone, PageTarget::Preview).plotTop, 34);
  EXPECT_DOUBLE_EQ(LayOut(25, kNone, kNone, PageTarget::Preview).plotTop, 172);
}

TEST(PageLayoutTest, HasALowerFrameOnThePreview) {
  EXPECT_EQ(LayOut(1, kNone, kNone, PageTarget::Preview).bottom, 277);
  EXPECT_EQ(LayOut(1, kNone, kNone, PageTarget::Paper).bottom, 257);
}

TEST(PageLayoutTest, BeginsTenMillimetresBelowTheLowerOfLogoAndText) {
  EXPECT_EQ(LayOut(1, kNone, kNone, PageTarget::Paper).top, 20);
  EXPECT_EQ(LayOut(1, kLogo, kNone, PageTarget::Paper).top, 45);
  EXPECT_EQ(LayOut(1, kNone, kText, PageTarget::Paper).top, 50);
  EXPECT_EQ(LayOut(1, kLogo, kText, PageTarget::Paper).top, 50);
}

TEST(PageLayoutTest, LeavesRoomForThePlotWhateverStandsAboveIt) {
  const PageBox low{0, 250, 20, 40, true};
  for (int curves = 1; curves <= 64; ++curves)
    for (const PageBox& logo : {kNone, kLogo, low}) {
      const PageLayout layout = LayOut(curves, logo, kNone, PageTarget::Paper);
      EXPECT_LE(layout.plotTop, 180 + 1e-9) << curves;
      EXPECT_GT(layout.rowHeight, 1) << curves;
      EXPECT_LE(layout.rowHeight, 6);
    }
  EXPECT_EQ(LayOut(40, kNone, kNone, PageTarget::Paper).plotTop, 180) << "at 6 mm it would be 262";
}

TEST(PageLayoutTest, PrintsSmallerInLowerRows) {
  EXPECT_EQ(LayOut(1, kNone, kNone, PageTarget::Paper).Points(10), 10);
  const PageLayout many = LayOut(64, kNone, kNone, PageTarget::Paper);
  EXPECT_NEAR(many.rowHeight, 158.0 / 64, 1e-9);
  EXPECT_NEAR(many.Points(10), 10 * 158.0 / 64 / 6, 1e-9);
}

TEST(PageLayoutTest, DarkensPaleInksUntilTheyCanBeReadOnPaper) {
  EXPECT_EQ(InkOf(Rgb(0xC8, 0x10, 0x2E)), Rgb(0xC8, 0x10, 0x2E)) << "5.9 to 1";
  const std::int32_t yellow = InkOf(Rgb(255, 255, 0));
  EXPECT_GE(Contrast(yellow, colour::White), 3);
  EXPECT_EQ(Red(yellow), Green(yellow)) << "its hue stays";
  EXPECT_EQ(Blue(yellow), 0);
  EXPECT_GE(Contrast(InkOf(colour::White), colour::White), 3);
}

}  // namespace
}  // namespace velk
