#include "settings/clear_sections.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "settings/settings_io.h"
#include "support/in_english.h"
#include "support/memory_folder.h"
#include "support/settings_rows.h"

namespace velk {
namespace {

using test::SettingsRow;

bool IsNumbered(const std::string& section, const std::string& word) {
  return section.size() > word.size() && section.starts_with(word) && section[word.size()] <= '9';
}

SettingsGroup GroupOf(const std::string& section) {
  if (section == "General") return SettingsGroup::General;
  if (section == "Protocol") return SettingsGroup::Protocol;
  if (section == "PrintGraph") return SettingsGroup::PrintGraph;
  if (section == "Playback" || IsNumbered(section, "PlaybackParameter")) return SettingsGroup::Playback;
  return IsNumbered(section, "Parameter") ? SettingsGroup::Parameters : SettingsGroup::Formulae;
}

class ClearSectionsTest : public testing::Test {
 protected:
  ClearSectionsTest() {
    store_.Save("VELK2", "Formulae", "NumberOfFormulae", "3");
    store_.Save("VELK2", "Parameters", "NumberOfParameters", "12");
    for (const SettingsRow& row : rows_) store_.Save("VELK2", row.section, row.key, row.other);
    EXPECT_TRUE(LoadSettings(session_, store_, test::English()).empty());
    session_.TemplateNames = {"", "Job"};
    SaveSettings(session_, store_);
  }

  bool IsStored(const std::string& section) { return store_.Find("VELK2", section, "name").has_value(); }

  std::vector<SettingsRow> rows_ = test::SettingsRows({1, 2, 63, 64}, {1, 2, 3});
  test::MemoryFolder folder_;
  SettingsStore store_{folder_.Path()};
  Session session_;
};

TEST_F(ClearSectionsTest, RestoresThePresetsOfTheChosenGroupAndOfNoOther) {
  for (int group = 0; group < kSettingsGroups; ++group) {
    const test::MemoryFolder folder;
    folder.Write("VELK2.ini", folder_.Read("VELK2.ini"));
    SettingsStore store(folder.Path());
    Session session;
    ASSERT_TRUE(LoadSettings(session, store, test::English()).empty());
    GroupChoice choice{};
    choice[static_cast<std::size_t>(group)] = true;
    EXPECT_TRUE(ClearSections(session, store, test::English(), choice).empty());

    const bool formulae = choice[static_cast<std::size_t>(SettingsGroup::Formulae)];
    const bool parameters = choice[static_cast<std::size_t>(SettingsGroup::Parameters)];
    EXPECT_EQ(session.NumberOfFormulae, formulae ? 0 : 3);
    EXPECT_EQ(session.NumberOfParameters, parameters ? 1 : 12);
    SettingsStore disk(folder.Path());
    for (const SettingsRow& row : rows_) {
      const bool cleared = GroupOf(row.section) == static_cast<SettingsGroup>(group);
      if (cleared && formulae) {
        EXPECT_FALSE(disk.Find("VELK2", row.section, row.key).has_value()) << row.Name();
      } else {
        EXPECT_EQ(row.field(session), cleared ? row.preset : row.other) << row.Name() << " with group " << group;
        if (row.key != "SamplingRate") {
          EXPECT_EQ(disk.Get("VELK2", row.section, row.key, "(none)"), cleared ? row.preset : row.other) << row.Name();
        }
      }
    }
  }
}

TEST_F(ClearSectionsTest, RestoresThePresetsOfAnyTwoGroups) {
  for (std::size_t one = 0; one < kSettingsGroups; ++one) {
    for (std::size_t other = one + 1; other < kSettingsGroups; ++other) {
      const test::MemoryFolder folder;
      folder.Write("VELK2.ini", folder_.Read("VELK2.ini"));
      SettingsStore store(folder.Path());
      Session session;
      GroupChoice choice{};
      choice[one] = choice[other] = true;
      EXPECT_TRUE(ClearSections(session, store, test::English(), choice).empty());
      EXPECT_EQ(session.NumberOfFormulae, choice[5] ? 0 : 3);
      for (const SettingsRow& row : test::SettingsRows({1, 64}, {})) {
        const bool cleared = choice[static_cast<std::size_t>(GroupOf(row.section))];
        EXPECT_EQ(row.field(session), cleared ? row.preset : row.other) << row.Name() << " " << one << " " << other;
      }
    }
  }
}

TEST_F(ClearSectionsTest, ClearsAllGroupsAtOnce) {
  GroupChoice all;
  all.fill(true);
  EXPECT_TRUE(ClearSections(session_, store_, test::English(), all).empty());
  for (const SettingsRow& row : test::SettingsRows({1, 2, 63, 64}, {})) EXPECT_EQ(row.field(session_), row.preset);
  EXPECT_EQ(session_.TemplateNames.size(), 2U) << "templates stay";
}

TEST_F(ClearSectionsTest, TakesNothingForNoChoice) {
  EXPECT_TRUE(ClearSections(session_, store_, test::English(), {}).empty());
  for (const SettingsRow& row : rows_) EXPECT_EQ(row.field(session_), row.other) << row.Name();
}

TEST_F(ClearSectionsTest, DeletesAsManyFormulasAsTheStoreCounts) {
  store_.Save("VELK2", "Formulae", "NumberOfFormulae", "2");
  GroupChoice choice{};
  choice[5] = true;
  ClearSections(session_, store_, test::English(), choice);
  EXPECT_FALSE(IsStored("Formula1"));
  EXPECT_FALSE(IsStored("Formula2"));
  EXPECT_TRUE(IsStored("Formula3"));
}

TEST_F(ClearSectionsTest, IsNotHeldUpByACountThatIsNoNumber) {
  GroupChoice choice{};
  choice[5] = true;
  for (const char* count : {"x", "", "-5", "1E99"}) {
    store_.Save("VELK2", "Formulae", "NumberOfFormulae", count);
    EXPECT_TRUE(ClearSections(session_, store_, test::English(), choice).empty()) << count;
    EXPECT_EQ(session_.NumberOfFormulae, 0);
  }
}

TEST_F(ClearSectionsTest, TakesSectionsThatDoNotExistForCleared) {
  const test::MemoryFolder folder;
  SettingsStore store(folder.Path());
  Session session;
  GroupChoice all;
  all.fill(true);
  EXPECT_TRUE(ClearSections(session, store, test::English(), all).empty());
  EXPECT_EQ(session.Parameters[1].name, "Parameter 1");
}

TEST_F(ClearSectionsTest, HealsASectionThatCouldNotBeRead) {
  store_.Save("VELK2", "Protocol", "BaudRate", "fast");
  GroupChoice choice{};
  EXPECT_EQ(ClearSections(session_, store_, test::English(), choice).size(), 2U)
      << "the key, and where the file is kept";
  store_.Save("VELK2", "Protocol", "BaudRate", "fast");
  choice[1] = true;
  EXPECT_TRUE(ClearSections(session_, store_, test::English(), choice).empty());
  EXPECT_EQ(session_.BaudRate, 9600);
}

}  // namespace
}  // namespace velk
