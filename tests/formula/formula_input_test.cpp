#include "formula/formula_input.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

namespace velk {

static bool operator==(const FormulaInput& a, const FormulaInput& b) {
  return a.text == b.text && a.cursor == b.cursor;
}

static void PrintTo(const FormulaInput& input, std::ostream* out) {
  *out << "\"" << input.text << "\" cursor " << input.cursor;
}

namespace {

struct Row {
  FormulaInput before;
  const char* pressed;
  FormulaInput after;
};

void ExpectRows(void (*press)(FormulaInput&, std::string_view), const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    FormulaInput input = row.before;
    press(input, row.pressed);
    EXPECT_EQ(input, row.after) << "\"" << row.before.text << "\" cursor " << row.before.cursor << ", " << row.pressed;
  }
}

TEST(FormulaInput, TakesDigitsAtTheCursorAndTheCursorMovesBehindThem) {
  ExpectRows(InsertText, {
                             {{"", 0}, "7", {"7", 1}},
                             {{"12", 1}, "9", {"192", 2}},
                             {{"12", 2}, ".", {"12.", 3}},
                             {{"{уровень}", 8}, "5", {"{уровень5}", 9}},
                         });
}

TEST(FormulaInput, AppendsAtTheEndWhileTheCursorStandsAtTheFront) {
  ExpectRows(InsertText, {
                             {{"12", 0}, "9", {"129", 3}},
                             {{"{уровень}*", 0}, ".", {"{уровень}*.", 11}},
                         });
  ExpectRows(InsertOperator, {{{"12", 0}, "mod", {"12mod", 5}}});
  ExpectRows(InsertReference, {{{"2*", 0}, "Rate", {"2*{Rate}", 8}}});
  FormulaInput input{"2*", 0};
  EXPECT_TRUE(InsertFunction(input, "sin"));
  EXPECT_EQ(input, (FormulaInput{"2*sin()", 6}));
}

TEST(FormulaInput, TakesACursorBeyondTheEndAsTheEnd) {
  ExpectRows(InsertText, {{{"12", 9}, "3", {"123", 3}}});
}

TEST(FormulaInput, TakesEachOperatorAsItsCaption) {
  for (const char* caption : {"^", "/", "*", "\\", "mod", "-", "+"}) {
    FormulaInput input{"12", 1};
    InsertOperator(input, caption);
    EXPECT_EQ(input, (FormulaInput{"1" + std::string(caption) + "2", 1 + std::string(caption).size()}));
  }
}

TEST(FormulaInput, GivesAMinusBehindAnOperatorABracketOfItsOwn) {
  ExpectRows(InsertOperator, {
                                 {{"2^", 2}, "-", {"2^(-", 4}},
                                 {{"2/", 2}, "-", {"2/(-", 4}},
                                 {{"2*", 2}, "-", {"2*(-", 4}},
                                 {{"2\\", 2}, "-", {"2\\(-", 4}},
                                 {{"2-", 2}, "-", {"2-(-", 4}},
                                 {{"2+", 2}, "-", {"2+(-", 4}},
                                 {{"{ж}*3", 4}, "-", {"{ж}*(-3", 6}},
                             });
}

TEST(FormulaInput, LeavesAMinusElsewhereAsItIs) {
  ExpectRows(InsertOperator, {
                                 {{"", 0}, "-", {"-", 1}},
                                 {{"2", 1}, "-", {"2-", 2}},
                                 {{"(", 1}, "-", {"(-", 2}},
                                 {{"2*3", 3}, "-", {"2*3-", 4}},
                                 // The one character ahead of the cursor is no operator: "mod" has three.
                                 {{"5mod", 4}, "-", {"5mod-", 5}},
                                 // A cursor at the front has nothing ahead of it, wherever the minus goes.
                                 {{"2*", 0}, "-", {"2*-", 3}},
                             });
}

TEST(FormulaInput, GivesNoOtherOperatorABracket) {
  ExpectRows(InsertOperator, {{{"2*", 2}, "+", {"2*+", 3}}, {{"2*", 2}, "*", {"2**", 3}}});
}

TEST(FormulaInput, PutsTheCursorBetweenTheBracketsOfAFunction) {
  for (const char* name : {"ln", "log", "sin", "cos", "tan", "exp", "Avg", "Max", "Min"}) {
    FormulaInput input{"2+3", 2};
    EXPECT_TRUE(InsertFunction(input, name));
    const std::string function = name;
    EXPECT_EQ(input, (FormulaInput{"2+" + function + "()3", 2 + function.size() + 1}));
  }
}

TEST(FormulaInput, GivesPiNoBrackets) {
  FormulaInput input{"2*3", 2};
  EXPECT_TRUE(InsertFunction(input, "pi"));
  EXPECT_EQ(input, (FormulaInput{"2*pi3", 4}));
}

TEST(FormulaInput, RefusesEveryFunctionBehindAStatisticAtTheFront) {
  for (const char* text : {"max(", "Max(", "avg({a})", "AVG", "min(1", "maximum"})
    for (const char* name : {"Avg", "Max", "Min", "ln", "log", "sin", "cos", "tan", "exp", "pi"}) {
      FormulaInput input{text, 2};
      EXPECT_FALSE(InsertFunction(input, name)) << text << " " << name;
      EXPECT_EQ(input, (FormulaInput{text, 2}));
    }
}

TEST(FormulaInput, AllowsAStatisticFurtherInAndBehindIt) {
  FormulaInput input{"sin(", 4};
  EXPECT_TRUE(InsertFunction(input, "Max"));
  EXPECT_EQ(input, (FormulaInput{"sin(Max()", 8}));
  EXPECT_TRUE(InsertFunction(input, "ln"));
  EXPECT_EQ(input, (FormulaInput{"sin(Max(ln())", 11}));
  FormulaInput blank{" max(", 5};
  EXPECT_TRUE(InsertFunction(blank, "sin"));
}

TEST(FormulaInput, PutsTheCursorBehindAReference) {
  ExpectRows(InsertReference, {
                                  {{"", 0}, "Rate", {"{Rate}", 6}},
                                  {{"sin()", 4}, "Уровень", {"sin({Уровень})", 13}},
                              });
}

}  // namespace
}  // namespace velk
