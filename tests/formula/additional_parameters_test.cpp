#include "formula/additional_parameters.h"

#include <gtest/gtest.h>

#include "base/errors.h"
#include "support/raises.h"
#include "support/scripted_dialogs.h"

namespace velk {
namespace {

class AdditionalParameters : public testing::Test {
 protected:
  AdditionalParameters() {
    session_.NumberOfParameters = 2;
    session_.TotalParameters = 2;
    session_.CurrentParameters[1].name = "Depth";
    session_.CurrentParameters[2].name = "Rate";
    session_.CurrentValue[1] = 6;
    session_.CurrentValue[2] = -4;
  }

  bool Add(const std::string& text) { return ReadFormulae(session_, {dialogs_, test::English(), {}}, text); }
  const Parameter& Additional(int index) const { return session_.AdditionalParameters[index]; }

  Gate gate_;
  test::ScriptedDialogs dialogs_{gate_};
  Session session_;
};

TEST_F(AdditionalParameters, AreAddedBehindTheInputs) {
  EXPECT_TRUE(Add("{depth}*2"));
  EXPECT_EQ(session_.NumberOfFormulae, 1);
  EXPECT_EQ(session_.TotalParameters, 3);
  ASSERT_EQ(session_.Formula.size(), 2U);
  EXPECT_EQ(session_.Formula[1], "{depth}*2");
  ASSERT_EQ(session_.AdditionalParameters.size(), 2U);
  EXPECT_EQ(session_.CurrentParameters[3].name, Additional(1).name);
  EXPECT_EQ(session_.CurrentParameters[3].FormIndex, 3);
}

TEST_F(AdditionalParameters, GetTheirFirstFields) {
  Add("{depth}*2");
  const Parameter& channel = Additional(1);
  EXPECT_EQ(channel.name, "Additional Parameter 1");
  EXPECT_EQ(channel.units, "Units");
  EXPECT_EQ(channel.min, 0);
  EXPECT_EQ(channel.max, 100);
  EXPECT_EQ(channel.color, 0);
  EXPECT_EQ(channel.format, "#0.0000");
  EXPECT_EQ(channel.FormIndex, 3);
  EXPECT_TRUE(channel.GraphVisible);
  EXPECT_EQ(channel.loweralarm, "None");
  EXPECT_EQ(channel.upperalarm, "None");
  EXPECT_EQ(channel.Gain, 1);
  EXPECT_EQ(channel.Offset, 0);
  EXPECT_TRUE(channel.Wrapping);
}

TEST_F(AdditionalParameters, AreNumberedAndKeepEarlierOnes) {
  Add("{depth}");
  session_.AdditionalParameters[1].name = "Renamed";
  Add("{rate}");
  EXPECT_EQ(Additional(1).name, "Renamed");
  EXPECT_EQ(session_.Formula[1], "{depth}");
  EXPECT_EQ(Additional(2).name, "Additional Parameter 2");
  EXPECT_EQ(Additional(2).FormIndex, 4);
  EXPECT_EQ(session_.CurrentParameters[4].name, "Additional Parameter 2");
}

TEST_F(AdditionalParameters, PrepareTheStatisticAtTheFrontOfTheText) {
  Add("avg({depth})");
  Add("MAX({depth})");
  Add("min({depth})");
  EXPECT_EQ(Additional(1).AverageCount, 0);
  EXPECT_EQ(Additional(1).AverageSum, 0);
  EXPECT_EQ(Additional(2).RunningMaximum, -99999999);
  EXPECT_EQ(Additional(3).RunningMinimum, 99999999);
  EXPECT_EQ(session_.CurrentParameters[4].RunningMaximum, -99999999);
}

TEST_F(AdditionalParameters, LeaveAStatisticFurtherInAtZero) {
  Add("sin(1)+max({rate})");
  EXPECT_EQ(Additional(1).RunningMaximum, 0);
  Add("1*min({depth})");
  EXPECT_EQ(ValueOf(session_, 2), 0);
}

TEST_F(AdditionalParameters, AreRefusedForANameThatDoesNotExist) {
  dialogs_.Expect("Formula Error, Parameter {gone} does not exist", Answer::Ok);
  EXPECT_FALSE(Add("{depth}+{gone}+{lost}"));
  ASSERT_EQ(dialogs_.shown.size(), 1U);
  EXPECT_EQ(dialogs_.shown[0].text, "Formula Error, Parameter {gone} does not exist");
  EXPECT_EQ(dialogs_.shown[0].icon, BoxIcon::Critical);
  EXPECT_EQ(session_.NumberOfFormulae, 0);
  EXPECT_EQ(session_.TotalParameters, 2);
  EXPECT_EQ(session_.Formula.size(), 1U);
  EXPECT_EQ(session_.AdditionalParameters.size(), 1U);
}

TEST_F(AdditionalParameters, FindNamesThatHoldCapitals) {
  EXPECT_TRUE(Add("{depth}-{rate}"));
}

TEST_F(AdditionalParameters, MayReferToEachOther) {
  Add("{depth}*2");
  EXPECT_TRUE(Add("{additional parameter 1}+1"));
}

TEST_F(AdditionalParameters, EndAt64Channels) {
  session_.TotalParameters = 64;
  EXPECT_EQ(test::Raised([this] { Add("1"); }), ErrorNumber::SubscriptOutOfRange);
  EXPECT_EQ(session_.NumberOfFormulae, 0);
  EXPECT_EQ(session_.TotalParameters, 64);
  EXPECT_EQ(session_.Formula.size(), 1U);
}

TEST_F(AdditionalParameters, HaveARunningStateEach) {
  Add("avg({depth})");
  Add("avg({depth})");
  EXPECT_EQ(ValueOf(session_, 1), 6);
  session_.CurrentValue[1] = 10;
  EXPECT_EQ(ValueOf(session_, 1), 8);
  EXPECT_EQ(ValueOf(session_, 2), 10);
}

TEST_F(AdditionalParameters, KeepExtremesFromTheirPreparedStart) {
  Add("max({rate})");
  EXPECT_EQ(ValueOf(session_, 1), -4);
  session_.CurrentValue[2] = -9;
  EXPECT_EQ(ValueOf(session_, 1), -4);
}

TEST_F(AdditionalParameters, HaveTheValueOfTheirFormula) {
  Add("({depth}+{rate})*2");
  EXPECT_EQ(ValueOf(session_, 1), 4);
  session_.CurrentValue[2] = 0.25F;
  EXPECT_EQ(ValueOf(session_, 1), 12.5F);
}

TEST_F(AdditionalParameters, ReadWhatIsLeftWhenAChannelIsRenamed) {
  Add("2+{depth}");
  session_.CurrentParameters[1].name = "Level";
  EXPECT_EQ(ValueOf(session_, 1), 2);
}

TEST_F(AdditionalParameters, NameTheChannelInTheirErrors) {
  Add("{depth}/({rate}+4)");
  try {
    ValueOf(session_, 1);
    FAIL() << "nothing was raised";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), ErrorNumber::DivisionByZero);
    EXPECT_STREQ(error.what(), "Additional Parameter 1: Division by zero");
  }
}

