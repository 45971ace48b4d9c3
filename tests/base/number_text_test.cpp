#include "base/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>

#include "base/number_reading.h"

namespace velk {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(NumberText, ShowsA64BitFloatWith15Digits) {
  const std::vector<std::pair<double, std::string>> rows = {
      {0, "0"},
      {-0.0, "0"},
      {1, "1"},
      {-1, "-1"},
      {0.5, "0.5"},
      {-0.5, "-0.5"},
      {100, "100"},
      {1234.5, "1234.5"},
      {0.1 + 0.2, "0.3"},
      {1.0 / 3, "0.333333333333333"},
      {2.0 / 3, "0.666666666666667"},
      {-2e3 / 3, "-666.666666666667"},
      {99999, "99999"},
      {100000000000000.0, "100000000000000"},
      {123456789012345.0, "123456789012345"},
      {999999999999999.0, "999999999999999"},
      {999999999999999.9, "1E+15"},  // 16 digits, taken to 15
      {1e15, "1E+15"},
      {1.5e15, "1.5E+15"},
      {-1e15, "-1E+15"},
      {123456789012345678.0, "1.23456789012346E+17"},
      {1e20, "1E+20"},
      {1e100, "1E+100"},
      {0.001, "0.001"},
      {0.0001, "0.0001"},
      {0.00012345, "0.00012345"},
      {0.000099999999999999999, "0.0001"},
      {0.00009999, "9.999E-05"},
      {0.00001, "1E-05"},
      {-0.000015, "-1.5E-05"},
      {1e-12, "1E-12"},
      {1e-13, "1E-13"},
      {1e-100, "1E-100"},
      {1e300, "1E+300"},
      {5e-324, "4.94065645841247E-324"},
      {1.7976931348623157e308, "1.79769313486232E+308"},
      {1.0 / 86400, "1.15740740740741E-05"},
      {3.14159265358979, "3.14159265358979"},
      {1000.0000017529050, "1000.0000017529"},  // lies just below the tie
      {kNaN, "nan"},
      {kInfinity, "inf"},
      {-kInfinity, "-inf"},
  };
  for (const auto& [value, text] : rows) EXPECT_EQ(NumberText(value), text);
}

TEST(NumberText, ShowsA32BitFloatWith7Digits) {
  const std::vector<std::pair<float, std::string>> rows = {
      {0.0F, "0"},
      {-0.0F, "0"},
      {0.1F, "0.1"},
      {-2.5F, "-2.5"},
      {1.0F / 3, "0.3333333"},
      {2.0F / 3, "0.6666667"},
      {1234.5678F, "1234.568"},
      {999999.0F, "999999"},
      {9999999.0F, "9999999"},
      {10000000.0F, "1E+07"},
      {16777216.0F, "1.677722E+07"},
      {99999999.0F, "1E+08"},
      {0.0001F, "0.0001"},
      {0.00001F, "1E-05"},
      {std::numeric_limits<float>::max(), "3.402823E+38"},
      {std::numeric_limits<float>::denorm_min(), "1.401298E-45"},
      {std::numeric_limits<float>::quiet_NaN(), "nan"},
      {std::numeric_limits<float>::infinity(), "inf"},
  };
  for (const auto& [value, text] : rows) EXPECT_EQ(NumberText(value), text);
}

TEST(ThroughNumberText, IsTheNumberThatTheTextReadsAs) {
  const double values[] = {1.0 / 3,
                           -2.0 / 3,
                           0.1 + 0.2,
                           123456789.123456789,
                           1e15,
                           999999999999999.9,
                           1e-4,
                           1e-5,
                           1.5e-8,
                           1.0 / 3e8,
                           1.0 / 7e9,
                           5e-324,
                           -1.0 / 86400 / 7e6,
                           1e300,
                           -1e-300,
                           1.7976931348623157e308,
                           kInfinity,
                           kNaN};
  for (const double value : values) EXPECT_EQ(ThroughNumberText(value), Val(NumberText(value))) << value;
  EXPECT_FALSE(std::signbit(ThroughNumberText(-0.0)));
  std::mt19937_64 random(20261123);
  for (int i = 0; i < 100'000; ++i) {
    const double mantissa = static_cast<double>(random()) * (random() % 2 ? 1 : -1);
    const double value = std::ldexp(mantissa, static_cast<int>(random() % 120) - 110);
    EXPECT_EQ(ThroughNumberText(value), std::strtod(NumberText(value).c_str(), nullptr)) << NumberText(value);
  }
}

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
