#include "wells/well_units.h"

#include <gtest/gtest.h>

#include "support/raises.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

WellUnits WithYards() {
  WellUnits units;
  // A yard is three feet: a third of one makes a foot.
  units.SetUser({1.0 / 3, "yd", "gon"});
  return units;
}

TEST(WellUnits, ConvertLengthsBetweenTheirSystems) {
  struct Case {
    std::int16_t from, to;
    double feet;  ///< what a depth of 900 becomes
  };
  constexpr Case kCases[] = {
      {kApiEnglish, kApiEnglish, 900},      {kApiEnglish, kMetric, 274.32},  {kApiEnglish, kUserDefined, 300},
      {kMetric, kApiEnglish, 2952.7559055}, {kMetric, kMetric, 900},         {kMetric, kUserDefined, 984.2519685},
      {kUserDefined, kApiEnglish, 2700},    {kUserDefined, kMetric, 822.96}, {kUserDefined, kUserDefined, 900},
  };
  for (const Case& each : kCases) {
    WellUnits units = WithYards();
    units.Convert(each.from, each.to);
    EXPECT_NEAR(900 / units.UnitFactor[kLengthSlot], each.feet, 1e-6) << each.from << " to " << each.to;
    EXPECT_EQ(units.UnitFactor[0], 1);
    EXPECT_EQ(units.UnitFactor[41], 1);
  }
}

TEST(WellUnits, OfALengthOfZeroRaise) {
  WellUnits units;
  units.UserFactor[kLengthSlot] = 0;
  EXPECT_EQ(test::Raised([&] { units.Convert(kApiEnglish, kUserDefined); }), ErrorNumber::DivisionByZero);
}

TEST(WellUnits, HaveTheirLabels) {
  const WellUnits units = WithYards();
  EXPECT_EQ(DepthUnitLabel(units, kApiEnglish).English(), "feet");
  EXPECT_EQ(DepthUnitLabel(units, kMetric).English(), "m");
  EXPECT_EQ(DepthUnitLabel(units, kUserDefined).English(), "yd");
  EXPECT_EQ(AngleUnitLabel(units, kApiEnglish).English(), "degrees");
  EXPECT_EQ(AngleUnitLabel(units, kMetric).English(), "degrees");
  EXPECT_EQ(AngleUnitLabel(units, kUserDefined).English(), "gon");
  EXPECT_EQ(UnitSystemName(kApiEnglish).English(), "API-English");
  EXPECT_EQ(UnitSystemName(kMetric).English(), "Metric");
  EXPECT_EQ(UnitSystemName(kUserDefined).English(), "User Defined");
}

TEST(WellUnits, OfTheOperatorStayInTheSettings) {
  const test::TemporaryFolder folder;
  {
    SettingsStore store(folder.Path().string());
    EXPECT_EQ(ReadUserUnits(store, "VELK2").length, 1);
    SaveUserUnits(store, "VELK2", {0.25, "ell", "gon"});
  }
  SettingsStore store(folder.Path().string());
  const UserUnits units = ReadUserUnits(store, "VELK2");
  EXPECT_EQ(units.length, 0.25);
  EXPECT_EQ(units.depthLabel, "ell");
  EXPECT_EQ(units.angleLabel, "gon");
  for (const char* bad : {"0", "-2", "abc", "1e999", ""}) {
    store.Save("VELK2", "Units", "UserLength", bad);
    EXPECT_EQ(ReadUserUnits(store, "VELK2").length, 1) << bad;
  }
}

}  // namespace
}  // namespace velk
