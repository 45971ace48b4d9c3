#include "base/number_reading.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

#include "base/errors.h"

namespace velk {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

const std::vector<std::pair<std::string, double>> kNumbersAtTheFront = {
    {"0", 0},
    {"7", 7},
    {"+3", 3},
    {"-3", -3},
    {"0042", 42},
    {"12.5", 12.5},
    {"-.5", -0.5},
    {".25", 0.25},
    {"5.", 5},
    {"1e3", 1000},
    {"1E3", 1000},
    {"1e+3", 1000},
    {"2.5e-1", 0.25},
    {"1e03", 1000},
    {"  8", 8},
    {"\t8", 8},
    {" \t -8", -8},
    {"1.2.3", 1.2},
    {"12abc", 12},
    {"12 34", 12},
    {"12,5", 12},
    {"1e", 1},
    {"1e+", 1},
    {"1e-", 1},
    {"1ee5", 1},
    {"3d2", 3},
    {"0x10", 0},
    {"1e5.5", 100000},
    {"5%", 5},
    {"12\xB5", 12},
    {"1\r\n", 1},
    {std::string("1\0002", 3), 1},
    {"0.1", 0.1},
    {"9007199254740993", 9007199254740992.0},
    {"4.9406564584124654e-324", 4.9406564584124654e-324},
    {"1.7976931348623157e308", 1.7976931348623157e308},
};

TEST(Val, ReadsTheNumberAtTheFrontAndIgnoresTheRest) {
  for (const auto& [text, value] : kNumbersAtTheFront) EXPECT_EQ(Val(text), value) << text;
}

TEST(Val, GivesZeroWhereNoNumberStands) {
  const std::vector<std::string> texts = {"",
                                          " ",
                                          "\t",
                                          ".",
                                          "-",
                                          "+",
                                          "-.",
                                          "+.",
                                          "e5",
                                          ".e5",
                                          "abc",
                                          "nan",
                                          "-nan",
                                          "inf",
                                          "-inf",
                                          "Infinity",
                                          "--5",
                                          "+-5",
                                          "-+5",
                                          "- 5",
                                          "\r5",
                                          "$5",
                                          "\xB5"
                                          "5",
                                          "\xA0"
                                          "5",
                                          std::string("\0"
                                                      "5",
                                                      2),
                                          std::string(400, 'x')};
  for (const std::string& text : texts) {
    EXPECT_EQ(Val(text), 0) << text;
    EXPECT_FALSE(std::signbit(Val(text))) << text;
  }
}

TEST(Val, KeepsTheSignOfMinusZero) {
  EXPECT_EQ(Val("-0"), 0);
  EXPECT_TRUE(std::signbit(Val("-0")));
  EXPECT_TRUE(std::signbit(Val("-0.00e5")));
}

TEST(Val, GivesAnInfinityBeyondTheRangeAndZeroBelowIt) {
  EXPECT_EQ(Val("1e999"), kInfinity);
  EXPECT_EQ(Val("-1e999"), -kInfinity);
  EXPECT_EQ(Val("1e99999999999999999999999"), kInfinity);
  EXPECT_EQ(Val("1.8e308"), kInfinity);
  EXPECT_EQ(Val("0.0001e400"), kInfinity);
  EXPECT_EQ(Val("1e999kPa"), kInfinity);
  EXPECT_EQ(Val("1e-999"), 0);
  EXPECT_EQ(Val("1e-99999999999999999999999"), 0);
  EXPECT_EQ(Val("12345e-400"), 0);
  EXPECT_EQ(Val("0e99999999999999999999999"), 0);
}

TEST(Val, ReadsTextsOf400Digits) {
  const std::string zeros(400, '0');
  const std::string nines(400, '9');
  EXPECT_EQ(Val(nines), kInfinity);
  EXPECT_EQ(Val("-" + nines), -kInfinity);
  EXPECT_EQ(Val(zeros + "5"), 5);
  EXPECT_EQ(Val("0." + zeros + "1"), 0);
  EXPECT_EQ(Val("1" + zeros + "e-400"), 1);
  EXPECT_EQ(Val("0." + zeros + "1e401"), 1);
  EXPECT_EQ(Val("1." + zeros), 1);
  EXPECT_EQ(Val(nines.substr(100)), 1e300);
}

std::string RandomDigits(std::mt19937& random, std::size_t count) {
  std::string digits;
  while (digits.size() < count) digits += static_cast<char>('0' + random() % 10);
  return digits;
}

TEST(Val, IsTheNearestNumberThatTheCLibraryReads) {
  std::mt19937 random(20261122);
  for (int i = 0; i < 100'000; ++i) {
    // Around 16 digits and 2^53 lies what is one exact division, and what is not.
    std::string text = RandomDigits(random, 1 + random() % 11) + '.' + RandomDigits(random, random() % 11);
    if (i % 4 == 0) text = "900719925474099" + RandomDigits(random, 1 + random() % 2);
    if (i % 4 == 1) text = "0." + std::string(random() % 8, '0') + RandomDigits(random, 10 + random() % 12);
    if (i % 16 == 2) text += 'e' + std::to_string(static_cast<int>(random() % 40) - 20);
    EXPECT_EQ(Val(text), std::strtod(text.c_str(), nullptr)) << text;
  }
}

TEST(ReadMagnitude, TakesNoBlankAndNoSign) {
  for (const std::string text : {"", " 1", "-1", "+1", ".", "x", "inf", "nan", ".e1"}) {
    double value = 1;
    EXPECT_EQ(ReadMagnitude(text.data(), text.data() + text.size(), value), nullptr) << text;
    EXPECT_EQ(value, 0) << text;
  }
}

TEST(ReadMagnitude, GivesWhatIsBehindTheNumber) {
  const std::vector<std::pair<std::string, std::string>> rows = {{"12", ""},      {"1.5-2", "-2"}, {".5.5", ".5"},
                                                                 {"7.", ""},      {"1e5x", "x"},   {"1e", "e"},
                                                                 {"1e999*", "*"}, {"2 ", " "}};
  for (const auto& [text, rest] : rows) {
    double value = 0;
    EXPECT_EQ(ReadMagnitude(text.data(), text.data() + text.size(), value), text.data() + text.size() - rest.size())
        << text;
    EXPECT_EQ(value, Val(text)) << text;
  }
}

TEST(IsNumeric, IsTrueOfOneFiniteNumberAsAWhole) {
  for (const char* text : {"0", "-1", "+1", "1.5", ".5", "5.", "1e5", "1E-5", " 7 ", "7   ", "-0", "1e-999"}) {
    EXPECT_TRUE(IsNumeric(text)) << text;
  }
  for (const char* text : {"", " ", ".", "-", "12abc", "1.2.3", "1e", "1 2", "1,000", "nan", "inf", "1e999", "-1e999",
                           "None", "0x10", "5\n", "1e5 x"}) {
    EXPECT_FALSE(IsNumeric(text)) << text;
  }
}

ErrorNumber ErrorOfToDouble(const std::string& text) {
  try {
    ToDouble(text);
  } catch (const RuntimeError& error) {
    return error.Number();
  }
  ADD_FAILURE() << "no error from " << text;
  return ErrorNumber::InvalidArgument;
}

TEST(ToDouble, ReadsAWholeNumberAndRaisesForOtherTexts) {
  EXPECT_EQ(ToDouble("12.5"), 12.5);
  EXPECT_EQ(ToDouble(" -3 "), -3);
  for (const char* text : {"", " ", "None", "12abc", "1e", "nan", "inf", "1,5"}) {
    EXPECT_EQ(ErrorOfToDouble(text), ErrorNumber::TypeMismatch) << text;
  }
  EXPECT_EQ(ErrorOfToDouble("1e999"), ErrorNumber::Overflow);
  EXPECT_EQ(ErrorOfToDouble("-1e999"), ErrorNumber::Overflow);
  EXPECT_EQ(ErrorOfToDouble(std::string(400, '1')), ErrorNumber::Overflow);
}

}  // namespace
}  // namespace velk
