#include "formula/formula_checks.h"

#include <gtest/gtest.h>

#include "support/scripted_dialogs.h"

namespace velk {
namespace {

TEST(CompleteBrackets, CountsTheRightBrackets) {
  std::string formula = "(1+2)*(3)";
  int rightCount = 0;
  EXPECT_EQ(CompleteBrackets(formula, rightCount).kind, FormulaFault::None);
  EXPECT_EQ(rightCount, 2);
  EXPECT_EQ(formula, "(1+2)*(3)");
}

TEST(CompleteBrackets, SuppliesOneMissingBracket) {
  std::string formula = "sin(2";
  int rightCount = 0;
  EXPECT_EQ(CompleteBrackets(formula, rightCount).kind, FormulaFault::None);
  EXPECT_EQ(formula, "sin(2)");
  EXPECT_EQ(rightCount, 1);
}

TEST(CompleteBrackets, RefusesEveryOtherDifference) {
  for (const std::string refused : {"sin(2))", "((2", "((((", ")"}) {
    std::string formula = refused;
    int rightCount = 0;
    EXPECT_EQ(CompleteBrackets(formula, rightCount).kind, FormulaFault::BracketNumbersDiffer) << refused;
    EXPECT_EQ(formula, refused);
  }
}

TEST(CompleteBrackets, AddsToTheCountThatComesIn) {
  std::string formula = "((2)";
  int rightCount = 1;
  EXPECT_EQ(CompleteBrackets(formula, rightCount).kind, FormulaFault::None);
  EXPECT_EQ(rightCount, 2);
  EXPECT_EQ(formula, "((2)");
}

std::string RestOf(const std::string& formula) {
  const FormulaFault fault = TextFault(formula);
  return fault.kind == FormulaFault::NotValid ? fault.rest : std::string("?");
}

TEST(TextFault, AcceptsTokensNumbersAndReferences) {
  for (const char* formula : {"", "1+2", "({a}-{b})*2.5+log({c})", "1e+3", "2.5e-4", " 1 + 2 ", "1,5", "2++", "sin",
                              "7mod3\\2^2/pi", "lnlogsincostanexpavgmaxmin", "{any name (1)}"}) {
    EXPECT_EQ(TextFault(formula).kind, FormulaFault::None) << formula;
  }
}

TEST(TextFault, RefusesARightBracketAheadOfItsLeftOne) {
  EXPECT_EQ(TextFault(")2(").kind, FormulaFault::RightBracketFirst);
  EXPECT_EQ(TextFault("(1)2)(").kind, FormulaFault::RightBracketFirst);
  EXPECT_EQ(TextFault("(2").kind, FormulaFault::RightBracketFirst);
}

TEST(TextFault, TakesTheFirstBracketsOfTheWholeTextAsAPair) {
  EXPECT_EQ(RestOf(")(2)"), ")");
  EXPECT_EQ(RestOf("2)"), ")");
}

TEST(TextFault, TellsWhatIsLeft) {
  EXPECT_EQ(RestOf("2e3"), "e");
  EXPECT_EQ(RestOf("1+depth"), "depth");
  EXPECT_EQ(RestOf("2*SIN(1)"), "SIN");
  EXPECT_EQ(RestOf("1;2"), ";");
}

TEST(TextFault, TakesTokensOutInTheOrderOfTheTable) {
  // "mod" goes first and brings "pi" together; "pi" goes and brings "ln" together.
  EXPECT_EQ(RestOf("lpmodin"), "?");
  // "pi" is out before "min" brings its letters together.
  EXPECT_EQ(RestOf("pmini"), "pi");
}

TEST(TextFault, TakesEachTokenOutOnce) {
  EXPECT_EQ(RestOf("mmodod"), "mod");
}

TEST(TextFault, LetsBracesThatDoNotMatchBeAndTellsThem) {
  EXPECT_EQ(RestOf("{"), "{");
  EXPECT_EQ(RestOf("}"), "}");
  EXPECT_EQ(RestOf("}{a}"), "}{a}");
  EXPECT_EQ(RestOf("{a}+{"), "{");
  EXPECT_EQ(RestOf("{depth"), "{depth");
}

TEST(TextFault, ReadsAReferenceUpToTheFirstClosingBrace) {
  EXPECT_EQ(TextFault("{a{b}").kind, FormulaFault::None);
  EXPECT_EQ(RestOf("{a}b}"), "b}");
}

class FormulaChecks : public testing::Test {
 protected:
  bool FailsBrackets(std::string formula) {
    int rightCount = 0;
    return CheckBrackets(report_, formula, rightCount);
  }

  Gate gate_;
  test::ScriptedDialogs dialogs_{gate_};
  int beeps_ = 0;
  FormulaReport report_{dialogs_, test::English(), [this] { ++beeps_; }};
};

TEST_F(FormulaChecks, AreSilentOnAGoodFormula) {
  EXPECT_FALSE(FailsBrackets("sin(2"));
  EXPECT_FALSE(CheckFormulaText(report_, "sin(2)+{a}"));
  EXPECT_TRUE(dialogs_.shown.empty());
  EXPECT_EQ(beeps_, 0);
}

TEST_F(FormulaChecks, TellThatTheNumbersOfBracketsDiffer) {
  dialogs_.Expect("Error in formula, number of left brackets does not match number of right brackets", Answer::Ok);
  EXPECT_TRUE(FailsBrackets("sin(2))"));
  ASSERT_EQ(dialogs_.shown.size(), 1U);
  EXPECT_EQ(dialogs_.shown[0].text,
            "Error in formula, number of left brackets does not match number of right brackets");
  EXPECT_EQ(dialogs_.shown[0].title, "Formula Calculator");
  EXPECT_EQ(dialogs_.shown[0].icon, BoxIcon::Critical);
  EXPECT_EQ(dialogs_.shown[0].buttons, Buttons::Ok);
  EXPECT_EQ(beeps_, 0);
}

TEST_F(FormulaChecks, TellARightBracketAheadOfItsLeftOne) {
  dialogs_.Expect("Error in formula, right bracket(s) proceeding left bracket(s)", Answer::Ok);
  EXPECT_TRUE(CheckFormulaText(report_, ")2("));
  ASSERT_EQ(dialogs_.shown.size(), 1U);
  EXPECT_EQ(dialogs_.shown[0].text, "Error in formula, right bracket(s) proceeding left bracket(s)");
  EXPECT_EQ(dialogs_.shown[0].title, "");
  EXPECT_EQ(dialogs_.shown[0].icon, BoxIcon::Critical);
  EXPECT_EQ(beeps_, 1);
}

TEST_F(FormulaChecks, TellWhatIsNotValid) {
  dialogs_.Expect("Error in formula, string e is not valid string", Answer::Ok);
  EXPECT_TRUE(CheckFormulaText(report_, "2e3"));
  ASSERT_EQ(dialogs_.shown.size(), 1U);
  EXPECT_EQ(dialogs_.shown[0].text, "Error in formula, string e is not valid string");
  EXPECT_EQ(dialogs_.shown[0].title, "");
  EXPECT_EQ(dialogs_.shown[0].icon, BoxIcon::Critical);
  EXPECT_EQ(beeps_, 1);
}

}  // namespace
}  // namespace velk
