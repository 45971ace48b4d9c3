#include "core/alarms.h"

#include <gtest/gtest.h>

#include "core/rig.h"

namespace velk {
namespace {

using test::Rig;
using Marks = std::vector<std::pair<int, AlarmSide>>;

Parameter Limits(const char* lower, const char* upper) {
  Parameter parameter;
  parameter.loweralarm = lower;
  parameter.upperalarm = upper;
  return parameter;
}

struct Case {
  const char* lower;
  const char* upper;
  float value;
  AlarmSide side;
};

TEST(AlarmLimits, AreStrictAndTestTheLowerOneFirst) {
  constexpr AlarmSide None = AlarmSide::None, Low = AlarmSide::Low, High = AlarmSide::High;
  const Case cases[] = {
      {"None", "None", 1e30f, None}, {"", "", -1e30f, None},        {"10", "None", 9.99f, Low},
      {"10", "None", 10, None},      {"None", "20", 20, None},      {"None", "20", 20.01f, High},
      {"10", "20", 15, None},        {"10", "20", 5, Low},          {"10", "20", 25, High},
      {"20", "10", 15, Low},  // limits the wrong way round: every value is out
      {"20", "10", 25, High},        {"20", "10", 5, Low},          {"-5", "5", -5, None},
      {"-5", "5", -5.001f, Low},     {"0.1", "None", 0.1f, None},  // the level is taken as a 32-bit float
      {"none", "None", -1, Low},                                   // no "None": reads as 0
      {"None", "high", 0.5f, High},  {"None", "high", 0, None},     {"None", "high", -1, None},
      {"None", "12psi", 13, High},   {"None", "1e50", 3e38f, None},
  };
  for (const Case& c : cases)
    EXPECT_EQ(SideOutOfLimits(Limits(c.lower, c.upper), c.value), c.side)
        << "lower " << c.lower << " upper " << c.upper << " value " << c.value;
}

class Alarms : public testing::Test {
 protected:
  Rig rig;
  test::FakeGraphWindow& graph1 = rig.graphs.windows[1];
};

TEST_F(Alarms, ShowTheLabelTheIndicatorAndBeepOncePerParameterAndSample) {
  rig.session.Parameters[1].upperalarm = "50";
  rig.session.Parameters[2].upperalarm = "50";
  rig.ConnectAndStart();
  rig.Sample(60, 70, 10);
  EXPECT_TRUE(rig.session.AlarmTriggered[1]);
  EXPECT_TRUE(rig.session.AlarmTriggered[2]);
  EXPECT_FALSE(rig.session.AlarmTriggered[3]);
  EXPECT_EQ(rig.view.beeps, 2);
  EXPECT_EQ(graph1.alarms, (Marks{{1, AlarmSide::High}, {2, AlarmSide::High}}));
  EXPECT_TRUE(rig.view.buttonVisible["Alarms"]);
  EXPECT_TRUE(rig.view.buttonEnabled["Alarms"]);
  EXPECT_TRUE(rig.view.buttonVisible["Command1"]);
  rig.Sample(60, 10, 10);
  EXPECT_EQ(rig.view.beeps, 3);
  EXPECT_TRUE(rig.view.buttonVisible["Alarms"]);
}

TEST_F(Alarms, GoAwayWithTheLatestSample) {
  rig.session.Parameters[1].loweralarm = "5";
  rig.ConnectAndStart();
  rig.Sample(1, 2, 3);
  EXPECT_TRUE(rig.view.buttonVisible["Command1"]);
  rig.Sample(6, 2, 3);
  EXPECT_FALSE(rig.session.AlarmTriggered[1]);
  EXPECT_FALSE(rig.view.buttonVisible["Command1"]);
  EXPECT_FALSE(rig.view.buttonVisible["Alarms"]);
  EXPECT_EQ(graph1.alarms, (Marks{{1, AlarmSide::Low}, {1, AlarmSide::None}}));
}

TEST_F(Alarms, AreNotTestedOnAnInsignificantSample) {
  rig.session.Parameters[1].upperalarm = "50";
  rig.ConnectAndStart();
  rig.Sample(45, 2, 3);
  rig.clock.Advance(100);
  rig.road.ProcessLine(rig.Line(55, 2, 3));
  EXPECT_FALSE(rig.session.AlarmTriggered[1]);
  EXPECT_EQ(rig.view.beeps, 0);
}

TEST_F(Alarms, OfAHiddenParameterKeepTheirLastStateAndHoldTheIndicatorUp) {
  rig.session.Parameters[1].upperalarm = "50";
  rig.ConnectAndStart();
  rig.Sample(60, 2, 3);
  rig.session.CurrentParameters[1].GraphVisible = false;
  rig.Sample(1, 2, 3);
  EXPECT_TRUE(rig.session.AlarmTriggered[1]);
  EXPECT_TRUE(rig.view.buttonVisible["Alarms"]);
}

TEST_F(Alarms, OfAnEarlierJobAreGoneAtConnectThoseOfChannelsThatItHadMoreOfToo) {
  rig.session.Parameters[1].upperalarm = "50";
  rig.ConnectAndStart();
  rig.Sample(60, 2, 3);
  rig.session.AlarmTriggered[40] = true;  // of a job with more channels
  rig.acquisition.mnuAcquireStop_Click();
  for (int i = 1; i <= kMaxParameters; ++i) EXPECT_FALSE(rig.session.AlarmTriggered[i]) << i;
  EXPECT_FALSE(rig.view.buttonVisible["Alarms"]);
  EXPECT_FALSE(rig.view.buttonVisible["Command1"]);
  rig.session.AlarmTriggered[2] = rig.session.AlarmTriggered[40] = true;
  rig.Connect();
  for (int i = 1; i <= kMaxParameters; ++i) EXPECT_FALSE(rig.session.AlarmTriggered[i]) << i;
}

}  // namespace
}  // namespace velk
