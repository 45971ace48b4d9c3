#include "base/number_entry.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

TEST(EnteredNumber, IsTheNumberAtTheFrontOrZero) {
  struct Case {
    const char* text;
    double value;
  };
  constexpr Case cases[] = {{"", 0},       {"abc", 0},       {"12", 12},     {"12.5", 12.5}, {" -3 bar", -3},
                            {"1e3", 1000}, {"1.2.3", 1.2},   {"5.", 5},      {".5", 0.5},    {"0x10", 0},
                            {"7 bar", 7},  {"12. text", 12}, {"-0.25", -.25}};
  for (const Case& each : cases) EXPECT_EQ(EnteredNumber(each.text), each.value) << each.text;
}

TEST(EnteredNumber, TakesTheDecimalCommaForThePoint) {
  struct Case {
    const char* text;
    double value;
  };
  constexpr Case cases[] = {{"1,5", 1.5},   {"-0,25", -0.25},  {",5", 0.5},       {"5,", 5},           {"1,234", 1.234},
                            {"1,5e2", 150}, {" 2,5 bar", 2.5}, {"12, about", 12}, {"2,5 m, deep", 2.5}};
  for (const Case& each : cases) EXPECT_EQ(EnteredNumber(each.text), each.value) << each.text;
}

TEST(EnteredNumber, IsNoneWhereTwoCouldBeMeant) {
  for (const char* text : {"1,234.5", "1.234,5", "1,234,567", "1.234.567", "-12.345.678", "1 234", "1 234,5",
                           "1\u00A0234,5", "1\u202F234", "1,,5"})
    EXPECT_EQ(EnteredNumber(text), std::nullopt) << text;
}

TEST(EnteredNumber, IsNoneBeyondTheRange) {
  EXPECT_EQ(EnteredNumber("1e999"), std::nullopt);
  EXPECT_EQ(EnteredNumber("-1e999"), std::nullopt);
}

TEST(WithDecimalPoint, ChangesTheCommaOfAClearNumberOnly) {
  EXPECT_EQ(WithDecimalPoint("1,50"), "1.50");
  EXPECT_EQ(WithDecimalPoint("1.50"), "1.50");
  EXPECT_EQ(WithDecimalPoint("None, yet"), "None, yet");
  EXPECT_EQ(WithDecimalPoint("1,234.5"), "1,234.5");
  EXPECT_EQ(WithDecimalPoint("2,5 m, deep"), "2.5 m, deep");
}

}  // namespace
}  // namespace velk
