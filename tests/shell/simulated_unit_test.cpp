#include "shell/simulated_unit.h"

#include <gtest/gtest.h>

#include "i18n/languages.h"
#include "i18n/translation.h"
#include "platform/settings/settings.h"
#include "support/in_english.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

TEST(SettingsForASimulatedUnit, AreThoseOfAUnitOfTwentyTwoChannelsOnTwoGraphs) {
  const test::TemporaryFolder folder;
  SettingsStore settings(folder.File("VELK"));
  SetUpForSimulatedUnit(settings, "/tmp/unit", StoredSettings(), test::English());
  SettingsStore written(folder.File("VELK"));
  EXPECT_EQ(written.Get("VELK2", "Protocol", "SerialData", ""), "KESTA version 5");
  EXPECT_EQ(written.Get("VELK2", "Protocol", "PortDevice1", ""), "/tmp/unit");
  EXPECT_EQ(written.Get("VELK2", "Parameters", "NumberOfParameters", ""), "22");
  EXPECT_EQ(written.Get("VELK2", "Parameter1", "FormIndex", ""), "1");
  EXPECT_EQ(written.Get("VELK2", "Parameter1", "name", ""), "Treating Pressure");
  EXPECT_EQ(written.Get("VELK2", "Parameter5", "FormIndex", ""), "0");
  EXPECT_EQ(written.Get("VELK2", "Parameter5", "GraphVisible", ""), "False");
}

TEST(SettingsForASimulatedUnit, SpeakTheOperatorsLanguageAndHaveHisLooks) {
  const test::TemporaryFolder folder;
  SettingsStore settings(folder.File("VELK"));
  Translation russian;
  ASSERT_EQ(russian.Load(VELK_TRANSLATIONS_DIR, "Russian"), "Russian");
  StoredSettings own;
  own.Current_language = "Russian";
  own.NightColours = true;
  own.FitGraphsToWindows = false;
  SetUpForSimulatedUnit(settings, "/tmp/unit", own, russian.Translator);
  SettingsStore written(folder.File("VELK"));
  EXPECT_EQ(written.Get("VELK2", "General", "Current_language", ""), "Russian");
  EXPECT_EQ(written.Get("VELK2", "General", "NightColours", ""), "True");
  EXPECT_EQ(written.Get("VELK2", "General", "FitGraphsToWindows", ""), "False");
  EXPECT_EQ(written.Get("VELK2", "Parameter1", "name", ""), "Давление закачки");
}

}  // namespace
}  // namespace velk
