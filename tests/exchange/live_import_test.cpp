#include "exchange/live_import.h"

#include <gtest/gtest.h>

#include "exchange/live_properties.h"
#include "platform/settings/settings.h"
#include "support/in_english.h"
#include "support/memory_folder.h"

namespace velk {
namespace {

LiveImport TwoFields() {
  LiveImport live{true, "/data/rig 7.mdb", "Readings", "Day", "Clock", {}};
  LiveField hook;
  hook.Name = "HookLoad";
  hook.Type = 5;
  hook.DisplayName = "Нагрузка";
  hook.min = -5;
  hook.max = 250.25;
  hook.Unit = "т";
  hook.format = "#0.0";
  hook.Lower = 1.5;
  hook.Upper = 200;
  hook.Colour = 0x123456;
  hook.UpperSet = hook.LowerSet = true;
  hook.Wrapping = false;
  live.Fields = {hook, LiveField{.Name = "Depth"}};
  return live;
}

struct LiveImportSettings : testing::Test {
  std::string Key(const char* key) { return settings.Get("VELK2", "ImportLive", key, "none"); }
  bool Load() { return LoadFromRegistry(settings, test::English(), live); }

  test::MemoryFolder folder;
  SettingsStore settings{folder.Path()};
  LiveImport live;
};

TEST_F(LiveImportSettings, AreNoneWithoutADatabase) {
  settings.Save("VELK2", "ImportLive", "TableName", "Readings");
  EXPECT_FALSE(Load());
  EXPECT_EQ(live, LiveImport());
}

TEST_F(LiveImportSettings, ComeBackAsTheyWereStored) {
  SaveToRegistory(settings, TwoFields());
  settings.Flush();
  SettingsStore again(folder.Path());
  EXPECT_TRUE(LoadFromRegistry(again, test::English(), live));
  EXPECT_EQ(live, TwoFields());
}

TEST_F(LiveImportSettings, NumberTheKeysOfAFieldBehindABlank) {
  SaveToRegistory(settings, TwoFields());
  EXPECT_EQ(Key("name 1"), "HookLoad");
  EXPECT_EQ(Key("name 2"), "Depth");
  EXPECT_EQ(Key("max 1"), "250.25");
  EXPECT_EQ(Key("UpperSet 1"), "1");
  EXPECT_EQ(Key("Wrapping 1"), "0");
  EXPECT_EQ(Key("Wrapping 2"), "1");
  EXPECT_EQ(Key("FieldsCounts"), "2");
  EXPECT_EQ(Key("Import"), "1");
  EXPECT_EQ(Key("DataBaseFileName"), "/data/rig 7.mdb");
}

TEST_F(LiveImportSettings, HaveThePresetsOfAFieldWhoseKeysAreMissing) {
  settings.Save("VELK2", "ImportLive", "DataBaseFileName", "/a.mdb");
  settings.Save("VELK2", "ImportLive", "FieldsCounts", "1");
  ASSERT_TRUE(Load());
  ASSERT_EQ(live.Fields.size(), 1U);
  const LiveField& field = live.Fields[0];
  EXPECT_EQ(field.Type, 3);
  EXPECT_EQ(field.min, 0);
  EXPECT_EQ(field.max, 100);
  EXPECT_EQ(field.Unit, "Unit");
  EXPECT_EQ(field.format, "#0.000");
  EXPECT_FALSE(field.UpperSet || field.LowerSet);
  EXPECT_TRUE(field.Wrapping) << "the flag whose preset is on";
  EXPECT_FALSE(live.Import);
}

TEST_F(LiveImportSettings, TakeNoNumbersThatNobodyCouldHaveStored) {
  settings.Save("VELK2", "ImportLive", "DataBaseFileName", "/a.mdb");
  settings.Save("VELK2", "ImportLive", "FieldsCounts", "1e300");
  settings.Save("VELK2", "ImportLive", "max 1", "1e999");
  settings.Save("VELK2", "ImportLive", "Colour 1", "-7");
  ASSERT_TRUE(Load());
  ASSERT_EQ(live.Fields.size(), 1024U);
  EXPECT_EQ(live.Fields[0].max, 100);
  EXPECT_EQ(live.Fields[0].Colour, 0);
  settings.Save("VELK2", "ImportLive", "FieldsCounts", "-3");
  ASSERT_TRUE(Load());
  EXPECT_TRUE(live.Fields.empty());
}

TEST(LiveProperties, GoToTheFieldAndBack) {
  LiveField field = TwoFields().Fields[0];
  CurveProperties properties = PropertiesOf(field);
  EXPECT_EQ(properties.name, "Нагрузка");
  EXPECT_EQ(properties.loweralarm, "1.5");
  EXPECT_TRUE(properties.hasAlarms);
  EXPECT_FALSE(properties.hasSmoothing) << "values are shown as they stand in the table";
  properties.name = "Load";
  properties.loweralarm = "None";
  properties.upperalarm = "210";
  StoreProperties(field, properties);
  EXPECT_EQ(field.DisplayName, "Load");
  EXPECT_EQ(field.Name, "HookLoad") << "that is the table's";
  EXPECT_FALSE(field.LowerSet);
  EXPECT_TRUE(field.UpperSet);
  EXPECT_EQ(field.Upper, 210);
}

TEST(LiveProperties, LeaveALimitAsItIsThatNobodyTouches) {
  LiveField field = TwoFields().Fields[0];
  field.Lower = 1.0 / 3;
  StoreProperties(field, PropertiesOf(field));
  EXPECT_EQ(field.Lower, 1.0 / 3) << "its text has fifteen digits";
  Parameter curve = CurveOf(field);
  curve.units = "kN";
  StoreCurve(field, curve);
  EXPECT_EQ(field.Lower, 1.0 / 3);
  EXPECT_EQ(field.Unit, "kN");
  EXPECT_TRUE(field.LowerSet);
}

}  // namespace
}  // namespace velk
