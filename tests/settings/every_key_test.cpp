// Every key, in the live settings and in a template: its preset, its way through the file, and texts of the wrong type.

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "base/errors.h"
#include "settings/settings_io.h"
#include "settings/templates.h"
#include "support/in_english.h"
#include "support/memory_folder.h"
#include "support/settings_rows.h"

namespace velk {
namespace {

using test::InEnglish;
using test::Kind;
using test::MemoryFolder;
using test::SettingsRow;
using test::SettingsRows;

/// The keys that stay with the program when a template is saved or loaded.
const std::set<std::string> kLiveOnly = {
    "General/Current_language", "General/intFontSize",        "General/MaximumTime",        "General/pixelslength",
    "General/pixeldivide",      "PrintGraph/TextInserted",    "General/CompanyLogoVisible", "Protocol/daqIPAddress",
    "Protocol/daqHTML",         "General/FitGraphsToWindows", "General/NightColours",       "General/MainWindowPlace",
    "General/LargeValues"};

/// Keys that SettingsRows leaves out: two counts, and a number that is only written.
const std::string kParameters = "Parameters/NumberOfParameters";
const std::string kFormulae = "Formulae/NumberOfFormulae";
const std::string kOnlyWritten = "General/intMaxNoParamsInForm";

bool IsOfFormula(const SettingsRow& row) {
  return row.section.starts_with("Formula");
}

/// The counts as rows like all others.
std::vector<SettingsRow> CountRows() {
  return {{"Parameters", "NumberOfParameters", Kind::Int16, "1", "7",
           [](const Session& session) { return std::to_string(session.NumberOfParameters); }},
          {"Formulae", "NumberOfFormulae", Kind::Int16, "0", "2",
           [](const Session& session) { return std::to_string(session.NumberOfFormulae); }}};
}

/// "section/key" of every line of a settings file.
std::set<std::string> KeysIn(const std::string& text) {
  std::set<std::string> keys;
  std::istringstream lines(text);
  std::string section;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with('[')) section = line.substr(1, line.find(']') - 1);
    if (line.empty() || line.starts_with('[') || line.starts_with(';')) continue;
    keys.insert(section + '/' + line.substr(0, line.find('=')));
  }
  return keys;
}

std::set<std::string> NamesOf(const std::vector<SettingsRow>& rows) {
  std::set<std::string> names;
  for (const SettingsRow& row : rows) names.insert(row.Name());
  return names;
}

std::vector<int> AllNumbers() {
  std::vector<int> numbers;
  for (int i = 1; i <= kMaxParameters; ++i) numbers.push_back(i);
  return numbers;
}

/// The text of the error that loading template "Job" raises; empty where it is loaded.
std::string LoadError(Session& session, SettingsStore& store) {
  try {
    LoadTemplate(session, store, test::English(), "Job");
  } catch (const RuntimeError& error) {
    return error.what();
  }
  return {};
}

class EveryKey : public testing::Test {
 protected:
  void SetUp() override {
    store_.Save("VELK2", "Formulae", "NumberOfFormulae", "2");
    store_.Save("VELK2", "Parameters", "NumberOfParameters", "7");
    ASSERT_TRUE(LoadSettings(session_, store_, test::English()).empty());
  }

  MemoryFolder folder_;
  SettingsStore store_{folder_.Path()};
  Session session_;
};

TEST_F(EveryKey, OfTheFilesIsOneThatTheTestsKnow) {
  std::set<std::string> live = NamesOf(SettingsRows(AllNumbers(), {1, 2}));
  live.insert({kParameters, kFormulae, kOnlyWritten});
  std::set<std::string> ofTemplate = live;
  for (const std::string& name : kLiveOnly) ofTemplate.erase(name);
  // Under Offset stands what Wrapping should hold.
  for (const std::string& name : {kOnlyWritten, std::string("Formula1/Wrapping"), std::string("Formula2/Wrapping")}) {
    ofTemplate.erase(name);
  }
  SaveSettings(session_, store_);
  SaveTemplate(session_, store_, "Job");
  EXPECT_EQ(KeysIn(folder_.Read("VELK2.ini")), live);
  EXPECT_EQ(KeysIn(folder_.Read("VELKJob.ini")), ofTemplate);
}

