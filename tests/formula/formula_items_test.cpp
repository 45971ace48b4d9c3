#include "formula/formula_items.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "formula/formula_tokens.h"

namespace velk {
namespace {

std::optional<std::span<FormulaItem>> Cut(const std::string& text) {
  return ItemsOf(text, static_cast<int>(std::count(text.begin(), text.end(), ')')));
}

TEST(ItemsOf, CutsAtOperatorsAndBrackets) {
  const auto plain = Cut("(1.5-20)*2mod3");
  ASSERT_TRUE(plain);
  const auto items = *plain;
  ASSERT_EQ(items.size(), 6U);
  EXPECT_EQ(items[0].kind, FormulaItem::Kind::Opening);
  EXPECT_EQ(items[0].function, kNoToken);
  EXPECT_EQ(items[1].value, 1.5);
  EXPECT_EQ(items[1].ahead, kNoToken);
  EXPECT_EQ(items[2].value, 20);
  EXPECT_EQ(items[2].ahead, kSubtraction);
  EXPECT_EQ(items[3].kind, FormulaItem::Kind::Closing);
  EXPECT_EQ(items[4].ahead, kMultiplication);
  EXPECT_EQ(items[5].ahead, kRemainder);
}

TEST(ItemsOf, TakesAMinusAtTheFrontIntoTheNumber) {
  EXPECT_EQ(Cut("-5*2").value()[0].value, -5);
  EXPECT_EQ(Cut("2*(-5)").value()[2].value, -5);
  EXPECT_TRUE(Cut("-(5)").value()[0].isNegated);
}

TEST(ItemsOf, LeavesNothingBetweenAnOperatorAndTheSignBehindIt) {
  const auto plain = Cut("2*-3");
  ASSERT_EQ(plain->size(), 3U);
  EXPECT_EQ(plain.value()[1].kind, FormulaItem::Kind::Nothing);
  EXPECT_EQ(plain.value()[2].ahead, kSubtraction);
  EXPECT_EQ(plain.value()[2].value, 3);
}

TEST(ItemsOf, KnowsWhatBlanksPart) {
  EXPECT_TRUE(Cut("2 - 3").value()[1].isApart);
  EXPECT_FALSE(Cut("2 -3 ").value()[1].isApart);
  // Blanks alone are an operand: no sign stands behind the operator then.
  EXPECT_EQ(Cut("2* -3").value()[1].kind, FormulaItem::Kind::Number);
  // Those ahead of a bracket go with it, but those ahead of its function stay.
  EXPECT_FALSE(Cut("2 - (3)").value()[1].isApart);
  EXPECT_TRUE(Cut("2 - sin(3)").value()[1].isApart);
}

TEST(ItemsOf, KnowsFunctionsAndPi) {
  const auto plain = Cut("log(pi)");
  ASSERT_EQ(plain->size(), 3U);
  EXPECT_EQ(plain.value()[0].function, kDecimalLogarithm);
  EXPECT_EQ(plain.value()[1].value, 3.14159265358979);
}

TEST(ItemsOf, ReadsEveryFormOfANumber) {
  EXPECT_EQ(Cut("1E-05*2").value()[0].value, 1e-5);
  EXPECT_EQ(Cut("2*1e+3").value()[1].value, 1000);
  EXPECT_EQ(Cut(".5*2").value()[0].value, 0.5);
  EXPECT_EQ(Cut("12345678901234567890*2").value()[0].value, 12345678901234567890.0);
}

TEST(ItemsOf, IsNothingForOtherTexts) {
  for (const char* text :
       {"",      " ",    "abc",    "3+",    "2+{x}",   "2x",       "(2",        "2)",    ")(",     "()",
        "2(3)",  "(2)3", "SIN(1)", "sin 1", "asin(1)", "lnlog(2)", "sin",       "1e+*2", "1ep5*1", "@3*2",
        "- 5*2", " 2*3", "2*+pi",  "pi *2", "2,5*3",   "1.2.3*4",  "Глубина*2", "pi(2)"}) {
    EXPECT_FALSE(Cut(text)) << text;
  }
  EXPECT_FALSE(ItemsOf("(1)*(2)", 1));  // as where a reference has no channel
}

}  // namespace
}  // namespace velk