TEST_F(AdditionalParameters, RaiseOverflowBeyondThe32BitRange) {
  Add("1e+39");
  Add("1e+999");
  Add("-1e+38*4");
  Add("1e+38*3");
  for (const int index : {1, 2, 3}) {
    EXPECT_EQ(test::Raised([&] { ValueOf(session_, index); }), ErrorNumber::Overflow) << index;
  }
  EXPECT_EQ(ValueOf(session_, 4), 3e38F);
}

TEST_F(AdditionalParameters, MoveUpWhenOneIsRemoved) {
  Add("1");
  Add("2");
  Add("3");
  for (int i = 3; i <= 5; ++i) {
    session_.CurrentValue[i] = static_cast<float>(i);
    session_.PreviousValue[i] = static_cast<float>(10 * i);
  }
  session_.AlarmTriggered[5] = true;
  RemoveAdditional(session_, 2);
  EXPECT_EQ(session_.NumberOfFormulae, 2);
  EXPECT_EQ(session_.TotalParameters, 4);
  EXPECT_EQ(session_.Formula, (std::vector<std::string>{"", "1", "3"}));
  ASSERT_EQ(session_.AdditionalParameters.size(), 3U);
  EXPECT_EQ(Additional(2).name, "Additional Parameter 3");
  EXPECT_EQ(session_.CurrentParameters[3].name, "Additional Parameter 1");
  EXPECT_EQ(session_.CurrentParameters[4].name, "Additional Parameter 3");
  EXPECT_EQ(session_.CurrentParameters[5].name, "");
  EXPECT_EQ(session_.CurrentValue[4], 5);
  EXPECT_EQ(session_.CurrentValue[5], 0);
  EXPECT_EQ(session_.PreviousValue[4], 50);
  EXPECT_TRUE(session_.AlarmTriggered[4]);
  EXPECT_FALSE(session_.AlarmTriggered[5]);
}

TEST_F(AdditionalParameters, CanAllBeRemoved) {
  Add("1");
  RemoveAdditional(session_, 1);
  EXPECT_EQ(session_.NumberOfFormulae, 0);
  EXPECT_EQ(session_.TotalParameters, 2);
  EXPECT_EQ(session_.CurrentParameters[2].name, "Rate");
  EXPECT_TRUE(Add("{depth}"));
  EXPECT_EQ(Additional(1).name, "Additional Parameter 1");
}

TEST_F(AdditionalParameters, CanOnlyBeRemovedWhereTheyAre) {
  Add("1");
  for (const int index : {0, 2, -1}) {
    EXPECT_EQ(test::Raised([&] { RemoveAdditional(session_, index); }), ErrorNumber::SubscriptOutOfRange) << index;
  }
  EXPECT_EQ(session_.NumberOfFormulae, 1);
}

TEST_F(AdditionalParameters, AreComputedFromOtherValuesWithoutTouchingTheRunningStatistics) {
  Add("avg({depth})");
  session_.CurrentValue[1] = 10;
  EXPECT_EQ(ValueOf(session_, 1), 10);
  Session::PerParameter<float> values{};
  std::vector<Parameter> statistics(2);
  values[1] = 3;
  EXPECT_EQ(ValueOf(session_, values, statistics, 1), 3);
  values[1] = 5;
  EXPECT_EQ(ValueOf(session_, values, statistics, 1), 4);
  EXPECT_EQ(session_.CurrentValue[1], 10);
  EXPECT_EQ(Additional(1).AverageCount, 1);
  session_.CurrentValue[1] = 20;
  EXPECT_EQ(ValueOf(session_, 1), 15) << "the live average goes on from its own samples";
}

}  // namespace
}  // namespace velk
