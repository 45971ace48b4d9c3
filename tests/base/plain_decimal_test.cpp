#include "base/plain_decimal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <random>
#include <string>

namespace velk {
namespace {

TEST(PlainDecimal, IsDigitsWithOnePointBehindOneSignAtTheFrontOfAText) {
  const struct {
    const char* text;
    double value;
    std::size_t length;
  } cases[] = {{"0", 0, 1},    {"0012.375", 12.375, 8}, {"-2.25", -2.25, 5}, {"+7", 7, 2},
               {"5.", 5, 2},   {".5", 0.5, 2},          {"12 5", 12, 2},     {"1.2.3", 1.2, 3},
               {"1-", 1, 1},   {"12e7", 12, 2},         {"5\r\n", 5, 1},     {"7x", 7, 1},
               {"0x10", 0, 1}, {"-.25,", -0.25, 4}};
  for (const auto& one : cases) {
    const PlainDecimal read = ReadPlainDecimal(one.text);
    EXPECT_EQ(read.value, one.value) << one.text;
    EXPECT_EQ(read.length, one.length) << one.text;
  }
}

TEST(PlainDecimal, IsNoneWithoutADigit) {
  for (const char* text : {"", " 5", "\t5", ".", "-", "+.", "-.", "--1", "+-1", "- 1", "e5", "nan", "inf"})
    EXPECT_EQ(ReadPlainDecimal(text).length, 0u) << text;
}

TEST(PlainDecimal, IsNoneBeyondNineteenDigitsAndTheWholeNumbersOfADouble) {
  EXPECT_EQ(ReadPlainDecimal("999999999999999").value, 999999999999999.0);
  EXPECT_EQ(ReadPlainDecimal("-.000000000000001").value, -1e-15);
  EXPECT_EQ(ReadPlainDecimal("0.000000000000000001").value, 1e-18);
  EXPECT_EQ(ReadPlainDecimal("0.0000000000000000001").length, 0u);
  EXPECT_EQ(ReadPlainDecimal("9007199254740992").value, 9007199254740992.0);
  EXPECT_EQ(ReadPlainDecimal("9007199254740993").length, 0u);
  EXPECT_EQ(ReadPlainDecimal("18446744073709551617").length, 0u);  // 2^64 + 1
  EXPECT_EQ(ReadPlainDecimal(std::string(100, '9')).length, 0u);
}

TEST(PlainDecimal, KeepsTheSignOfZero) {
  EXPECT_TRUE(std::signbit(ReadPlainDecimal("-0").value));
  EXPECT_TRUE(std::signbit(ReadPlainDecimal("-0.000").value));
  EXPECT_FALSE(std::signbit(ReadPlainDecimal("+0").value));
}

TEST(PlainDecimal, IsTheNearestDouble) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 100'000; ++i) {
    std::string text = std::to_string(random());
    text.resize(std::min<std::size_t>(text.size(), 1 + random() % 15));
    text.insert(random() % (text.size() + 1), ".");
    if (random() % 2) text.insert(0, "-");
    const PlainDecimal read = ReadPlainDecimal(text);
    EXPECT_EQ(read.length, text.size()) << text;
    EXPECT_EQ(read.value, std::strtod(text.c_str(), nullptr)) << text;
  }
}

TEST(PlainMagnitude, TakesNoSignAndGivesWhatIsBehindIt) {
  const std::string text = "12.5e3";
  const char* const end = text.data() + text.size();
  double value = 0;
  EXPECT_EQ(ReadPlainMagnitude(text.data(), end, value), end - 2);
  EXPECT_EQ(value, 12.5);
  for (const std::string none : {"", "-1", "+1", " 1", ".", "x"}) {
    EXPECT_EQ(ReadPlainMagnitude(none.data(), none.data() + none.size(), value), nullptr) << none;
  }
}

}  // namespace
}  // namespace velk