TEST_F(EveryKey, ThatIsACountHasItsPresetAndComesBack) {
  for (const SettingsRow& row : CountRows()) {
    const MemoryFolder folder;
    SettingsStore store(folder.Path());
    Session session;
    EXPECT_TRUE(LoadSettings(session, store, test::English()).empty());
    EXPECT_EQ(row.field(session), row.preset) << row.Name();
    store.Save("VELK2", row.section, row.key, row.other);
    store.Save("VELKJob", row.section, row.key, row.other);
    EXPECT_TRUE(LoadSettings(session, store, test::English()).empty());
    EXPECT_EQ(row.field(session), row.other) << row.Name();
    session = Session();
    EXPECT_EQ(LoadError(session, store), "");
    EXPECT_EQ(row.field(session), row.other) << row.Name() << " of the template";
  }
}

TEST_F(EveryKey, ThatIsACountIsToldWhereItIsNone) {
  for (const SettingsRow& row : CountRows()) {
    for (const std::string& wrong : WrongTexts(row.kind)) {
      const MemoryFolder folder;
      SettingsStore store(folder.Path());
      store.Save("VELK2", row.section, row.key, wrong);
      store.Save("VELKJob", row.section, row.key, wrong);
      Session session;
      const std::vector<std::string> problems = InEnglish(LoadSettings(session, store, test::English()));
      ASSERT_EQ(problems.size(), 1U) << row.Name() << " holds " << wrong;
      EXPECT_EQ(problems[0].find(row.Name() + ": "), 0U) << problems[0];
      EXPECT_EQ(row.field(session), row.preset) << wrong;
      EXPECT_EQ(LoadError(session, store).find(row.Name() + ": "), 0U) << wrong;
    }
  }
}

TEST_F(EveryKey, OfAnAdditionalParameterHasItsPresetInATemplate) {
  store_.Save("VELKJob", "Formulae", "NumberOfFormulae", "2");
  EXPECT_EQ(LoadError(session_, store_), "");
  for (const SettingsRow& row : SettingsRows({}, {1, 2})) {
    if (IsOfFormula(row)) {
      EXPECT_EQ(row.field(session_), row.preset) << row.Name();
    }
  }
}

TEST_F(EveryKey, OfAnAdditionalParameterComesBackFromATemplateWhoseOffsetWasMended) {
  const std::vector<SettingsRow> rows = SettingsRows({}, {1, 2});
  for (const SettingsRow& row : rows) {
    if (IsOfFormula(row)) store_.Save("VELK2", row.section, row.key, row.other);
  }
  ASSERT_TRUE(LoadSettings(session_, store_, test::English()).empty());
  SaveTemplate(session_, store_, "Job");
  for (const char* section : {"Formula1", "Formula2"}) store_.Save("VELKJob", section, "Offset", "-2.75");
  Session session;
  EXPECT_EQ(LoadError(session, store_), "");
  for (const SettingsRow& row : rows) {
    if (!IsOfFormula(row)) continue;
    EXPECT_EQ(row.field(session), row.key == "Wrapping" ? row.preset : row.other) << row.Name();
  }
}

TEST_F(EveryKey, OfATemplateIsRefusedWithEveryTextOfTheWrongType) {
  const std::vector<SettingsRow> rows = SettingsRows({1, 64}, {1});
  for (const SettingsRow& row : rows) {
    for (const std::string& wrong : WrongTexts(row.kind)) {
      if (wrong.empty() && row.section.starts_with("Playback") && row.key == "FormIndex") continue;
      const MemoryFolder folder;
      SettingsStore store(folder.Path());
      store.Save("VELKJob", "Formulae", "NumberOfFormulae", "1");
      store.Save("VELKJob", "General", "CurrentFont", "Template");
      store.Save("VELKJob", row.section, row.key, wrong);
      Session session = session_;
      const std::string error = LoadError(session, store);
      if (kLiveOnly.count(row.Name()) > 0) {
        EXPECT_EQ(error, "") << "no template holds " << row.Name();
        EXPECT_EQ(row.field(session), row.field(session_)) << row.Name();
      } else {
        EXPECT_EQ(error.find(row.Name() + ": "), 0U) << row.Name() << " holds " << wrong << ": " << error;
        EXPECT_EQ(session.CurrentFont, session_.CurrentFont) << "nothing is taken over";
      }
    }
  }
}

}  // namespace
}  // namespace velk
