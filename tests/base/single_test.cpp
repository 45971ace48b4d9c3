#include "base/single.h"

#include <gtest/gtest.h>

#include <limits>

#include "base/errors.h"

namespace velk {
namespace {

TEST(ThroughText, RoundsTheFifteenDigitsOfANumberTo32Bits) {
  EXPECT_EQ(ThroughText(0.1), 0.1f);
  EXPECT_EQ(ThroughText(1.0 / 3), 0.33333334f);
  EXPECT_EQ(ThroughText(-2.5), -2.5f);
  EXPECT_EQ(ThroughText(16777217), 16777216.0f);
}

TEST(ThroughText, RaisesOverflowBeyond32Bits) {
  for (const double value : {1e39, -1e39}) {
    try {
      ThroughText(value);
      FAIL() << value;
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.Number(), ErrorNumber::Overflow);
    }
  }
}

TEST(FitsSingle, EndsAtTheLargest32BitValue) {
  const double largest = static_cast<double>(std::numeric_limits<float>::max());
  EXPECT_TRUE(FitsSingle(largest));
  EXPECT_TRUE(FitsSingle(-largest));
  EXPECT_FALSE(FitsSingle(largest * 1.0001));
  EXPECT_FALSE(FitsSingle(std::numeric_limits<double>::infinity()));
  EXPECT_FALSE(FitsSingle(std::numeric_limits<double>::quiet_NaN()));
}

}  // namespace
}  // namespace velk
