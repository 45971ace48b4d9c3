#include "graphs/curve_entry.h"

#include <gtest/gtest.h>

#include "support/scripted_dialogs.h"

namespace velk {
namespace {

class CurveEntry : public testing::Test {
 protected:
  CurveEntry() {
    curve.name = "Pressure";
    curve.units = "bar";
    curve.min = 10;
    curve.max = 100;
  }

  Gate gate;
  test::ScriptedDialogs dialogs{gate};
  Parameter curve;
};

TEST_F(CurveEntry, TakesAnotherMinimum) {
  dialogs.ExpectInput("Enter new minimum value", "-2,5");
  const auto edited = AskMinimum(dialogs, curve);
  ASSERT_TRUE(edited);
  EXPECT_EQ(edited->min, -2.5);
  EXPECT_EQ(dialogs.inputTitles.back(), "Graph Scales");
}

TEST_F(CurveEntry, RefusesAMinimumThatIsNotBelowTheMaximum) {
  for (const char* minimum : {"100", "101"}) {
    dialogs.ExpectInput("Enter new minimum value", minimum);
    dialogs.Expect("Minimum scale must be less than maximum scale", Answer::Ok);
    EXPECT_FALSE(AskMinimum(dialogs, curve)) << minimum;
  }
}

TEST_F(CurveEntry, TakesAnotherMaximum) {
  dialogs.ExpectInput("Enter new maximum value", "250 bar");
  const auto edited = AskMaximum(dialogs, curve);
  ASSERT_TRUE(edited);
  EXPECT_EQ(edited->max, 250);
}

TEST_F(CurveEntry, RefusesAMaximumThatIsNotAboveTheMinimum) {
  for (const char* maximum : {"10", "9", "abc"}) {
    dialogs.ExpectInput("Enter new maximum value", maximum);
    dialogs.Expect("Maximum scale must be greater than minimum scale", Answer::Ok);
    EXPECT_FALSE(AskMaximum(dialogs, curve)) << maximum;
  }
}

TEST_F(CurveEntry, SaysWhereANumberIsTooLarge) {
  dialogs.ExpectInput("Enter new maximum value", "1e999");
  dialogs.Expect("This number is too large.", Answer::Ok);
  dialogs.ExpectInput("Enter new maximum value", std::nullopt);
  EXPECT_FALSE(AskMaximum(dialogs, curve));
}

TEST_F(CurveEntry, LeavesAScaleForWhichOnlyBlanksWereTyped) {
  dialogs.ExpectInput("Enter new minimum value", "  ");
  EXPECT_FALSE(AskMinimum(dialogs, curve));
}

TEST_F(CurveEntry, AsksAgainForANumberThatCanBeReadInTwoWays) {
  dialogs.ExpectInput("Enter new maximum value", "1,234.5");
  dialogs.Expect("This number can be read in two ways", Answer::Ok);
  dialogs.ExpectInput("Enter new maximum value", "1234.5");
  EXPECT_EQ(AskMaximum(dialogs, curve)->max, 1234.5);
}

TEST_F(CurveEntry, ChangesNothingForAnEmptyAnswer) {
  using Answers = std::vector<std::optional<std::string>>;
  for (const std::optional<std::string>& answer : Answers{"", "   ", std::nullopt}) {
    dialogs.ExpectInput("Enter new minimum value", answer);
    EXPECT_FALSE(AskMinimum(dialogs, curve));
    dialogs.ExpectInput("Enter new maximum value", answer);
    EXPECT_FALSE(AskMaximum(dialogs, curve));
    dialogs.ExpectInput("Enter parameter name", answer);
    EXPECT_FALSE(AskName(dialogs, curve));
    dialogs.ExpectInput("Enter parameter units", answer);
    EXPECT_FALSE(AskUnits(dialogs, curve));
  }
}

TEST_F(CurveEntry, TakesNameUnitsColourAndFormat) {
  dialogs.ExpectInput("Enter parameter name", "Pump");
  EXPECT_EQ(AskName(dialogs, curve)->name, "Pump");
  EXPECT_EQ(dialogs.inputTitles.back(), "VELK Graphs");
  dialogs.ExpectInput("Enter parameter units", "kPa");
  EXPECT_EQ(AskUnits(dialogs, curve)->units, "kPa");
  EXPECT_EQ(dialogs.inputTitles.back(), "VELK Graphs");
  dialogs.ExpectColour("Select a color for Pressure", 0x123456);
  EXPECT_EQ(AskCurveColour(dialogs, curve)->color, 0x123456);
  dialogs.ExpectChoice("Number Format", "1.23456E+01");
  EXPECT_EQ(AskFormat(dialogs, curve)->format, "0.00e+00");
  EXPECT_EQ(dialogs.listsAsked.back().prompt, "Select Number Format");
}

TEST_F(CurveEntry, TakesNameAndUnitsOnOneLine) {
  dialogs.ExpectInput("Enter parameter name", "Flow\r\nrate");  // as a cell of a spreadsheet gives it
  EXPECT_EQ(AskName(dialogs, curve)->name, "Flow rate");
  dialogs.ExpectInput("Enter parameter units", "l\n");
  EXPECT_EQ(AskUnits(dialogs, curve)->units, "l ");
  dialogs.ExpectInput("Enter parameter name", "\n");
  EXPECT_FALSE(AskName(dialogs, curve));
}

TEST_F(CurveEntry, LeavesColourAndFormatOnCancel) {
  dialogs.ExpectColour("Pressure", std::nullopt);
  EXPECT_FALSE(AskCurveColour(dialogs, curve));
  dialogs.ExpectChoice("Number Format", std::nullopt);
  EXPECT_FALSE(AskFormat(dialogs, curve));
}

}  // namespace
}  // namespace velk
