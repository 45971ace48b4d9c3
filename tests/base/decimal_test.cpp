#include "base/decimal.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <random>

namespace velk {
namespace {

std::string InExponentForm(const Decimal& decimal, int digits) {
  std::string text = decimal.negative ? "-" : "";
  for (int i = 0; i < digits; ++i) {
    text += decimal.DigitAt(decimal.exponent - i);
    if (i == 0) text += '.';
  }
  char exponent[16];
  std::snprintf(exponent, sizeof exponent, "e%+03d", decimal.exponent);
  return text + exponent;
}

void ExpectTheLibrarysDigits(double value) {
  for (const int digits : {Decimal::kDigits64, Decimal::kDigits32}) {
    char expected[64];
    std::snprintf(expected, sizeof expected, "%.*e", digits - 1, value);
    EXPECT_EQ(InExponentForm(ToDecimal(value, digits), digits), expected);
  }
}

TEST(Decimal, HasTheDigitsThatTheCLibraryPrints) {
  std::mt19937_64 random(20260314);
  for (int i = 0; i < 50'000; ++i) {
    const std::uint64_t bits = random();
    double any = 0;
    std::memcpy(&any, &bits, sizeof any);
    if (std::isfinite(any)) ExpectTheLibrarysDigits(any);
    const auto instruments = static_cast<double>(bits % 1'000'000'000) / 1000;
    ExpectTheLibrarysDigits(instruments);
    ExpectTheLibrarysDigits(static_cast<double>(static_cast<float>(instruments)));
    const double withManyExactTies = std::ldexp(static_cast<double>(bits >> 11), -static_cast<int>(bits % 64));
    ExpectTheLibrarysDigits(withManyExactTies);
    const double besideAPowerOfTen = std::nextafter(std::pow(10.0, static_cast<int>(bits % 40) - 20), i % 2 * 1e300);
    ExpectTheLibrarysDigits(besideAPowerOfTen);
  }
}

TEST(Decimal, HoldsNoTrailingZerosAndZeroHasNoDigits) {
  EXPECT_EQ(ToDecimal(1200, 15).count, 2);
  EXPECT_EQ(ToDecimal(1200, 15).exponent, 3);
  EXPECT_TRUE(ToDecimal(0, 15).IsZero());
  EXPECT_TRUE(ToDecimal(-0.0, 15).negative);
}

TEST(Decimal, RoundsHalfAwayFromZero) {
  const auto rounded = [](double value, int power) {
    Decimal decimal = ToDecimal(value, 15);
    decimal.RoundTo(power);
    return InExponentForm(decimal, 4);
  };
  EXPECT_EQ(rounded(0.0005, -3), "1.000e-03");
  EXPECT_EQ(rounded(0.00049, -3), "0.000e+00");
  EXPECT_EQ(rounded(2.5, 0), "3.000e+00");
  EXPECT_EQ(rounded(-2.5, 0), "-3.000e+00");
  EXPECT_EQ(rounded(9.999, -2), "1.000e+01");
  EXPECT_EQ(rounded(0.5, 0), "1.000e+00");
  EXPECT_EQ(rounded(0.05, 0), "0.000e+00");
  EXPECT_EQ(rounded(1250, 2), "1.300e+03");
  EXPECT_EQ(rounded(1.25, -5), "1.250e+00");
}

}  // namespace
}  // namespace velk
