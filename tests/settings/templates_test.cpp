#include "settings/templates.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "base/errors.h"
#include "instruments/table/protocols.h"
#include "settings/settings_io.h"
#include "support/fake_graphs.h"
#include "support/in_english.h"
#include "support/memory_folder.h"
#include "support/raises.h"
#include "support/settings_rows.h"

namespace velk {
namespace {

using test::MemoryFolder;
using test::Raised;
using test::SettingsRow;
using test::SettingsRows;

/// The keys that stay with the program when a template is saved or loaded.
const std::set<std::string> kLiveOnly = {
    "General/Current_language", "General/intFontSize",        "General/MaximumTime",        "General/pixelslength",
    "General/pixeldivide",      "PrintGraph/TextInserted",    "General/CompanyLogoVisible", "Protocol/daqIPAddress",
    "Protocol/daqHTML",         "General/FitGraphsToWindows", "General/NightColours",       "General/MainWindowPlace",
    "General/LargeValues"};

bool IsHeld(const SettingsRow& row) {
  return kLiveOnly.count(row.Name()) == 0;
}

class TemplatesTest : public testing::Test {
 protected:
  std::string StoredIn(const std::string& application, const std::string& section, const std::string& key) {
    return store_.Get(application, section, key, "(none)");
  }

  /// Gives the session the other value of every row, by way of the live settings.
  void FillSession(const std::vector<SettingsRow>& rows, int formulas) {
    store_.Save("VELK2", "Formulae", "NumberOfFormulae", std::to_string(formulas));
    store_.Save("VELK2", "Parameters", "NumberOfParameters", "18");
    for (const SettingsRow& row : rows) store_.Save("VELK2", row.section, row.key, row.other);
    ASSERT_TRUE(LoadSettings(session_, store_, test::English()).empty());
  }

  /// The text of the error that loading a template raises.
  std::string LoadError(const std::string& name) {
    try {
      LoadTemplate(session_, store_, test::English(), name);
    } catch (const RuntimeError& error) {
      return error.what();
    }
    return "(none)";
  }

