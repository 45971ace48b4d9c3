#include "formula/evaluator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "base/errors.h"
#include "base/numbers.h"
#include "formula/formula_value.h"
#include "support/raises.h"

namespace velk {
namespace {

/// The result of a formula without references; its value by itself is the same.
std::string Evaluated(std::string text) {
  std::vector<Parameter> additional(2);
  std::vector<Parameter> again(2);
  const std::string formula = text;
  const auto brackets = static_cast<int>(std::count(text.begin(), text.end(), ')'));
  EvaluateFormula(text, brackets, additional, 1);
  std::string valued = formula;
  const double value = FormulaValue(valued, brackets, again, 1);
  EXPECT_EQ(value, Val(text)) << formula;
  EXPECT_EQ(std::signbit(value), std::signbit(Val(text))) << formula;
  EXPECT_EQ(again[1].AverageCount, additional[1].AverageCount) << formula;
  return text;
}

TEST(EvaluateFormula, WorksOffTheOperatorsByPriority) {
  EXPECT_EQ(Evaluated("1+2*3"), "7");
  EXPECT_EQ(Evaluated("8/2*2"), "8");
  EXPECT_EQ(Evaluated("2*8/2"), "8");
  EXPECT_EQ(Evaluated("2*7\\4"), "3");
  EXPECT_EQ(Evaluated("7-2+4"), "9");
}

TEST(EvaluateFormula, WorksOffTheInnermostBracketFirst) {
  EXPECT_EQ(Evaluated("(1+2)*3"), "9");
  EXPECT_EQ(Evaluated("2*(3+(4-1))"), "12");
  EXPECT_EQ(Evaluated("(2)"), "2");
  EXPECT_EQ(Evaluated("-(2+3)"), "-5");
  EXPECT_EQ(Evaluated("2-(3+4)"), "-5");
}

TEST(EvaluateFormula, RunsAChainOfOneOperatorFromTheLeft) {
  EXPECT_EQ(Evaluated("2^3^2"), "64");
  EXPECT_EQ(Evaluated("1-2-3"), "-4");
}

TEST(EvaluateFormula, BindsASignTighterThanAPower) {
  EXPECT_EQ(Evaluated("-2^2"), "4");
  EXPECT_EQ(Evaluated("5-2^2"), "9");
  EXPECT_EQ(Evaluated("1-2^2-3"), "2");
}

TEST(EvaluateFormula, TakesTheMinusIntoTheLeftOperand) {
  EXPECT_EQ(Evaluated("5-3*2"), "-1");
  EXPECT_EQ(Evaluated("5-2*-3"), "11");
}

TEST(EvaluateFormula, ReadsASignBehindAnOperator) {
  EXPECT_EQ(Evaluated("2--3"), "5");
  EXPECT_EQ(Evaluated("2*-3"), "-6");
  EXPECT_EQ(Evaluated("2-+3"), "-1");
}

TEST(EvaluateFormula, RoundsForIntegerOperations) {
  EXPECT_EQ(Evaluated("7\\2"), "3");
  EXPECT_EQ(Evaluated("7mod3"), "1");
  EXPECT_EQ(Evaluated("7.5mod2"), "0");
}

TEST(EvaluateFormula, CarriesExponentsThroughTheText) {
  EXPECT_EQ(Evaluated("1e+3*2"), "2000");
  EXPECT_EQ(Evaluated("1e-3*2"), "0.002");
  EXPECT_EQ(Evaluated("1e+20*2"), "2e+20");
  EXPECT_EQ(Evaluated("1-(1e+20*2)"), "-2e+20");
  EXPECT_EQ(Evaluated("1E-05*1"), "1e-05");
}

TEST(EvaluateFormula, KnowsPi) {
  EXPECT_EQ(Evaluated("pi*2"), "6.28318530717958");
  EXPECT_EQ(Evaluated("-pi"), "-3.14159265358979");
}

TEST(EvaluateFormula, AppliesFunctions) {
  EXPECT_EQ(Evaluated("log(100)"), "2");
  EXPECT_EQ(Evaluated("ln(1)"), "0");
  EXPECT_EQ(Evaluated("sin(0)+1"), "1");
}

TEST(EvaluateFormula, AppliesTwoNamesWithoutABracketWhenTheInnerOneComesFirst) {
  // ln (8) is applied, and log (9) is still to be looked at.
  EXPECT_EQ(Evaluated("logln(2.718281828459045)"), "0");
  // log is applied; ln was looked at before, so its name stays in the text.
  EXPECT_EQ(Evaluated("lnlog(100)"), "ln2");
}

TEST(EvaluateFormula, ReadsAnEmptyOperandAsZero) {
  EXPECT_EQ(Evaluated("*3"), "0");
  EXPECT_EQ(Evaluated("3*"), "0");
  EXPECT_EQ(Evaluated("3+"), "3");
}

TEST(EvaluateFormula, ReadsPlusMinusAsMinusWhereNothingElseHelps) {
  EXPECT_EQ(Evaluated("2+-3"), "-1");
  EXPECT_EQ(Evaluated("1+2-3"), "0");
  EXPECT_EQ(Evaluated("1+(2-3)"), "0");
  EXPECT_EQ(Evaluated("7+-3"), "4");
  EXPECT_EQ(Evaluated("+-3"), "-3");
  EXPECT_EQ(Evaluated("2+-3.50-4"), "-5.5");
  EXPECT_EQ(Evaluated("2+-1e+20"), "-1e+20");
}

TEST(EvaluateFormula, KeepsTheSignOfAZeroProduct) {
  EXPECT_EQ(Evaluated("5-0*3"), "5");
  EXPECT_EQ(Evaluated("0*-3"), "-0");
  EXPECT_EQ(Evaluated("5-2mod2"), "50");
}

TEST(EvaluateFormula, FollowsTheStepsWhereArithmeticDiffers) {
  EXPECT_EQ(Evaluated("-(-3)"), "-3");
  EXPECT_EQ(Evaluated("3 * -2"), "-2");
}

TEST(EvaluateFormula, TreatsWhatIsNoFormulaAsText) {
  EXPECT_EQ(Evaluated(""), "");
  EXPECT_EQ(Evaluated("abc"), "abc");
  EXPECT_EQ(Evaluated("{rate}"), "{rate}");
  EXPECT_EQ(Evaluated("{depth}"), "{de+th}");  // looks like an encoded exponent
  EXPECT_EQ(Evaluated("{depth}+1"), "1");
}

TEST(EvaluateFormula, TakesAllAheadOfABracketThatWasNeverOpened) {
  EXPECT_EQ(Evaluated("1+2)*3"), "9");
}

TEST(EvaluateFormula, LowersLettersOfAnyLanguage) {
  EXPECT_EQ(Evaluated("ГЛУБИНА"), "глубина");
  EXPECT_EQ(Evaluated("2*3+ГЛУБИНА"), "6");
}

TEST(EvaluateFormula, RunsOnePassMoreThanBrackets) {
  std::vector<Parameter> additional(2);
  std::string text = "(1+2)*(3+4)";
  EvaluateFormula(text, 0, additional, 1);
  EXPECT_EQ(text, "3*(3+4)");
  EvaluateFormula(text, 1, additional, 1);
  EXPECT_EQ(text, "21");
}

TEST(EvaluateFormula, CountsEveryCallAsASampleOfTheStatistics) {
  std::vector<Parameter> additional(2);
  const auto evaluate = [&](std::string text) {
    EvaluateFormula(text, 1, additional, 1);
    return text;
  };
  EXPECT_EQ(evaluate("avg(4)"), "4");
  EXPECT_EQ(evaluate("avg(1)"), "2.5");
  EXPECT_EQ(evaluate("avg(1)*10"), "20");
  EXPECT_EQ(additional[1].AverageCount, 3);
}

TEST(EvaluateFormula, FeedsBothUsesOfAStatisticIntoOneState) {
  EXPECT_EQ(Evaluated("avg(2)+avg(4)"), "5");
}

/// Numbers as they come to stand in formulas: signs, points, exponents, more digits than are written back.
std::string AnyNumber(std::mt19937& random) {
  const double magnitude = std::ldexp(static_cast<double>(random()), static_cast<int>(random() % 80) - 60);
  std::string text = random() % 8 == 0 ? "12.34567890123456789" : NumberText(magnitude);
  if (random() % 3 == 0) text = std::to_string(random() % 20);
  return random() % 3 == 0 ? '-' + text : text;
}

TEST(EvaluateFormula, WorksOffOneOperationAlikeAloneBesideBlanksAndInBrackets) {
  std::mt19937 random(20261122);
  for (int i = 0; i < 5'000; ++i) {
    const std::string left = AnyNumber(random);
    const std::string right = AnyNumber(random);
    for (const char* const name : {"/", "*", "-", "+"}) {
      std::string alone = left + name + right;
      std::string apart = left + ' ' + name + right + ' ';
      if (right == "0" || right == "-0") continue;  // an error where it divides
      alone = Evaluated(alone);
      EXPECT_EQ(alone, Evaluated(apart)) << apart;
      // Brackets hand on the text of a result, and nothing is added to it.
      EXPECT_EQ(Evaluated('(' + left + name + right + ')'), alone) << left << name << right;
    }
  }
}

TEST(EvaluateFormula, RaisesTheErrorsOfItsOperations) {
  const auto raised = [](const std::string& formula) {
    std::vector<Parameter> additional(2);
    const auto brackets = static_cast<int>(std::count(formula.begin(), formula.end(), ')'));
    std::string text = formula;
    const auto number = test::Raised([&] { EvaluateFormula(text, brackets, additional, 1); });
    text = formula;
    EXPECT_EQ(test::Raised([&] { FormulaValue(text, brackets, additional, 1); }), number) << formula;
    return number;
  };
  EXPECT_EQ(raised("1/0"), ErrorNumber::DivisionByZero);
  EXPECT_EQ(raised("1/(2-2)"), ErrorNumber::DivisionByZero);
  EXPECT_EQ(raised("5mod0.4"), ErrorNumber::DivisionByZero);
  EXPECT_EQ(raised("ln(0)"), ErrorNumber::InvalidArgument);
  EXPECT_EQ(raised("log(-1)"), ErrorNumber::InvalidArgument);
  EXPECT_EQ(raised("exp(1000)"), ErrorNumber::Overflow);
  EXPECT_EQ(raised("3000000000\\2"), ErrorNumber::Overflow);
  EXPECT_EQ(raised("1e+999*1"), ErrorNumber::Overflow);
}

}  // namespace
}  // namespace velk
