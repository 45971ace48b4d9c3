#include "graphs/coordinates.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "base/errors.h"

namespace velk::test {

TEST(TimeToY, GivesFifteenTwipsASample) {
  EXPECT_FLOAT_EQ(TimeToY(12.5, 10, 15, 0.5), 75);
  EXPECT_FLOAT_EQ(TimeToY(9, 10, 15, 0.5), -30);
}

TEST(TimeToY, RaisesDivisionByZeroWithoutAStep) {
  EXPECT_THROW(TimeToY(1, 0, 15, 0), RuntimeError);
}

TEST(ValueToX, GoesFromTheMarginToTheWidth) {
  EXPECT_FLOAT_EQ(ValueToX(-5, {-5, 15}, 966, 10966), 966);
  EXPECT_FLOAT_EQ(ValueToX(0, {-5, 15}, 966, 10966), 3466);
  EXPECT_FLOAT_EQ(ValueToX(15, {-5, 15}, 966, 10966), 10966);
}

TEST(ValueToX, TellsAnEmptyScaleFromAValueThatIsNoNumber) {
  EXPECT_THROW(ValueToX(5, {5, 5}, 966, 10966), RuntimeError);
  EXPECT_TRUE(std::isnan(ValueToX(std::numeric_limits<float>::quiet_NaN(), {5, 5}, 966, 10966)));
}

TEST(NarrowOrNan, KeepsTheLargestFloatAndNothingBeyond) {
  const double largest = static_cast<double>(std::numeric_limits<float>::max());
  EXPECT_EQ(NarrowOrNan(largest), std::numeric_limits<float>::max());
  EXPECT_TRUE(std::isnan(NarrowOrNan(largest * 1.01)));
  EXPECT_TRUE(std::isnan(NarrowOrNan(-largest * 1.01)));
  EXPECT_TRUE(std::isnan(NarrowOrNan(std::numeric_limits<double>::infinity())));
  EXPECT_TRUE(std::isnan(NarrowOrNan(std::nan(""))));
}

TEST(ScaleLimits, GoThroughTheirDecimalText) {
  // A hair above the middle between 1 and the next float: rounded at once it would go up, but its text,
  // "1.00000005960464", lies below the middle.
  const double hairAbove = 1 + std::ldexp(1, -24) + std::ldexp(1, -52);
  ASSERT_GT(static_cast<float>(hairAbove), 1.0f);
  EXPECT_EQ(ScaleLimits(hairAbove, 2).min, 1.0f);
  EXPECT_EQ(ScaleLimits(-2, hairAbove).max, 1.0f);
}

TEST(ScaleLimits, BeyondTheFloatRangeAreNoNumbers) {
  EXPECT_TRUE(std::isnan(ScaleLimits(0, 1e39).max));
  EXPECT_TRUE(std::isnan(ScaleLimits(-std::numeric_limits<double>::infinity(), 1).min));
}

TEST(ScaleCache, GivesEachOfManyScalesItsOwnLimitsInAnyOrder) {
  ScaleCache cache;
  for (int round = 0; round < 3; ++round)
    for (int i = 0; i < 200; ++i) {
      const int n = round == 1 ? 199 - i : i;
      const Scale limits = cache.Limits(-n, n * 0.5);
      ASSERT_EQ(limits.min, static_cast<float>(-n));
      ASSERT_EQ(limits.max, static_cast<float>(n) * 0.5f);
    }
}

}  // namespace velk::test
