#include "core/alarms.h"

#include <gtest/gtest.h>

#include "core/rig.h"

namespace velk {
namespace {

using test::Rig;

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
  bool alarm;
};

TEST(AlarmLimits, AreStrictAndTestTheLowerOneFirst) {
  const Case cases[] = {
      {"None", "None", 1e30f, false}, {"", "", -1e30f, false},        {"10", "None", 9.99f, true},
      {"10", "None", 10, false},      {"None", "20", 20, false},      {"None", "20", 20.01f, true},
      {"10", "20", 15, false},        {"10", "20", 5, true},          {"10", "20", 25, true},
      {"20", "10", 15, true},  // limits the wrong way round: every value is out
      {"20", "10", 25, true},         {"20", "10", 5, true},          {"-5", "5", -5, false},
      {"-5", "5", -5.001f, true},     {"0.1", "None", 0.1f, false},  // the level is taken as a 32-bit float
      {"none", "None", -1, true},                                    // no "None": reads as 0
      {"None", "high", 0.5f, true},   {"None", "high", 0, false},     {"None", "high", -1, false},
      {"None", "12psi", 13, true},    {"None", "1e50", 3e38f, false},
  };
  for (const Case& c : cases)
    EXPECT_EQ(IsOutOfLimits(Limits(c.lower, c.upper), c.value), c.alarm)
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
  EXPECT_EQ(graph1.alarms, (std::vector<std::pair<int, bool>>{{1, true}, {2, true}}));
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
  EXPECT_EQ(graph1.alarms, (std::vector<std::pair<int, bool>>{{1, true}, {1, false}}));
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

}  // namespace
}  // namespace velk
