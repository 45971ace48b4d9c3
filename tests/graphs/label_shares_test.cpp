#include "graphs/label_shares.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

int Sum(const LabelShares& shares) {
  return shares.name + shares.value + shares.units;
}

TEST(LabelShares, GiveTheValueFifteenPercentMoreThanItsTextAndTheNameWhatIsLeft) {
  const LabelShares shares = ShareLabels(144, {60, 0, 25});
  EXPECT_EQ(shares.value, 69);  // 1.15 x 60
  EXPECT_EQ(shares.units, 25);
  EXPECT_EQ(shares.name, 144 - 69 - 25);
}

TEST(LabelShares, TakeFromTheNameFirstThenFromTheUnitsThenAroundTheValue) {
  // 1.15 x 80 = 92 and 40 leave 12 for a name that keeps 30: the units give 18.
  LabelShares shares = ShareLabels(144, {80, 0, 40});
  EXPECT_EQ(shares.name, 30);
  EXPECT_EQ(shares.units, 22);
  EXPECT_EQ(shares.value, 92);
  // 1.15 x 90 = 103.5; beside 30 and 20 there are 94, less than the 96 of a text with its edges: the name gives 2.
  shares = ShareLabels(144, {90, 0, 40});
  EXPECT_EQ(shares.units, 20);
  EXPECT_EQ(shares.value, 96);
  EXPECT_EQ(shares.name, 28);
}

TEST(LabelShares, NeverSqueezeAValueThatThePanelHasRoomFor) {
  for (int need = 0; need <= 130; ++need) {
    const LabelShares shares = ShareLabels(144, {static_cast<double>(need), 0, 60});
    EXPECT_GE(shares.value, need + 6) << need;
    EXPECT_LE(Sum(shares), 144) << need;
    EXPECT_GE(shares.name, 0);
    EXPECT_GE(shares.units, 1);
  }
}

TEST(LabelShares, KeepShortValuesAndUnitsWideEnoughToBeToldApart) {
  const LabelShares shares = ShareLabels(144, {8, 0, 0});
  EXPECT_EQ(shares.value, 46);
  EXPECT_EQ(shares.units, 20);
}

TEST(LabelShares, HaveRoomForTheMarkOfAnAlarmBesideTheValue) {
  EXPECT_EQ(ShareLabels(144, {60, 5, 25}).value, 71);   // more than 1.15 x 60
  EXPECT_EQ(ShareLabels(144, {60, 10, 25}).value, 76);  // 60, 10 and the edges
}

TEST(LabelShares, StayWithinAPanelOfAnyWidth) {
  for (int room = 1; room < 300; ++room) EXPECT_LE(Sum(ShareLabels(room, {500, 9, 500})), std::max(room, 2)) << room;
}

}  // namespace
}  // namespace velk
