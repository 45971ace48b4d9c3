#include "settings/column_widths.h"

#include <gtest/gtest.h>

#include "support/memory_folder.h"

namespace velk {
namespace {

TEST(ColumnWidths, ComeBackAsTheyWereSaved) {
  const test::MemoryFolder folder;
  SettingsStore settings(folder.Path());
  EXPECT_TRUE(ReadColumnWidths(settings).empty());
  SaveColumnWidths(settings, {{"Name", 200}, {"Lower Alarm", 90}});
  EXPECT_EQ(ReadColumnWidths(settings), (ColumnWidths{{"Name", 200}, {"Lower Alarm", 90}}));
  SaveColumnWidths(settings, {{"Name", 120}});
  EXPECT_EQ(ReadColumnWidths(settings), (ColumnWidths{{"Name", 120}})) << "the other one is as wide as its texts again";
}

TEST(ColumnWidths, ArePassedOverWhereTheyCanBeNone) {
  const test::MemoryFolder folder;
  SettingsStore settings(folder.Path());
  for (const char* width : {"", "15", "2001", "-40", "wide", "120 px", "99999999999999999999"}) {
    settings.Save("VELK2", "ParametersTable", "Gain", width);
    EXPECT_TRUE(ReadColumnWidths(settings).empty()) << width;
  }
  for (const char* width : {"16", "2000"}) {
    settings.Save("VELK2", "ParametersTable", "Gain", width);
    EXPECT_EQ(ReadColumnWidths(settings).size(), 1U) << width;
  }
}

}  // namespace
}  // namespace velk
