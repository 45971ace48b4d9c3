#include "formula/plain_formula.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <span>
#include <string>
#include <vector>

#include "base/errors.h"
#include "base/numbers.h"
#include "formula/evaluator.h"
#include "formula/formula_items.h"
#include "formula/formula_tokens.h"
#include "formula/formula_value.h"

namespace velk {
namespace {

int Brackets(const std::string& text) {
  return static_cast<int>(std::count(text.begin(), text.end(), ')'));
}

std::optional<double> Plain(const std::string& text) {
  std::vector<Parameter> additional(2);
  return PlainFormulaValue(text, Brackets(text), additional, 1);
}

TEST(PlainFormula, IsWorkedOffByPriorityAndFromTheLeft) {
  EXPECT_EQ(Plain("1+2*3"), 7);
  EXPECT_EQ(Plain("(1+2)*3"), 9);
  EXPECT_EQ(Plain("2^3^2"), 64);
  EXPECT_EQ(Plain("2*8/2"), 8);
  EXPECT_EQ(Plain("log(100)*2"), 4);
}

TEST(PlainFormula, BindsSignsAsItsTextDoes) {
  EXPECT_EQ(Plain("5-2^2"), 9);
  EXPECT_EQ(Plain("5-2*-3"), 11);
  EXPECT_EQ(Plain("2+-3"), -1);
  EXPECT_EQ(Plain("1-2+3*4"), 11);
  EXPECT_EQ(Plain("-(-3)"), -3);
  EXPECT_EQ(Plain("3 * -2"), -2);
}

TEST(PlainFormula, KeepsFifteenDigitsOnTheWay) {
  EXPECT_EQ(Plain("(1/3)*3"), 0.999999999999999);
  EXPECT_EQ(Plain("1/3"), 0.333333333333333);
}

TEST(PlainFormula, IsLeftToItsTextWhereAZeroIsAppendedToANumber) {
  EXPECT_FALSE(Plain("5-2mod2"));
  EXPECT_FALSE(Plain("5-0*-3"));
  EXPECT_FALSE(Plain("2*( 5)-1"));  // the blank comes to stand outside
}

TEST(PlainFormula, LeavesTheStatisticsAloneWhereItsTextIsNeeded) {
  std::vector<Parameter> additional(2);
  EXPECT_FALSE(PlainFormulaValue("avg(4)+5-2mod2", 1, additional, 1));
  EXPECT_EQ(additional[1].AverageCount, 0);
  EXPECT_EQ(additional[1].AverageSum, 0);
  std::string text = "avg(4)+5-2mod2";
  EXPECT_EQ(FormulaValue(text, 1, additional, 1), 54);
  EXPECT_EQ(additional[1].AverageCount, 1);
}

/// What evaluating gives: a text, or an error, and the statistics behind it.
struct Outcome {
  std::string text;
  int error = 0;
  std::array<double, 4> statistics{};
};

template <class Evaluate>
Outcome OutcomeOf(std::string text, Evaluate evaluate) {
  std::vector<Parameter> additional(2);
  Outcome outcome;
  try {
    evaluate(text, Brackets(text), additional, 1);
    outcome.text = text;
  } catch (const RuntimeError& error) {
    outcome.error = static_cast<int>(error.Number());
  }
  const Parameter& channel = additional[1];
  outcome.statistics = {static_cast<double>(channel.AverageCount), channel.AverageSum, channel.RunningMaximum,
                        channel.RunningMinimum};
  return outcome;
}

class RandomFormulas {
 public:
  std::string Formula(int depth) {
    std::string text = OneOf({"", "", "", "-", "+"});
    for (std::size_t i = 0, terms = 1 + random_() % 4; i < terms; ++i) {
      if (i > 0)
        text += OneOf({"", "", "", " "}) + std::string(FormulaTokens[random_() % (kLastOperator + 1)]) +
                OneOf({"", "", "", " "});
      text += OneOf({"", "", "", "", "-", "+"});
      if (depth > 0 && random_() % 3 == 0) {
        if (random_() % 2) text += FormulaTokens[kFirstFunction + random_() % (kLastFunction - kFirstFunction + 1)];
        text += '(' + Formula(depth - 1) + ')';
      } else {
        text += Number();
      }
    }
    return text;
  }

 private:
  std::string OneOf(std::vector<std::string> texts) { return texts[random_() % texts.size()]; }

  std::string Number() {
    switch (random_() % 6) {
      case 0:
        return OneOf({"0", "0.0", "pi", "1e+3", "1E-05", "2.5e-1", ".5", "5.", "3.50", "12345678901234567890"});
      case 1:
        return NumberText(std::ldexp(static_cast<double>(random_()), static_cast<int>(random_() % 60) - 50));
      default:
        return std::to_string(random_() % 20);
    }
  }

  std::mt19937 random_{20261123};
};

TEST(PlainFormula, ComesToWhatTheRewritingOfItsTextComesTo) {
  RandomFormulas formulas;
  int plain = 0;
  for (int i = 0; i < 20'000; ++i) {
    const std::string formula = formulas.Formula(3);
    const Outcome rewritten = OutcomeOf(formula, EvaluateFormula);
    plain += rewritten.error == 0 && Plain(formula) ? 1 : 0;
    double value = 0;
    const Outcome valued =
        OutcomeOf(formula, [&](std::string& text, int brackets, std::span<Parameter> additional, int index) {
          value = FormulaValue(text, brackets, additional, index);
        });
    ASSERT_EQ(valued.error, rewritten.error) << formula;
    ASSERT_EQ(valued.statistics, rewritten.statistics) << formula;
    const double expected = Val(rewritten.text);
    ASSERT_TRUE(value == expected && std::signbit(value) == std::signbit(expected)) << formula;
  }
  EXPECT_GT(plain, 5'000);
}

}  // namespace
}  // namespace velk
