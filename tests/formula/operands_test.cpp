#include "formula/operands.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

#include "base/numbers.h"

namespace velk {
namespace {

std::string Resolved(std::string text) {
  ResolveOperand(text);
  return text;
}

std::string Replaced(std::string text, std::string_view find, std::string_view replacement) {
  ReplaceFirst(text, find, replacement);
  return text;
}

TEST(ReplaceFirst, ReplacesOnlyTheFirstOccurrence) {
  EXPECT_EQ(Replaced("appap", "p", "+"), "a+pap");
  EXPECT_EQ(Replaced("1ep20", "p", "+"), "1e+20");
  EXPECT_EQ(Replaced("modmod", "mod", "%%%%"), "%%%%mod");
}

TEST(ReplaceFirst, LeavesATextWithoutIt) {
  EXPECT_EQ(Replaced("123", "p", "+"), "123");
  EXPECT_EQ(Replaced("", "p", "+"), "");
}

TEST(LastPosition, CountsFrom1) {
  EXPECT_EQ(LastPosition("(1+(2", "("), 4U);
  EXPECT_EQ(LastPosition("(1", "("), 1U);
  EXPECT_EQ(LastPosition("7mod3mod2", "mod"), 6U);
}

TEST(LastPosition, IsZeroWhereThereIsNone) {
  EXPECT_EQ(LastPosition("1+2", "("), 0U);
  EXPECT_EQ(LastPosition("", "("), 0U);
  EXPECT_EQ(LastPosition("mo", "mod"), 0U);
}

TEST(ResolveOperand, TurnsAMarkedSignIntoAMinus) {
  EXPECT_EQ(Resolved("@5"), "-5");
  EXPECT_EQ(Resolved("-5"), "-5");
  EXPECT_EQ(Resolved("@"), "-");
}

TEST(ResolveOperand, TakesOneSignOnly) {
  EXPECT_EQ(Resolved("@-3"), "--3");
  EXPECT_EQ(Resolved("--3"), "--3");
  EXPECT_EQ(Resolved("-@3"), "-@3");
}

TEST(ResolveOperand, DecodesOneExponentMarkOfEachKind) {
  EXPECT_EQ(Resolved("1ep20"), "1e+20");
  EXPECT_EQ(Resolved("@2.5em05"), "-2.5e-05");
  EXPECT_EQ(Resolved("1ep2ep3"), "1e+2ep3");
  EXPECT_EQ(Resolved("1ep2em3"), "1e+2e-3");
}

TEST(ResolveOperand, ReplacesTheFirstLetterOfTheTextNotOfTheMark) {
  EXPECT_EQ(Resolved("pi1ep3"), "+i1ep3");
  EXPECT_EQ(Resolved("mm1em3"), "-m1em3");
}

TEST(ResolveOperand, LeavesLettersAloneWithoutAMark) {
  EXPECT_EQ(Resolved("map"), "map");
  EXPECT_EQ(Resolved("exp"), "exp");
}

TEST(ResolveOperand, KnowsPiOnlyAsAWholeText) {
  EXPECT_EQ(Resolved("pi"), "3.14159265358979");
  EXPECT_EQ(Resolved("@pi"), "-3.14159265358979");
  EXPECT_EQ(Resolved("-pi"), "-3.14159265358979");
  EXPECT_EQ(Resolved("2pi"), "2pi");
  EXPECT_EQ(Resolved("pi "), "pi ");
}

TEST(ResolveOperand, LeavesPlainTexts) {
  for (const char* text : {"", "7", "0.5", "+3", "abc", "{x}", " 2"}) EXPECT_EQ(Resolved(text), text);
}

TEST(OperandValue, IsTheValueOfTheResolvedText) {
  EXPECT_EQ(OperandValue("@5"), -5);
  EXPECT_EQ(OperandValue("-2.5em01"), -0.25);
  EXPECT_EQ(OperandValue("1ep3"), 1000);
  EXPECT_EQ(OperandValue("pi"), 3.14159265358979);
  EXPECT_EQ(OperandValue("@pi"), -3.14159265358979);
  EXPECT_EQ(OperandValue(".5"), 0.5);
  EXPECT_EQ(OperandValue("+3"), 3);
  EXPECT_EQ(OperandValue("2x"), 2);
}

TEST(OperandValue, OfNothingIsZero) {
  for (const char* text : {"", "@", "-", "abc", "--3", "@+3", "- 3", "{x}"}) EXPECT_EQ(OperandValue(text), 0) << text;
}

TEST(OperandValue, KeepsTheSignOfZero) {
  EXPECT_TRUE(std::signbit(OperandValue("-0")));
  EXPECT_TRUE(std::signbit(OperandValue("@0")));
  EXPECT_FALSE(std::signbit(OperandValue("0")));
}

TEST(OperandValue, IsThatOfTheNumberAtTheFront) {
  const std::vector<std::pair<std::string, double>> rows = {
      {"1.", 1},    {"1e5", 1e5},  {"1ep", 1},    {"1em5x", 1e-5}, {"@1ep5", -1e5},
      {"1 2", 1},   {"0x10", 0},   {"1em999", 0}, {"inf", 0},      {"@nan", 0},
      {"1_000", 1}, {"00012", 12}, {"9p", 9},     {"1epem", 1},    {"1ep2ep3", 100}};
  for (const auto& [text, value] : rows) EXPECT_EQ(OperandValue(text), value) << text;
}

}  // namespace
}  // namespace velk
