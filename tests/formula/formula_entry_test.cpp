#include "formula/formula_entry.h"

#include <gtest/gtest.h>

#include "support/scripted_dialogs.h"

namespace velk {
namespace {

class FormulaEntry : public testing::Test {
 protected:
  FormulaEntry() {
    session_.NumberOfParameters = 2;
    session_.TotalParameters = 2;
    session_.CurrentParameters[1].name = "a";
    session_.CurrentParameters[2].name = "Pump Rate";
  }

  bool Add(const std::string& text) {
    putBack_ = "nothing";
    return AddFormula(session_, {dialogs_, test::English(), [this] { ++beeps_; }}, text,
                      [this](const std::string& back) { putBack_ = back; });
  }

  /// `inputs` channels of 64, and as many formulas as make them `total`.
  void Fill(int inputs, int total) {
    session_.NumberOfParameters = static_cast<std::int16_t>(inputs);
    session_.NumberOfFormulae = static_cast<std::int16_t>(total - inputs);
    session_.TotalParameters = static_cast<std::int16_t>(total);
    session_.AdditionalParameters.resize(total - inputs + 1);
    session_.Formula.resize(total - inputs + 1, "1");
  }

  Gate gate_;
  test::ScriptedDialogs dialogs_{gate_};
  Session session_;
  std::string putBack_;
  int beeps_ = 0;
};

TEST_F(FormulaEntry, AddsAChannelInLowerCase) {
  EXPECT_TRUE(Add("SIN({Pump RATE})+PI"));
  EXPECT_EQ(putBack_, "sin({pump rate})+pi");
  ASSERT_EQ(session_.NumberOfFormulae, 1);
  EXPECT_EQ(session_.Formula[1], "sin({pump rate})+pi");
  EXPECT_EQ(session_.TotalParameters, 3);
}

TEST_F(FormulaEntry, PutsBackAMissingBracket) {
  EXPECT_TRUE(Add("sin({a}"));
  EXPECT_EQ(putBack_, "sin({a})");
  EXPECT_EQ(session_.Formula[1], "sin({a})");
}

TEST_F(FormulaEntry, EndsAtWrongBracketsAndPutsNothingBack) {
  for (const char* text : {"SIN(2))", "((2", "2)"}) {
    dialogs_.Expect("number of left brackets does not match number of right brackets", Answer::Ok);
    EXPECT_FALSE(Add(text)) << text;
    EXPECT_EQ(putBack_, "nothing");
  }
  EXPECT_EQ(dialogs_.shown[0].title, "Formula Calculator");
  EXPECT_EQ(session_.NumberOfFormulae, 0);
  EXPECT_EQ(beeps_, 0);
}

TEST_F(FormulaEntry, EndsAtTextThatIsNoFormulaWithTheTextPutBack) {
  dialogs_.Expect("Error in formula, string foo is not valid string", Answer::Ok,
                  [this] { EXPECT_EQ(putBack_, "foo(2)"); });
  EXPECT_FALSE(Add("Foo(2"));
  EXPECT_EQ(beeps_, 1);
  EXPECT_EQ(session_.NumberOfFormulae, 0);
}

TEST_F(FormulaEntry, EndsAtAReferenceToNothing) {
  dialogs_.Expect("Formula Error, Parameter {torque} does not exist", Answer::Ok);
  EXPECT_FALSE(Add("{a}+{Torque}"));
  EXPECT_EQ(session_.NumberOfFormulae, 0);
  EXPECT_EQ(session_.TotalParameters, 2);
}

TEST_F(FormulaEntry, GivesTheSameStatisticTwiceAStateEach) {
  EXPECT_TRUE(Add("avg({a})"));
  EXPECT_TRUE(Add("avg({a})"));
  ASSERT_EQ(session_.NumberOfFormulae, 2);
  session_.AdditionalParameters[1].AverageCount = 5;
  EXPECT_EQ(session_.AdditionalParameters[2].AverageCount, 0);
}

TEST_F(FormulaEntry, DoesNotPrepareAStatisticFurtherIn) {
  EXPECT_TRUE(Add("sin(Max({a}))"));
  EXPECT_EQ(session_.AdditionalParameters[1].RunningMaximum, 0);
  EXPECT_TRUE(Add("Max({a})"));
  EXPECT_EQ(session_.AdditionalParameters[2].RunningMaximum, -99999999);
}

TEST_F(FormulaEntry, TellsThatThereIsNoRoomForTheSixtyFifthParameter) {
  Fill(2, 63);
  EXPECT_TRUE(Add("1"));
  EXPECT_EQ(session_.TotalParameters, 64);
  dialogs_.Expect("room for 64 parameters", Answer::Ok);
  EXPECT_FALSE(Add("1"));
  EXPECT_EQ(session_.TotalParameters, 64);
  EXPECT_EQ(session_.NumberOfFormulae, 62);
  EXPECT_EQ(session_.Formula.size(), 63U);
}

TEST_F(FormulaEntry, ShowsTheFormulaOfComputedChannelsOnly) {
  Add("{a}*2");
  session_.NumberOfFormulae = 2;
  session_.TotalParameters = 4;
  session_.Formula.emplace_back(kLinkedParameter);
  session_.AdditionalParameters.emplace_back();
  EXPECT_EQ(FormulaOf(session_, 1), "");
  EXPECT_EQ(FormulaOf(session_, 2), "");
  EXPECT_EQ(FormulaOf(session_, 3), "{a}*2");
  EXPECT_EQ(FormulaOf(session_, 4), "Linked Parameter");
  EXPECT_EQ(FormulaOf(session_, 5), "");
}

}  // namespace
}  // namespace velk