  MemoryFolder folder_;
  SettingsStore store_{folder_.Path()};
  Session session_;
};

TEST_F(TemplatesTest, HoldEveryKeyButThoseOfTheProgramItself) {
  const std::vector<SettingsRow> rows = SettingsRows({1, 2, 63, 64}, {});
  FillSession(rows, 0);
  SaveTemplate(session_, store_, "Job");
  for (const SettingsRow& row : rows) {
    EXPECT_EQ(StoredIn("VELKJob", row.section, row.key), IsHeld(row) ? row.other : "(none)") << row.Name();
  }
  EXPECT_EQ(StoredIn("VELKJob", "Parameters", "NumberOfParameters"), "18");
  EXPECT_EQ(StoredIn("VELKJob", "Formulae", "NumberOfFormulae"), "0");
  EXPECT_EQ(StoredIn("VELKJob", "General", "intMaxNoParamsInForm"), "(none)");
}

TEST_F(TemplatesTest, StayInNoMemoryBehindTheirSave) {
  LoadSettings(session_, store_, test::English());
  session_.TheTimeOut = 8;
  SaveTemplate(session_, store_, "Job");
  ASSERT_NE(folder_.Read("VELKJob.ini").find("TheTimeOut=8\n"), std::string::npos);
  folder_.Write("VELKJob.ini", "[General]\nTheTimeOut=9\n");
  EXPECT_EQ(StoredIn("VELKJob", "General", "TheTimeOut"), "9");
}

TEST_F(TemplatesTest, GiveEveryKeyBackOnAnotherMachineAndLeaveTheRest) {
  const std::vector<SettingsRow> rows = SettingsRows({1, 2, 63, 64}, {});
  FillSession(rows, 0);
  SaveTemplate(session_, store_, "Job");

  const MemoryFolder machine;
  machine.Write("VELKJob.ini", folder_.Read("VELKJob.ini"));
  SettingsStore store(machine.Path());
  Session session;
  ASSERT_TRUE(LoadSettings(session, store, test::English()).empty());
  LoadTemplate(session, store, test::English(), "Job");
  for (const SettingsRow& row : rows) EXPECT_EQ(row.field(session), IsHeld(row) ? row.other : row.preset) << row.Name();
  EXPECT_EQ(session.NumberOfParameters, 18);
}

TEST_F(TemplatesTest, LeaveWhatTheyDoNotHoldEvenWhereItStandsInTheFile) {
  LoadSettings(session_, store_, test::English());
  session_.TextInserted = true;
  session_.daqIPAddress = "10.1.1.1";
  session_.daqHTML = "mine.htm";
  session_.MaximumTime = 7200;
  session_.pixelslength = 60;
  session_.pixeldivide = 30;
  session_.intFontSize = 17;
  session_.Current_language = "Russian";
  session_.CompanyLogoVisible = false;
  for (const SettingsRow& row : SettingsRows({1}, {})) store_.Save("VELKJob", row.section, row.key, row.preset);
  LoadTemplate(session_, store_, test::English(), "Job");
  EXPECT_TRUE(session_.TextInserted);
  EXPECT_EQ(session_.daqIPAddress, "10.1.1.1");
  EXPECT_EQ(session_.daqHTML, "mine.htm");
  EXPECT_EQ(session_.MaximumTime, 7200);
  EXPECT_EQ(session_.pixelslength, 60);
  EXPECT_EQ(session_.pixeldivide, 30);
  EXPECT_EQ(session_.intFontSize, 17);
  EXPECT_EQ(session_.Current_language, "Russian");
  EXPECT_FALSE(session_.CompanyLogoVisible);
}

TEST_F(TemplatesTest, HoldTheChannelsOfTheUnitWhileAFileIsPlayedBack) {
  session_.NumberOfParameters = 7;  // the file's
  session_.UnitParameters = 3;
  SaveTemplate(session_, store_, "Job");
  EXPECT_EQ(StoredIn("VELKJob", "Parameters", "NumberOfParameters"), "3");
  EXPECT_EQ(session_.NumberOfParameters, 7);
}

TEST_F(TemplatesTest, ReadAMissingKeyAsItsPreset) {
  FillSession(SettingsRows({1, 64}, {1}), 1);
  store_.Save("VELKJob", "General", "TheTimeOut", "9");
  LoadTemplate(session_, store_, test::English(), "Job");
  EXPECT_EQ(session_.TheTimeOut, 9);
  EXPECT_EQ(session_.NumberOfParameters, 1);
  EXPECT_EQ(session_.NumberOfFormulae, 0);
  EXPECT_EQ(session_.AdditionalParameters.size(), 1U);
  EXPECT_EQ(session_.Formula.size(), 1U);
  for (const SettingsRow& row : SettingsRows({1, 64}, {})) {
    if (!IsHeld(row) || row.key == "TheTimeOut") continue;
    EXPECT_EQ(row.field(session_), row.preset) << row.Name();
  }
}

TEST_F(TemplatesTest, StoreWrappingOfAnAdditionalParameterAsItsOffset) {
  FillSession(SettingsRows({1}, {1, 2}), 2);
  session_.AdditionalParameters[1].Offset = 3.5;
  session_.AdditionalParameters[1].Wrapping = true;
  session_.AdditionalParameters[2].Offset = 4.5;
  session_.AdditionalParameters[2].Wrapping = false;
  SaveTemplate(session_, store_, "Job");
  EXPECT_EQ(StoredIn("VELKJob", "Formula1", "Offset"), "True");
  EXPECT_EQ(StoredIn("VELKJob", "Formula1", "Wrapping"), "(none)");
  EXPECT_EQ(StoredIn("VELKJob", "Formula2", "Offset"), "False");
  EXPECT_EQ(StoredIn("VELKJob", "Formula2", "Wrapping"), "(none)");
  for (const SettingsRow& row : SettingsRows({}, {1, 2})) {
    if (!row.section.starts_with("Formula") || row.key == "Offset" || row.key == "Wrapping") continue;
    EXPECT_EQ(StoredIn("VELKJob", row.section, row.key), row.other) << row.Name();
  }
  EXPECT_EQ(StoredIn("VELKJob", "Parameter1", "Wrapping"), "False") << "input channels are stored rightly";
  EXPECT_EQ(StoredIn("VELKJob", "Parameter1", "Offset"), "-2.75");

  SaveSettings(session_, store_);
  EXPECT_EQ(StoredIn("VELK2", "Formula1", "Offset"), "3.5") << "and so are the live settings";
  EXPECT_EQ(StoredIn("VELK2", "Formula1", "Wrapping"), "True");
}

TEST_F(TemplatesTest, WithAdditionalParametersCanNotBeLoaded) {
  FillSession(SettingsRows({1}, {1}), 1);
  SaveTemplate(session_, store_, "Job");
  EXPECT_EQ(LoadError("Job"), "Formula1/Offset: " + ErrorText(ErrorNumber::TypeMismatch).English() + " (\"True\")");
  EXPECT_EQ(Raised([&] { LoadTemplate(session_, store_, test::English(), "Job"); }), ErrorNumber::TypeMismatch);
}

TEST_F(TemplatesTest, LoadAdditionalParametersWhereTheOffsetWasMended) {
  FillSession(SettingsRows({1}, {1}), 1);
  SaveTemplate(session_, store_, "Job");
  store_.Save("VELKJob", "Formula1", "Offset", "2.5");
  LoadSettings(session_, store_, test::English());
  LoadTemplate(session_, store_, test::English(), "Job");
  EXPECT_EQ(session_.NumberOfFormulae, 1);
  EXPECT_EQ(session_.Formula.at(1), "{Flow} * 2");
  EXPECT_EQ(session_.AdditionalParameters.at(1).Offset, 2.5);
  EXPECT_FALSE(session_.AdditionalParameters.at(1).Wrapping) << "which is not stored";
}

TEST_F(TemplatesTest, LeaveTheSessionAsItWasWhereAnyValueCanNotBeRead) {
  const std::vector<SettingsRow> rows = SettingsRows({1, 64}, {1});
  FillSession(rows, 1);
  test::FakeGraphWindow window;
  session_.GraphForms[3] = &window;
  session_.TemplateNames = {"", "Job"};
  for (const SettingsRow& bad : rows) {
    if (!IsHeld(bad) || bad.kind == test::Kind::Text) continue;
    const MemoryFolder folder;
    SettingsStore store(folder.Path());
    store.Save("VELKJob", "Formulae", "NumberOfFormulae", "1");
    store.Save("VELKJob", "Parameters", "NumberOfParameters", "2");
    store.Save("VELKJob", bad.section, bad.key, "abc");
    std::string told;
    try {
      LoadTemplate(session_, store, test::English(), "Job");
    } catch (const RuntimeError& error) {
      told = error.what();
    }
    EXPECT_EQ(told.find(bad.Name() + ": "), 0U) << told;
    for (const SettingsRow& row : rows) ASSERT_EQ(row.field(session_), row.other) << row.Name() << bad.Name();
    ASSERT_EQ(session_.NumberOfParameters, 18);
    ASSERT_EQ(session_.GraphForms[3], &window);
    ASSERT_EQ(session_.TemplateNames.size(), 2U);
  }
}

TEST_F(TemplatesTest, TellTheFirstOfManyBadKeys) {
  store_.Save("VELKJob", "Playback", "PlaybackSpeed", "x");
  store_.Save("VELKJob", "General", "TheTimeOut", "99999");
  EXPECT_EQ(LoadError("Job"), "General/TheTimeOut: " + ErrorText(ErrorNumber::Overflow).English() + " (\"99999\")");
}

TEST_F(TemplatesTest, ThatAreDamagedAreNotLoadedByHalves) {
  LoadSettings(session_, store_, test::English());
  session_.TheTimeOut = 8;
  folder_.Write("VELKJob.ini", "[General]\nTheTimeOut=9\nnonsense\n");
  for (int attempt = 0; attempt < 2; ++attempt) {
    EXPECT_EQ(Raised([&] { LoadTemplate(session_, store_, test::English(), "Job"); }), ErrorNumber::DeviceIOError);
    EXPECT_EQ(LoadError("Job"), folder_.Path("VELKJob.ini") + ": line 3 can't be read");
    EXPECT_EQ(session_.TheTimeOut, 8);
  }
  EXPECT_TRUE(LoadSettings(session_, store_, test::English()).empty()) << "the live settings are not blamed";

  SaveTemplate(session_, store_, "Job");
  EXPECT_TRUE(folder_.Has("VELKJob.ini.damaged"));
  LoadTemplate(session_, store_, test::English(), "Job");
}

TEST_F(TemplatesTest, ThatAreNotThereAreNotReadAsPresets) {
  LoadSettings(session_, store_, test::English());
  session_.TheTimeOut = 8;
  EXPECT_EQ(Raised([&] { LoadTemplate(session_, store_, test::English(), "Job"); }), ErrorNumber::FileNotFound);
  EXPECT_EQ(session_.TheTimeOut, 8);
}

TEST_F(TemplatesTest, TakeOverTheConstantsOfTheUnitThatTheyName) {
  LoadSettings(session_, store_, test::English());
  store_.Save("VELKJob", "Protocol", "SerialData", "orben version 4");
  store_.Save("VELKJob", "Protocol", "BaudRate", "300");
  LoadTemplate(session_, store_, test::English(), "Job");
  EXPECT_EQ(session_.SerialData, "KESTA version 4");
  EXPECT_EQ(session_.BaudRate, 19200);
  EXPECT_EQ(session_.Terminator, "\r\n");
  EXPECT_EQ(session_.NumberOfChannels, 18);
  EXPECT_TRUE(session_.IsOwnUnit);
}

TEST_F(TemplatesTest, ReadTheOlderNameOfTheFormattedProtocol) {
  store_.Save("VELKJob", "Protocol", "SerialData", "formatted");
  LoadTemplate(session_, store_, test::English(), "Job");
  EXPECT_EQ(session_.SerialData, "formatted and at regular intervals");
}

TEST_F(TemplatesTest, TakeAnyNameAndKeepThemApart) {
  const std::vector<std::string> names = {"Job",       "job",       "JOB",
                                          "/",         "..",        "../../etc",
                                          ".",         " ",         "a/b",
                                          "%2F",       "%",         "Цементирование № 1",
                                          "x.ini",     "a\\b:c*",   "tab\tand\nline",
                                          "[General]", "=",         "\"quoted\"",
                                          "2",         "Templates", "Job.ini.damaged",
                                          "\x01\x7F",  "%00"};
  LoadSettings(session_, store_, test::English());
  std::int16_t mark = 100;
  for (const std::string& name : names) {
    session_.TheTimeOut = ++mark;
    SaveTemplate(session_, store_, name);
    session_.TemplateNames.push_back(name);
  }
  session_.TheTimeOut = 5;
  SaveSettings(session_, store_);
  EXPECT_EQ(folder_.Count(), names.size() + 2) << "a file for each, beside the live settings and the list";

  SettingsStore store(folder_.Path());
  Session session;
  ASSERT_TRUE(LoadSettings(session, store, test::English()).empty());
  EXPECT_EQ(session.TheTimeOut, 5) << "no template took the place of the live settings";
  ASSERT_EQ(session.TemplateNames, session_.TemplateNames);
  mark = 100;
  for (const std::string& name : names) {
    LoadTemplate(session, store, test::English(), name);
    EXPECT_EQ(session.TheTimeOut, ++mark) << name;
  }
  while (session.TemplateNames.size() > 1)
    DeleteTemplate(session, store, test::English(), session.TemplateNames.back());
  EXPECT_EQ(session.TheTimeOut, 5);
  EXPECT_TRUE(folder_.Has("VELK2.ini"));
  EXPECT_EQ(folder_.Count(), 2U);
}

TEST_F(TemplatesTest, RefuseANameThatNoFileCanHave) {
  LoadSettings(session_, store_, test::English());
  SaveSettings(session_, store_);
  // Encoded, each of these is longer than the 255 bytes of a file name.
  for (const std::string& name : {std::string(300, 'x'), std::string(100, '/')}) {
    EXPECT_EQ(Raised([&] { SaveTemplate(session_, store_, name); }), ErrorNumber::BadFileName);
    EXPECT_EQ(Raised([&] { LoadTemplate(session_, store_, test::English(), name); }), ErrorNumber::DeviceIOError);
    session_.TemplateNames = {"", name};
    EXPECT_TRUE(DeleteTemplate(session_, store_, test::English(), name).empty())
        << "a list that holds it can be cleared of it";
    EXPECT_EQ(session_.TemplateNames.size(), 1U);
  }
  SaveSettings(session_, store_);
  EXPECT_EQ(folder_.Count(), 2U);
}

TEST_F(TemplatesTest, TakeALongNameThatStillFits) {
  const std::string name(100, 'x');
  LoadSettings(session_, store_, test::English());
  session_.TheTimeOut = 77;
  SaveTemplate(session_, store_, name);
  session_.TheTimeOut = 5;
  LoadTemplate(session_, store_, test::English(), name);
  EXPECT_EQ(session_.TheTimeOut, 77);
}

TEST_F(TemplatesTest, AreDeletedWithTheGapInTheListClosed) {
  LoadSettings(session_, store_, test::English());
  for (const char* name : {"One", "Two", "Three"}) {
    SaveTemplate(session_, store_, name);
    session_.TemplateNames.emplace_back(name);
  }
  SaveSettings(session_, store_);
  EXPECT_TRUE(DeleteTemplate(session_, store_, test::English(), "Two").empty());
  EXPECT_EQ(session_.TemplateNames, (std::vector<std::string>{"", "One", "Three"}));
  EXPECT_FALSE(folder_.Has("VELKTwo.ini"));
  EXPECT_TRUE(folder_.Has("VELKOne.ini"));

  SettingsStore again(folder_.Path());
  EXPECT_EQ(again.Get("VELKTemplates", "General", "NumberOfTemplates", ""), "2");
  EXPECT_EQ(again.Get("VELKTemplates", "General", "TheTemplateName1", ""), "One");
  EXPECT_EQ(again.Get("VELKTemplates", "General", "TheTemplateName2", ""), "Three");
  EXPECT_FALSE(again.Find("VELKTemplates", "General", "TheTemplateName3").has_value());
}

TEST_F(TemplatesTest, ThatWereLoadedAreGoneFromTheSessionOnceDeleted) {
  LoadSettings(session_, store_, test::English());
  session_.CurrentFont = "Live";
  SaveSettings(session_, store_);
  session_.CurrentFont = "Template";
  session_.Parameters[7].Gain = 7;
  session_.NumberOfParameters = 9;
  SaveTemplate(session_, store_, "Job");
  session_.TemplateNames.emplace_back("Job");
  LoadTemplate(session_, store_, test::English(), "Job");
  ASSERT_EQ(session_.NumberOfParameters, 9);
  DeleteTemplate(session_, store_, test::English(), "Job");
  EXPECT_EQ(session_.CurrentFont, "Live");
  EXPECT_EQ(session_.Parameters[7].Gain, 1);
  EXPECT_EQ(session_.NumberOfParameters, 1);
  EXPECT_EQ(session_.TemplateNames.size(), 1U);
}

TEST_F(TemplatesTest, AreReplacedAsAWhole) {
  FillSession(SettingsRows({1}, {1, 2}), 2);
  SaveTemplate(session_, store_, "Job");
  session_.NumberOfFormulae = 0;
  session_.AdditionalParameters.resize(1);
  session_.Formula.resize(1);
  SaveTemplate(session_, store_, "Job");
  LoadTemplate(session_, store_, test::English(), "Job");
  EXPECT_EQ(session_.NumberOfFormulae, 0) << "and can be loaded again";
}

TEST_F(TemplatesTest, OfTwoProgramsOnOneFolderAreTheOnesWrittenLast) {
  SettingsStore other(folder_.Path());
  Session session;
  LoadSettings(session_, store_, test::English());
  LoadSettings(session, other, test::English());
  session_.TheTimeOut = 11;
  SaveTemplate(session_, store_, "Job");
  session.TheTimeOut = 22;
  SaveTemplate(session, other, "Job");
  session_.TheTimeOut = 5;
  LoadTemplate(session_, store_, test::English(), "Job");
  EXPECT_EQ(session_.TheTimeOut, 22) << "the file is read again";

  session_.TheTimeOut = 33;
  SaveTemplate(session_, store_, "Job");
  LoadTemplate(session, other, test::English(), "Job");
  EXPECT_EQ(session.TheTimeOut, 33);
  EXPECT_EQ(folder_.Count(), 1U) << "no half file is left";
}

TEST_F(TemplatesTest, OfTwoProgramsOnOneFolderAreListedByTheOneThatSavedLast) {
  SettingsStore other(folder_.Path());
  Session session;
  LoadSettings(session_, store_, test::English());
  LoadSettings(session, other, test::English());
  for (int round = 0; round < 20; ++round) {
    session_.TheTimeOut = 11;
    session_.TemplateNames = {"", "Mine"};
    SaveSettings(session_, store_);
    session.TheTimeOut = 22;
    session.TemplateNames = {"", "Theirs"};
    SaveSettings(session, other);

    SettingsStore third(folder_.Path());
    Session seen;
    EXPECT_TRUE(LoadSettings(seen, third, test::English()).empty());
    EXPECT_EQ(seen.TemplateNames, session.TemplateNames);
    EXPECT_EQ(seen.TheTimeOut, 22);
  }
}

TEST_F(TemplatesTest, FailToSaveWhereTheFolderCanNotBeWritten) {
  folder_.Write("blocked", "");
  SettingsStore store(folder_.Path("blocked/store"));
  LoadSettings(session_, store, test::English());
  EXPECT_THROW(SaveTemplate(session_, store, "Job"), RuntimeError);
}

}  // namespace
}  // namespace velk
