#include "settings/curve_properties.h"

#include <gtest/gtest.h>

#include "model/texts.h"

namespace velk {
namespace {

CurveProperties Sound() {
  return {.name = "Pressure", .units = "bar", .min = 0, .max = 100, .hasAlarms = true};
}

CurveProperties Taken(const PropertyTexts& texts) {
  const auto result = WithTexts(Sound(), texts);
  EXPECT_TRUE(std::holds_alternative<CurveProperties>(result));
  return std::get<CurveProperties>(result);
}

TEST(CurveProperties, TakeNumbersWithAPointOrAComma) {
  const CurveProperties taken = Taken({"-2,5", "12.5 bar", "None", "11"});
  EXPECT_EQ(taken.min, -2.5);
  EXPECT_EQ(taken.max, 12.5);
  EXPECT_EQ(taken.loweralarm, "None");
  EXPECT_EQ(taken.upperalarm, "11");
}

TEST(CurveProperties, TakeAnAlarmThatIsNoNumberForNone) {
  for (const char* alarm : {"", "abc", "12 bar", "None", "off"})
    EXPECT_EQ(Taken({"0", "1", alarm, "0,5"}).loweralarm, "None") << alarm;
  EXPECT_EQ(Taken({"0", "1", "0,50", ""}).loweralarm, "0.5");
}

TEST(CurveProperties, KeepTheDigitsOfNumbersThatNobodyTouched) {
  CurveProperties properties = Sound();
  properties.min = 0.1 + 0.2;
  const auto result = WithTexts(properties, TextsOf(properties));
  EXPECT_EQ(std::get<CurveProperties>(result).min, 0.1 + 0.2);
}

TEST(CurveProperties, RefuseAMinimumThatIsNotBelowTheMaximum) {
  for (const char* minimum : {"100", "101"}) {
    const auto result = WithTexts(Sound(), {minimum, "100", "", ""});
    ASSERT_TRUE(std::holds_alternative<PropertyFault>(result));
    EXPECT_EQ(std::get<PropertyFault>(result).text, text::MinimumNotBelow);
  }
}

TEST(CurveProperties, RefuseANumberThatCanBeReadInTwoWays) {
  const PropertyTexts sound{"0", "1", "", ""};
  for (auto field :
       {&PropertyTexts::minimum, &PropertyTexts::maximum, &PropertyTexts::loweralarm, &PropertyTexts::upperalarm}) {
    PropertyTexts texts = sound;
    texts.*field = "1,234.5";
    const auto result = WithTexts(Sound(), texts);
    ASSERT_TRUE(std::holds_alternative<PropertyFault>(result));
    EXPECT_EQ(std::get<PropertyFault>(result).text, text::NumberUnclear);
    EXPECT_EQ(std::get<PropertyFault>(result).field, field);
  }
}

TEST(CurveProperties, LeaveAlarmsThatAreNotEditedAsTheyAre) {
  CurveProperties properties = Sound();
  properties.hasAlarms = false;
  properties.loweralarm = "1 234";  // what another program has stored
  properties.upperalarm = "off";
  const auto result = WithTexts(properties, TextsOf(properties));
  ASSERT_TRUE(std::holds_alternative<CurveProperties>(result));
  EXPECT_EQ(std::get<CurveProperties>(result).loweralarm, "1 234");
  EXPECT_EQ(std::get<CurveProperties>(result).upperalarm, "off");
}

TEST(CurveProperties, ComeFromTheWorkingSetAndGoBackThere) {
  Session session;
  session.AcquisitionMode = true;
  session.NumberOfParameters = 2;
  session.SmoothValue[2] = 4;
  session.CurrentParameters[2].Gain = 3;
  CurveProperties properties = PropertiesOf(session, 2);
  EXPECT_EQ(properties.smoothing, 4);
  EXPECT_TRUE(properties.hasAlarms);
  properties = {.name = "Flow",
                .units = "l/min",
                .min = 1,
                .max = 9,
                .format = "#0",
                .color = 0xFF,
                .Wrapping = true,
                .smoothing = 10,
                .loweralarm = "2",
                .upperalarm = "8",
                .hasAlarms = true};
  StoreProperties(session, 2, properties);
  const Parameter& stored = session.CurrentParameters[2];
  EXPECT_EQ(stored.name, "Flow");
  EXPECT_EQ(stored.units, "l/min");
  EXPECT_EQ(stored.min, 1);
  EXPECT_EQ(stored.max, 9);
  EXPECT_EQ(stored.format, "#0");
  EXPECT_EQ(stored.color, 0xFF);
  EXPECT_TRUE(stored.Wrapping);
  EXPECT_EQ(session.SmoothValue[2], 10);
  EXPECT_EQ(stored.loweralarm, "2");
  EXPECT_EQ(stored.upperalarm, "8");
  EXPECT_EQ(stored.Gain, 3);
}

TEST(CurveProperties, LeaveTheAlarmsOutsideOfAcquisition) {
  Session session;
  session.CurrentParameters[1].loweralarm = "5";
  CurveProperties properties = PropertiesOf(session, 1);
  EXPECT_FALSE(properties.hasAlarms);
  properties.loweralarm = "7";
  StoreProperties(session, 1, properties);
  EXPECT_EQ(session.CurrentParameters[1].loweralarm, "5");
}

TEST(CurveProperties, LeaveTheSmoothingOfTheUnitWhereAFileIsShown) {
  Session session;
  session.NumberOfParameters = session.PlaybackParameterCount = 2;
  session.SmoothValue[2] = 4;
  CurveProperties properties = PropertiesOf(session, 2);
  EXPECT_FALSE(properties.hasSmoothing);
  properties.smoothing = 9;
  StoreProperties(session, 2, properties);
  EXPECT_EQ(session.SmoothValue[2], 4);
}

TEST(CurveProperties, HaveNoSmoothingOfAComputedChannel) {
  Session session;
  session.NumberOfParameters = 2;
  EXPECT_TRUE(PropertiesOf(session, 2).hasSmoothing);
  EXPECT_FALSE(PropertiesOf(session, 3).hasSmoothing);
}

}  // namespace
}  // namespace velk
