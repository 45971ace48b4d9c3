#include "settings/settings_io.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "base/errors.h"
#include "support/in_english.h"
#include "support/memory_folder.h"
#include "support/settings_rows.h"
#include "support/unprivileged.h"

namespace velk {
namespace {

using test::InEnglish;
using test::Kind;
using test::MemoryFolder;
using test::SettingsRow;
using test::SettingsRows;

const std::vector<int> kParameters = {1, 2, 37, 63, 64};
const std::vector<int> kFormulas = {1, 2, 3};

class SettingsIoTest : public testing::Test {
 protected:
  void Store(const std::string& section, const std::string& key, const std::string& value) {
    store_.Save("VELK2", section, key, value);
  }

  std::string Stored(const std::string& section, const std::string& key) {
    return store_.Get("VELK2", section, key, "(none)");
  }

  /// Stores a value and loads; gives the problems.
  std::vector<std::string> LoadWith(const std::string& section, const std::string& key, const std::string& value) {
    Store(section, key, value);
    return InEnglish(LoadSettings(session_, store_, test::English()));
  }

  MemoryFolder folder_;
  SettingsStore store_{folder_.Path()};
  Session session_;
};

TEST_F(SettingsIoTest, StartsWithOneParameterOnAnEmptyStore) {
  EXPECT_TRUE(LoadSettings(session_, store_, test::English()).empty());
  EXPECT_EQ(session_.NumberOfParameters, 1);
  EXPECT_EQ(session_.NumberOfFormulae, 0);
  EXPECT_EQ(session_.Parameters[1].name, "Parameter 1");
  EXPECT_EQ(session_.Parameters[1].min, 0);
  EXPECT_EQ(session_.Parameters[1].max, 100);
  EXPECT_EQ(session_.Parameters[1].FormIndex, 1);
  EXPECT_EQ(session_.AdditionalParameters.size(), 1U);
  EXPECT_EQ(session_.Formula.size(), 1U);
  EXPECT_EQ(session_.TemplateNames.size(), 1U);
  EXPECT_EQ(folder_.Count(), 0U) << "reading writes nothing";
}

TEST_F(SettingsIoTest, GivesEveryKeyItsPreset) {
  Store("Formulae", "NumberOfFormulae", "3");
  EXPECT_TRUE(LoadSettings(session_, store_, test::English()).empty());
  for (const SettingsRow& row : SettingsRows(kParameters, kFormulas)) {
    EXPECT_EQ(row.field(session_), row.preset) << row.Name();
  }
  EXPECT_EQ(session_.SamplingRate, 1.0 / 86400);
}

TEST_F(SettingsIoTest, ReplacesWhatTheSessionHeldBefore) {
  session_.CurrentFont = "x";
  session_.Parameters[64].Gain = 9;
  session_.NumberOfParameters = 12;
  session_.AdditionalParameters.resize(9);
  session_.Formula.resize(9);
  session_.TemplateNames = {"", "old"};
  LoadSettings(session_, store_, test::English());
  EXPECT_EQ(session_.CurrentFont, "MS Sans Serif");
  EXPECT_EQ(session_.Parameters[64].Gain, 1);
  EXPECT_EQ(session_.NumberOfParameters, 1);
  EXPECT_EQ(session_.AdditionalParameters.size(), 1U);
  EXPECT_EQ(session_.Formula.size(), 1U);
  EXPECT_EQ(session_.TemplateNames.size(), 1U);
}

TEST_F(SettingsIoTest, ReadsEveryKeyIntoItsOwnFieldAndNoOther) {
  const std::vector<SettingsRow> rows = SettingsRows({1, 64}, {1});
  for (const SettingsRow& row : rows) {
    const MemoryFolder folder;
    SettingsStore store(folder.Path());
    store.Save("VELK2", "Formulae", "NumberOfFormulae", "1");
    store.Save("VELK2", row.section, row.key, row.other);
    Session session;
    EXPECT_TRUE(LoadSettings(session, store, test::English()).empty()) << row.Name();
    for (const SettingsRow& each : rows) {
      EXPECT_EQ(each.field(session), each.Name() == row.Name() ? each.other : each.preset)
          << each.Name() << " with " << row.Name() << " stored";
    }
  }
}

TEST_F(SettingsIoTest, FindsEveryKeyAgainAfterARestart) {
  const std::vector<SettingsRow> rows = SettingsRows(kParameters, kFormulas);
  Store("Formulae", "NumberOfFormulae", "3");
  for (const SettingsRow& row : rows) Store(row.section, row.key, row.other);
  ASSERT_TRUE(LoadSettings(session_, store_, test::English()).empty());

  const MemoryFolder folder;
  {
    SettingsStore store(folder.Path());
    SaveSettings(session_, store);
  }
  SettingsStore store(folder.Path());
  for (const SettingsRow& row : rows) {
    EXPECT_EQ(store.Get("VELK2", row.section, row.key, "(none)"), row.other) << row.Name();
  }
  EXPECT_EQ(store.Get("VELK2", "Formulae", "NumberOfFormulae", "(none)"), "3");
  Session again;
  EXPECT_TRUE(LoadSettings(again, store, test::English()).empty());
  for (const SettingsRow& row : rows) EXPECT_EQ(row.field(again), row.other) << row.Name();
}

TEST_F(SettingsIoTest, TellsEveryTextOfTheWrongTypeAndLoadsTheRest) {
  const std::vector<SettingsRow> rows = SettingsRows({1, 64}, {1});
  for (const SettingsRow& row : rows) {
    for (const std::string& wrong : WrongTexts(row.kind)) {
      if (wrong.empty() && row.section.starts_with("Playback") && row.key == "FormIndex") continue;
      const MemoryFolder folder;
      SettingsStore store(folder.Path());
      store.Save("VELK2", "Formulae", "NumberOfFormulae", "1");
      for (const SettingsRow& each : rows) store.Save("VELK2", each.section, each.key, each.other);
      store.Save("VELK2", row.section, row.key, wrong);
      Session session;
      const std::vector<std::string> problems = InEnglish(LoadSettings(session, store, test::English()));
      ASSERT_EQ(problems.size(), 1U) << row.Name() << " holds " << wrong;
      EXPECT_EQ(problems[0].find(row.Name() + ": "), 0U) << problems[0];
      for (const SettingsRow& each : rows) {
        ASSERT_EQ(each.field(session), each.Name() == row.Name() ? each.preset : each.other) << each.Name();
      }
    }
  }
}

TEST_F(SettingsIoTest, NamesEveryBadKeyWithTheReasonAndTheValue) {
  Store("Parameter3", "min", "abc");
  Store("General", "TheTimeOut", "99999");
  Store("Protocol", "PortNumber", "17");
  Store("Protocol", "Port2", std::string(1000, 'x'));
  EXPECT_EQ(
      InEnglish(LoadSettings(session_, store_, test::English())),
      (std::vector<std::string>{"General/TheTimeOut: " + ErrorText(ErrorNumber::Overflow).English() + " (\"99999\")",
                                "Protocol/Port2: " + ErrorText(ErrorNumber::TypeMismatch).English() + " (\"" +
                                    std::string(40, 'x') + "...\")",
                                "Protocol/PortNumber: The value is out of range (\"17\")",
                                "Parameter3/min: " + ErrorText(ErrorNumber::TypeMismatch).English() + " (\"abc\")"}));
}

TEST(ProblemText, IsNoLongerThanABoxThatFitsOnTheScreen) {
  EXPECT_EQ(ProblemText({}).English(), "");
  EXPECT_EQ(ProblemText({"a", "b"}).English(), "a\nb\n");
  std::string twentyOne;
  for (int i = 0; i < 21; ++i) twentyOne += "x\n";
  EXPECT_EQ(ProblemText(std::vector<OperatorText>(21, "x")).English(), twentyOne);
  EXPECT_EQ(ProblemText(std::vector<OperatorText>(320, "x")).English(), twentyOne.substr(2) + "... + 300\n");
}

TEST_F(SettingsIoTest, TellsFirstWhatTheStoreCouldNotRead) {
  folder_.Write("VELK2.ini", "[General]\nnonsense\nTheTimeOut=x\nintFontSize=12\n");
  SettingsStore store(folder_.Path());
  const std::vector<std::string> problems = InEnglish(LoadSettings(session_, store, test::English()));
  ASSERT_EQ(problems.size(), 3U);
  EXPECT_EQ(problems[0], folder_.Path("VELK2.ini") + ": line 2 can't be read");
  EXPECT_EQ(problems[1], "The file as it was is kept as " + folder_.Path("VELK2.ini.damaged"));
  EXPECT_EQ(problems[2].find("General/TheTimeOut: "), 0U) << "of these there may be too many for a box";
  EXPECT_EQ(session_.intFontSize, 12);
}

TEST_F(SettingsIoTest, ReadsBooleansInAnyCaseAndAsNumbers) {
  for (const std::string yes : {"True", "true", "TRUE", "tRuE", " True ", "1", "-1", "2", "0.5"}) {
    EXPECT_TRUE(LoadWith("PrintGraph", "LogoInserted", yes).empty()) << yes;
    EXPECT_TRUE(session_.LogoInserted) << yes;
  }
  for (const std::string no : {"False", "false", "FALSE", "0", "-0", "0.0"}) {
    EXPECT_TRUE(LoadWith("PrintGraph", "LogoInserted", no).empty()) << no;
    EXPECT_FALSE(session_.LogoInserted) << no;
  }
}

TEST_F(SettingsIoTest, RoundsIntegersHalfToEven) {
  for (const auto& [text, expected] :
       {std::pair("6.4", 6), {"6.5", 6}, {"7.5", 8}, {"-6.6", -7}, {" 8 ", 8}, {"1E2", 100}, {"32767.4", 32767}}) {
    EXPECT_TRUE(LoadWith("General", "SensitivityCriterion", text).empty()) << text;
    EXPECT_EQ(session_.SensitivityCriterion, expected) << text;
  }
}

struct Limit {
  const char* section;
  const char* key;
  std::vector<std::string> refused;
  std::vector<std::string> taken;
};

TEST_F(SettingsIoTest, RefusesNumbersThatWouldBeOfNoUse) {
  const std::vector<Limit> limits = {
      {"Parameters", "NumberOfParameters", {"-1", "65", "64.6"}, {"0", "64", "64.4"}},
      {"Protocol", "PortNumber", {"0", "-1", "17"}, {"1", "16"}},
      {"Parameter1", "SmoothValue", {"-1", "11"}, {"1", "10"}},
      {"Parameter1", "FormIndex", {"-1", "65"}, {"0", "64"}},
      {"PlaybackParameter1", "FormIndex", {"-1", "65"}, {"0", "64"}},
      {"General", "pixelslength", {"0", "-1", "240001", "1E300"}, {"1", "0.5"}},
      {"General", "pixeldivide", {"0", "-1", "1E300"}, {"1"}},
      {"General", "MaximumTime", {"0", "-3600", "240001", "1E300"}, {"1", "240000"}},
      {"General", "intFontSize", {"0", "-8", "101", "32767"}, {"1", "6", "20", "100"}},
      {"General", "SamplingRate", {"0", "-0.1"}, {"1E-05", "1"}},
  };
  for (const Limit& limit : limits) {
    for (const std::string& value : limit.refused) {
      const std::vector<std::string> problems = LoadWith(limit.section, limit.key, value);
      ASSERT_EQ(problems.size(), 1U) << limit.key << " " << value;
      EXPECT_EQ(problems[0].find(std::string(limit.section) + '/' + limit.key + ": The value is out of range"), 0U)
          << problems[0];
    }
    for (const std::string& value : limit.taken) {
      EXPECT_TRUE(LoadWith(limit.section, limit.key, value).empty()) << limit.key << " " << value;
    }
  }
}

TEST_F(SettingsIoTest, LoadsAsManyFormulasAsThereIsRoomFor) {
  Store("Parameters", "NumberOfParameters", "60");
  EXPECT_TRUE(LoadWith("Formulae", "NumberOfFormulae", "4").empty());
  EXPECT_EQ(session_.NumberOfFormulae, 4);
  EXPECT_EQ(session_.AdditionalParameters.size(), 5U);
  EXPECT_EQ(session_.Formula.size(), 5U);
  EXPECT_EQ(session_.AdditionalParameters[4].name, "Additional Parameter 4");

  EXPECT_EQ(LoadWith("Formulae", "NumberOfFormulae", "5").size(), 1U) << "told, and none of the others is lost";
  EXPECT_EQ(session_.NumberOfFormulae, 4);
  EXPECT_EQ(session_.AdditionalParameters.size(), 5U);
  EXPECT_EQ(LoadWith("Formulae", "NumberOfFormulae", "-1").size(), 1U);
  EXPECT_EQ(session_.NumberOfFormulae, 0);
}

TEST_F(SettingsIoTest, ReadsAStoredZeroGainAndSmoothValueOfInputsAsOne) {
  for (const char* zero : {"0", "0.0", "-0"}) {
    Store("Parameter5", "Gain", zero);
    Store("Parameter5", "SmoothValue", zero);
    Store("PlaybackParameter5", "Gain", zero);
    EXPECT_TRUE(LoadSettings(session_, store_, test::English()).empty());
    EXPECT_EQ(session_.Parameters[5].Gain, 1);
    EXPECT_EQ(session_.SmoothValue[5], 1);
    EXPECT_EQ(session_.PlaybackParameters[5].Gain, 0) << "playback keeps it";
  }
  Store("Formulae", "NumberOfFormulae", "1");
  EXPECT_TRUE(LoadWith("Formula1", "Gain", "0").empty());
  EXPECT_EQ(session_.AdditionalParameters[1].Gain, 0) << "and so do additional parameters";
}

TEST_F(SettingsIoTest, ReadsTheOlderNameOfTheFormattedProtocol) {
  LoadWith("Protocol", "SerialData", "formatted");
  EXPECT_EQ(session_.SerialData, "formatted and at regular intervals");
  LoadWith("Protocol", "SerialData", "Formatted");
  EXPECT_EQ(session_.SerialData, "Formatted");
}

TEST_F(SettingsIoTest, ReadsAnEmptyFormIndexOfPlaybackAsZero) {
  EXPECT_TRUE(LoadWith("PlaybackParameter3", "FormIndex", "").empty());
  EXPECT_EQ(session_.PlaybackParameters[3].FormIndex, 0);
  EXPECT_EQ(LoadWith("Parameter3", "FormIndex", "").size(), 1U);
  EXPECT_EQ(session_.Parameters[3].FormIndex, 3);
}

TEST_F(SettingsIoTest, ReadsTheNumberOfParametersButDoesNotWriteIt) {
  LoadWith("Parameters", "NumberOfParameters", "18");
  EXPECT_EQ(session_.NumberOfParameters, 18);
  session_.NumberOfParameters = 5;
  SaveSettings(session_, store_);
  EXPECT_EQ(Stored("Parameters", "NumberOfParameters"), "18");
}

TEST_F(SettingsIoTest, HoldsTheNumberOfParametersWithEachChangeOfTheOperators) {
  LoadWith("Parameters", "NumberOfParameters", "18");
  session_.NumberOfParameters = 5;
  KeepSettings(session_, store_);
  EXPECT_EQ(SettingsStore(folder_.Path()).Get("VELK2", "Parameters", "NumberOfParameters", ""), "5");
  session_.NumberOfParameters = 7;  // the channels of a file that is shown
  session_.UnitParameters = 5;
  KeepSettings(session_, store_);
  EXPECT_EQ(SettingsStore(folder_.Path()).Get("VELK2", "Parameters", "NumberOfParameters", ""), "5");
}

TEST_F(SettingsIoTest, WritesTheLimitOfParametersAndNeverReadsIt) {
  EXPECT_TRUE(LoadWith("General", "intMaxNoParamsInForm", "nonsense").empty());
  SaveSettings(session_, store_);
  EXPECT_EQ(Stored("General", "intMaxNoParamsInForm"), "64");
}

TEST_F(SettingsIoTest, WritesNumbersWithAPointAndFifteenOrSevenDigits) {
  LoadSettings(session_, store_, test::English());
  session_.Parameters[1].min = -0.5;
  session_.Parameters[1].max = 1e20;
  session_.PrintGraphText1X = 0.1F;
  SaveSettings(session_, store_);
  EXPECT_EQ(Stored("General", "SamplingRate"), "1.15740740740741E-05");
  EXPECT_EQ(Stored("Parameter1", "min"), "-0.5");
  EXPECT_EQ(Stored("Parameter1", "max"), "1E+20");
  EXPECT_EQ(Stored("PrintGraph", "PrintGraphText1X"), "0.1");
}

TEST_F(SettingsIoTest, KeepsASamplingRateStableOverRestarts) {
  LoadSettings(session_, store_, test::English());
  SaveSettings(session_, store_);
  LoadSettings(session_, store_, test::English());
  const double once = session_.SamplingRate;
  EXPECT_NEAR(once * 86400, 1, 1e-14);
  for (int restart = 0; restart < 10; ++restart) {
    SaveSettings(session_, store_);
    LoadSettings(session_, store_, test::English());
  }
  EXPECT_EQ(session_.SamplingRate, once);
}

TEST_F(SettingsIoTest, FindsTheTemplateNamesAgain) {
  LoadSettings(session_, store_, test::English());
  session_.TemplateNames = {"", "Cementing", "\xD0\xA0\xD0\xB0\xD0\xB1\xD0\xBE\xD1\x82\xD0\xB0 ", ""};
  SaveSettings(session_, store_);
  EXPECT_EQ(store_.Get("VELKTemplates", "General", "NumberOfTemplates", ""), "3");
  EXPECT_EQ(store_.Get("VELKTemplates", "General", "TheTemplateName1", ""), "Cementing");
  SettingsStore again(folder_.Path());
  Session session;
  EXPECT_TRUE(LoadSettings(session, again, test::English()).empty());
  EXPECT_EQ(session.TemplateNames, session_.TemplateNames);
}

TEST_F(SettingsIoTest, TellsABadNumberOfTemplates) {
  for (const char* bad : {"-1", "x", "40000"}) {
    store_.Save("VELKTemplates", "General", "NumberOfTemplates", bad);
    EXPECT_EQ(LoadSettings(session_, store_, test::English()).size(), 1U) << bad;
    EXPECT_EQ(session_.TemplateNames.size(), 1U) << bad;
  }
}

TEST_F(SettingsIoTest, KeepsAFileWithAValueOfTheWrongTypeAndTellsItOnce) {
  for (const SettingsRow& row : SettingsRows({1}, {1})) {
    if (row.kind == Kind::Text) continue;
    const MemoryFolder folder;
    const std::string bytes = "[Formulae]\nNumberOfFormulae=1\n[" + row.section + "]\n" + row.key + "=abc\n";
    folder.Write("VELK2.ini", bytes);
    Session session;
    {
      SettingsStore store(folder.Path());
      EXPECT_EQ(LoadSettings(session, store, test::English()).size(), 2U) << row.Name();
      EXPECT_EQ(folder.Read("VELK2.ini.damaged"), bytes) << row.Name();
      SaveSettings(session, store);
    }
    SettingsStore again(folder.Path());
    EXPECT_TRUE(LoadSettings(session, again, test::English()).empty()) << row.Name();
  }
}

TEST_F(SettingsIoTest, TellsABadNumberOfParametersOnce) {
  folder_.Write("VELK2.ini", "[Parameters]\nNumberOfParameters=1x\n");
  EXPECT_EQ(LoadSettings(session_, store_, test::English()).size(), 2U);
  SaveSettings(session_, store_);
  SettingsStore again(folder_.Path());
  EXPECT_TRUE(LoadSettings(session_, again, test::English()).empty());
  EXPECT_EQ(session_.NumberOfParameters, 1);
}

TEST_F(SettingsIoTest, FindsTheTemplatesWhoseNumberIsLost) {
  const std::string names = "TheTemplateName1=One\nTheTemplateName2=Two\nTheTemplateName4=Four\n";
  for (const std::string count : {"", "NumberOfTemplates=x\n", "NumberOfTemplates=-1\n"}) {
    const MemoryFolder folder;
    folder.Write("VELKTemplates.ini", "[General]\n" + count + names);
    SettingsStore store(folder.Path());
    Session session;
    EXPECT_EQ(LoadSettings(session, store, test::English()).size(), count.empty() ? 0U : 2U);
    EXPECT_EQ(session.TemplateNames, (std::vector<std::string>{"", "One", "Two"})) << count;
    EXPECT_EQ(folder.Has("VELKTemplates.ini.damaged"), !count.empty());
    SaveSettings(session, store);
    EXPECT_EQ(store.Get("VELKTemplates", "General", "NumberOfTemplates", ""), "2");
  }
}

TEST_F(SettingsIoTest, TellsADamagedFileThatCanNotBeKept) {
  folder_.Write("VELK2.ini", "[General]\nnonsense\n");
  folder_.Write("VELK2.ini.damaged", "another");
  std::filesystem::permissions(folder_.Path(), std::filesystem::perms(0555));
  {
    const test::Unprivileged user;
    SettingsStore store(folder_.Path());
    const std::vector<std::string> problems = InEnglish(LoadSettings(session_, store, test::English()));
    ASSERT_EQ(problems.size(), 2U);
    EXPECT_EQ(problems[1].find(folder_.Path("VELK2.ini.damaged-2") + ": "), 0U) << problems[1];
    EXPECT_THROW(SaveSettings(session_, store), RuntimeError);
  }
  std::filesystem::permissions(folder_.Path(), std::filesystem::perms(0700));
  EXPECT_EQ(folder_.Read("VELK2.ini"), "[General]\nnonsense\n");
}

TEST_F(SettingsIoTest, KeepsSectionsOfOtherWorkByteForByte) {
  const std::string foreign = "[OPCdata]\n Server=Some.Server.1\n\n; theirs\n[ImportLive]\nColumns = a,b\n";
  folder_.Write("VELK2.ini", foreign);
  SettingsStore store(folder_.Path());
  EXPECT_TRUE(LoadSettings(session_, store, test::English()).empty());
  SaveSettings(session_, store);
  EXPECT_NE(folder_.Read("VELK2.ini").find(foreign), std::string::npos);
}

TEST_F(SettingsIoTest, KeepsKeysOfItsSectionsThatItDoesNotKnow) {
  Store("Protocol", "PortDevice3", "/dev/ttyUSB7");
  LoadSettings(session_, store_, test::English());
  SaveSettings(session_, store_);
  EXPECT_EQ(Stored("Protocol", "PortDevice3"), "/dev/ttyUSB7");
}

TEST_F(SettingsIoTest, WritesTheSectionsInTheirOrder) {
  LoadWith("Formulae", "NumberOfFormulae", "2");
  const MemoryFolder folder;
  SettingsStore store(folder.Path());
  SaveSettings(session_, store);
  std::vector<std::string> expected = {"General", "PrintGraph", "Protocol"};
  for (int i = 1; i <= 64; ++i) expected.push_back("Parameter" + std::to_string(i));
  expected.emplace_back("Playback");
  for (int i = 1; i <= 64; ++i) expected.push_back("PlaybackParameter" + std::to_string(i));
  for (const char* section : {"Formulae", "Formula1", "Formula2"}) expected.emplace_back(section);
  std::vector<std::string> written;
  std::istringstream lines(folder.Read("VELK2.ini"));
  for (std::string line; std::getline(lines, line);)
    if (line.starts_with('[')) written.push_back(line.substr(1, line.size() - 2));
  EXPECT_EQ(written, expected);
}

TEST_F(SettingsIoTest, PutsTheSettingsOnTheDisk) {
  LoadSettings(session_, store_, test::English());
  session_.PortNumber = 3;
  SaveSettings(session_, store_);
  SettingsStore again(folder_.Path());
  EXPECT_EQ(again.Get("VELK2", "Protocol", "PortNumber", ""), "3");
}

TEST_F(SettingsIoTest, RaisesTheErrorOfAStoreThatCanNotBeWritten) {
  folder_.Write("blocked", "");
  SettingsStore store(folder_.Path("blocked/store"));
  LoadSettings(session_, store, test::English());
  EXPECT_THROW(SaveSettings(session_, store), RuntimeError);
}

TEST_F(SettingsIoTest, SavesASessionWhoseFormulasAreFewerThanCounted) {
  LoadSettings(session_, store_, test::English());
  session_.NumberOfFormulae = 5;
  SaveSettings(session_, store_);
  EXPECT_EQ(Stored("Formula1", "name"), "(none)");
}

}  // namespace
}  // namespace velk
