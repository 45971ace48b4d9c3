#include "settings/edit_settings.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <optional>
#include <string>
#include <vector>

#include "platform/settings/settings.h"
#include "settings/settings_io.h"
#include "settings/templates.h"
#include "settings/user_options.h"
#include "settings/windows/edit_settings_commands.h"
#include "support/fake_clock.h"
#include "support/file_size_limit.h"
#include "support/host.h"
#include "support/memory_folder.h"
#include "support/scripted_dialogs.h"
#include "support/window_script.h"

namespace velk {
namespace {

using Names = std::vector<std::string>;

constexpr const char* kReplaces = "Loading this template replaces:";

class EditSettingsTest : public testing::Test {
 protected:
  EditSettingsTest() {
    LoadSettings(session_, store_, test::English());
    SaveSettings(session_, store_);
  }

  /// Chooses in the list that comes next.
  void Choose(std::optional<std::string> name) { dialogs_.ExpectChoice("", std::move(name)); }
  /// Loads the template that was chosen in the list.
  void Load() {
    dialogs_.Expect(kReplaces, Answer::Yes);
    mnuEditLoadTemplate_Click(edit_);
  }
  /// Marks groups in ClearSettings and leaves it by O.K.
  void Clear(const std::vector<int>& groups) {
    windows_.Then("ClearSettings", [groups](QDialog& window) {
      for (const int group : groups)
        test::FindControl<QCheckBox>(window, ("Check1_" + std::to_string(group)).c_str())->click();
      test::Click(window, "cmdOK");
    });
    if (!groups.empty()) dialogs_.Expect("These settings go back to what a new program has", Answer::Yes);
    commands_.mnuEditClear_Click();
  }

  static QLineEdit& Option(const QDialog& window, std::size_t i) {
    return *test::FindControl<QLineEdit>(window, ("Text1_" + std::to_string(i)).c_str());
  }
  static UserOptionTexts OptionsIn(const QDialog& window) {
    UserOptionTexts texts;
    for (std::size_t i = 0; i < texts.size(); ++i) texts[i] = Option(window, i).text().toStdString();
    return texts;
  }
  static void Enter(const QDialog& window, const UserOptionTexts& texts) {
    for (std::size_t i = 0; i < texts.size(); ++i) Option(window, i).setText(QString::fromStdString(texts[i]));
  }

  std::string OnDisk(const std::string& application, const std::string& section, const std::string& key) {
    SettingsStore fresh(folder_.Path());
    return fresh.Get(application, section, key, "(none)");
  }

  test::MemoryFolder folder_;
  SettingsStore store_{folder_.Path()};
  Session session_;
  Gate gate_;
  test::FakeClock clock_{gate_};
  test::ScriptedDialogs dialogs_{gate_};
  test::WindowScript windows_;
  Platform platform_{clock_, gate_, dialogs_, store_, test::English()};
  int resets_ = 0;
  int ends_ = 0;
  int offers_ = 0;
  EditSettings edit_{session_, platform_, [this] { ++resets_; }, [this] { ++ends_; }, [this] { ++offers_; }};
  WindowHost host_{dialogs_, test::EnglishWindows()};
  EditSettingsCommands commands_{host_, edit_, [] {}};
};

// --- Templates ---

TEST_F(EditSettingsTest, SavesATemplateUnderANewName) {
  session_.TheTimeOut = 9;
  Choose("Job");
  mnuEditSaveTemplate_Click(edit_);
  ASSERT_EQ(dialogs_.listsAsked.size(), 1U);
  EXPECT_EQ(dialogs_.listsAsked[0].title, "Save Settings Template");
  EXPECT_EQ(dialogs_.listsAsked[0].prompt, "Select or enter the template name");
  EXPECT_TRUE(dialogs_.listsAsked[0].entries.empty());
  EXPECT_TRUE(dialogs_.listsAsked[0].mayEnter);
  EXPECT_EQ(session_.TemplateNames, (Names{"", "Job"}));
  EXPECT_EQ(OnDisk("VELKJob", "General", "TheTimeOut"), "9");
  EXPECT_EQ(OnDisk("VELK2", "General", "TheTimeOut"), "9") << "the live settings are saved, too";
  EXPECT_EQ(OnDisk("VELKTemplates", "General", "NumberOfTemplates"), "1");
  EXPECT_EQ(OnDisk("VELKTemplates", "General", "TheTemplateName1"), "Job");
}

TEST_F(EditSettingsTest, SavesATemplateAgainWithoutASecondName) {
  session_.TemplateNames = {"", "A", "Job"};
  session_.TheTimeOut = 9;
  Choose("Job");
  mnuEditSaveTemplate_Click(edit_);
  EXPECT_EQ(dialogs_.listsAsked[0].entries, (Names{"A", "Job"}));
  EXPECT_EQ(session_.TemplateNames, (Names{"", "A", "Job"}));
  EXPECT_EQ(OnDisk("VELKJob", "General", "TheTimeOut"), "9");
}

TEST_F(EditSettingsTest, TakesANameInAnotherCaseForAnotherTemplate) {
  session_.TemplateNames = {"", "Job"};
  Choose("job");
  mnuEditSaveTemplate_Click(edit_);
  EXPECT_EQ(session_.TemplateNames, (Names{"", "Job", "job"}));
}

TEST_F(EditSettingsTest, OffersANewStartForATemplateWithAnotherProtocolBehindAnOwnUnit) {
  const auto load = [this](const char* protocol) {
    store_.Save("VELKJob", "Protocol", "SerialData", protocol);
    Choose("Job");
    Load();
  };
  session_.TemplateNames = {"", "Job"};
  load("Any Serial Data");
  EXPECT_EQ(offers_, 0) << "no own unit was chosen before";
  load("KESTA version 4");
  EXPECT_EQ(offers_, 0);
  load("Any Serial Data");
  EXPECT_EQ(offers_, 1);
  EXPECT_EQ(resets_, 1);
}

TEST_F(EditSettingsTest, DoesNothingOnCancel) {
  session_.TemplateNames = {"", "Job"};
  session_.TheTimeOut = 9;
  const std::size_t files = folder_.Count();
  for (int i = 0; i < 4; ++i) Choose(std::nullopt);
  mnuEditSaveTemplate_Click(edit_);
  mnuEditLoadTemplate_Click(edit_);
  mnuEditDeleteTemplate_Click(edit_);
  windows_.ThenClick("ClearSettings", "cmdCancel");
  commands_.mnuEditClear_Click();
  windows_.ThenClick("frmUserOptions", "cmdCancel");
  commands_.mnuEditUserOptions_Click();
  mnuEditLanguage_Click(edit_);
  EXPECT_EQ(dialogs_.listsAsked.size(), 4U);
  EXPECT_EQ(folder_.Count(), files);
  EXPECT_EQ(OnDisk("VELK2", "General", "TheTimeOut"), "5");
  EXPECT_EQ(session_.TheTimeOut, 9);
  EXPECT_EQ(session_.TemplateNames, (Names{"", "Job"}));
  EXPECT_EQ(resets_, 0);
  EXPECT_EQ(ends_, 0);
}

TEST_F(EditSettingsTest, TellsANameThatIsTooLongAndDoesNotListIt) {
  Choose(std::string(300, 'x'));
  dialogs_.Expect("The template name is too long - mnuEditSaveTemplate_Click", Answer::Cancel);
  mnuEditSaveTemplate_Click(edit_);
  EXPECT_EQ(session_.TemplateNames.size(), 1U);
  SaveSettings(session_, store_);
}

TEST_F(EditSettingsTest, ForgetsATemplateThatCouldNotBeWritten) {
  Choose("Job");
  session_.TheTimeOut = 9;
  dialogs_.Expect(" - mnuEditSaveTemplate_Click", Answer::Cancel);
  {
    const test::FileSizeLimit full(0);
    mnuEditSaveTemplate_Click(edit_);
  }
  EXPECT_EQ(session_.TemplateNames.size(), 1U);
  SaveSettings(session_, store_);
  EXPECT_FALSE(folder_.Has("VELKJob.ini")) << "nothing that is in no list is written later";
}

TEST_F(EditSettingsTest, KeepsTheOldTemplateWhereTheNewOneCouldNotBeWritten) {
  Choose("Job");
  session_.TheTimeOut = 9;
  mnuEditSaveTemplate_Click(edit_);
  session_.TheTimeOut = 7;
  Choose("Job");
  dialogs_.Expect(" - mnuEditSaveTemplate_Click", Answer::Cancel);
  {
    const test::FileSizeLimit full(0);
    mnuEditSaveTemplate_Click(edit_);
  }
  Choose("Job");
  Load();
  EXPECT_EQ(session_.TheTimeOut, 9);
  EXPECT_EQ(session_.TemplateNames, (Names{"", "Job"}));
}

TEST_F(EditSettingsTest, LoadsATemplate) {
  session_.TheTimeOut = 9;
  SaveTemplate(session_, store_, "Job");
  session_.TheTimeOut = 5;
  session_.TemplateNames = {"", "A", "Job"};
  Choose("Job");
  Load();
  EXPECT_EQ(dialogs_.listsAsked[0].title, "Load Settings Template");
  EXPECT_EQ(dialogs_.listsAsked[0].prompt, "Select the template to load");
  EXPECT_EQ(dialogs_.listsAsked[0].entries, (Names{"A", "Job"}));
  EXPECT_FALSE(dialogs_.listsAsked[0].mayEnter);
  EXPECT_EQ(session_.TheTimeOut, 9);
  EXPECT_EQ(resets_, 0) << "only own units have their connection reset";
}

TEST_F(EditSettingsTest, NamesWhatATemplateReplacesAndKeepsItOnNo) {
  session_.TheTimeOut = 9;
  SaveTemplate(session_, store_, "Job");
  session_.TheTimeOut = 5;
  session_.SerialData = "KESTA version 3";
  session_.NumberOfParameters = 18;
  session_.NumberOfFormulae = 2;
  session_.TemplateNames = {"", "Job"};
  Choose("Job");
  dialogs_.Expect(
      "Loading this template replaces:\n    Protocol: KESTA version 3\n    Channels: 18\n"
      "    Additional parameters with their formulas: 2\nLoad it now?",
      Answer::No);
  mnuEditLoadTemplate_Click(edit_);
  EXPECT_TRUE(dialogs_.shown.back().safeDefault);
  EXPECT_EQ(session_.TheTimeOut, 5);
  EXPECT_EQ(session_.NumberOfParameters, 18);
}

TEST_F(EditSettingsTest, LoadsATemplateThatAnEditorLeftWithoutAnEndInItsLastLineAndSaysSo) {
  session_.TemplateNames = {"", "Job"};
  folder_.Write("VELKJob.ini", "[General]\nTheTimeOut=9");
  Choose("Job");
  dialogs_.Expect(kReplaces, Answer::Yes);
  dialogs_.Expect("VELKJob.ini: the last line has no end; the values are used", Answer::Ok);
  mnuEditLoadTemplate_Click(edit_);
  EXPECT_EQ(session_.TheTimeOut, 9);
}

TEST_F(EditSettingsTest, SaysThatATemplateWithAdditionalParametersIsNotForLoading) {
  session_.NumberOfFormulae = 1;
  session_.AdditionalParameters.resize(2);
  session_.Formula.resize(2);
  Choose("Job");
  dialogs_.Expect("can't be loaded again", Answer::Ok);
  mnuEditSaveTemplate_Click(edit_);
  EXPECT_EQ(session_.TemplateNames, (Names{"", "Job"}));
}

TEST_F(EditSettingsTest, FindsReadyMadeTemplatesAtAFirstStart) {
  const test::MemoryFolder empty;
  SettingsStore store(empty.Path());
  Session session;
  LoadSettings(session, store, test::English());
  AddReadyMadeTemplates(session, store, test::English());
  EXPECT_EQ(session.TemplateNames,
            (Names{"", "Formatted lines (blank, CR)", "Formatted lines (comma, CR LF)", "Any serial lines"}));
  struct Entry {
    const char* serialData;
    const char* delimiter;
    const char* terminator;
  };
  constexpr Entry kEntries[] = {{"formatted and at regular intervals", " ", "\r"},
                                {"formatted and at regular intervals", ",", "\r\n"},
                                {"Any Serial Data", " ", "\n"}};
  for (int i = 0; i < 3; ++i) {
    const std::string name = session.TemplateNames[static_cast<std::size_t>(i) + 1];
    LoadTemplate(session, store, test::English(), name);
    EXPECT_EQ(session.SerialData, kEntries[i].serialData) << name;
    EXPECT_EQ(session.Delimiter, kEntries[i].delimiter) << name;
    EXPECT_EQ(session.Terminator, kEntries[i].terminator) << name;
    EXPECT_EQ(session.NumberOfParameters, 4) << name;
    EXPECT_EQ(session.Parameters[4].name, "Parameter 4") << name;
    EXPECT_TRUE(session.Parameters[4].GraphVisible) << name;
    EXPECT_EQ(session.Parameters[4].FormIndex, 4) << name;
    EXPECT_EQ(session.Parameters[4].Gain, 1) << name;
    EXPECT_EQ(session.Parameters[4].max, 100.0) << name;
  }
}

TEST_F(EditSettingsTest, KeepsReadyMadeTemplatesAwayThatWereDeleted) {
  AddReadyMadeTemplates(session_, store_, test::English());
  EXPECT_EQ(session_.TemplateNames, (Names{""})) << "the list was saved without one: this is no first start";
}

TEST_F(EditSettingsTest, ResetsTheConnectionOfEachOwnUnitOnceItsConstantsAreSet) {
  edit_.resetConnection = [this] {
    ++resets_;
    EXPECT_EQ(session_.BaudRate, 19200);
  };
  int expected = 0;
  for (const char* unit : {"KESTA version 3", "KESTA version 4", "KESTA version 5", "LUMO version A", "LUMO version B",
                           "orben version 3", "orben version 4"}) {
    store_.Save("VELKJob", "Protocol", "SerialData", unit);
    Choose("Job");
    Load();
    EXPECT_EQ(resets_, ++expected) << unit;
  }
  store_.Save("VELKJob", "Protocol", "SerialData", "sent when requested");
  Choose("Job");
  Load();
  EXPECT_EQ(resets_, expected);
}

TEST_F(EditSettingsTest, TellsTheKeyOfATemplateThatCanNotBeLoaded) {
  session_.NumberOfFormulae = 1;
  session_.AdditionalParameters.resize(2);
  session_.Formula.resize(2);
  session_.SerialData = "KESTA version 3";
  SaveTemplate(session_, store_, "Job");
  session_.TheTimeOut = 8;
  Choose("Job");
  dialogs_.Expect(kReplaces, Answer::Yes);
  dialogs_.Expect("Formula1/Offset: Type mismatch (\"False\") - mnuEditLoadTemplate_Click", Answer::Retry);
  dialogs_.Expect("Formula1/Offset: Type mismatch (\"False\") - mnuEditLoadTemplate_Click", Answer::Cancel);
  mnuEditLoadTemplate_Click(edit_);
  EXPECT_EQ(session_.TheTimeOut, 8);
  EXPECT_EQ(resets_, 0);
}

TEST_F(EditSettingsTest, LoadsATemplateThatWasMendedBeforeRetry) {
  store_.Save("VELKJob", "General", "TheTimeOut", "x");
  store_.Flush();
  Choose("Job");
  dialogs_.Expect(kReplaces, Answer::Yes);
  dialogs_.Expect("General/TheTimeOut", Answer::Retry,
                  [this] { folder_.Write("VELKJob.ini", "[General]\nTheTimeOut=9\n"); });
  mnuEditLoadTemplate_Click(edit_);
  EXPECT_EQ(session_.TheTimeOut, 9);
}

TEST_F(EditSettingsTest, DeletesATemplateAndLoadsTheLiveSettings) {
  for (const char* name : {"A", "Job"}) {
    Choose(name);
    mnuEditSaveTemplate_Click(edit_);
  }
  session_.TheTimeOut = 9;
  Choose("Job");
  mnuEditDeleteTemplate_Click(edit_);
  EXPECT_EQ(dialogs_.listsAsked.back().title, "Delete Settings Template");
  EXPECT_EQ(dialogs_.listsAsked.back().prompt, "Select the template to delete");
  EXPECT_EQ(dialogs_.listsAsked.back().entries, (Names{"A", "Job"}));
  EXPECT_FALSE(dialogs_.listsAsked.back().mayEnter);
  EXPECT_EQ(session_.TemplateNames, (Names{"", "A"}));
  EXPECT_EQ(session_.TheTimeOut, 5);
  EXPECT_EQ(OnDisk("VELKJob", "General", "TheTimeOut"), "(none)");
}

TEST_F(EditSettingsTest, TellsWhatCouldNotBeReadAfterADelete) {
  session_.TemplateNames = {"", "Job"};
  store_.Save("VELK2", "General", "TheTimeOut", "x");
  Choose("Job");
  dialogs_.Expect("General/TheTimeOut: Type mismatch", Answer::Ok);
  mnuEditDeleteTemplate_Click(edit_);
  EXPECT_EQ(session_.TheTimeOut, 5);
}

// --- Clear ---

TEST_F(EditSettingsTest, ClearsTheChosenGroups) {
  session_.TheTimeOut = 9;
  session_.BaudRate = 300;
  SaveSettings(session_, store_);
  Clear({0});
  EXPECT_EQ(session_.TheTimeOut, 5);
  EXPECT_EQ(session_.BaudRate, 300);
  EXPECT_EQ(OnDisk("VELK2", "General", "TheTimeOut"), "5");
}

TEST_F(EditSettingsTest, NamesTheGroupsThatGoAndKeepsThemOnNo) {
  session_.TheTimeOut = 9;
  windows_.Then("ClearSettings", [](QDialog& window) {
    for (const char* box : {"Check1_0", "Check1_3"}) test::FindControl<QCheckBox>(window, box)->click();
    EXPECT_FALSE(test::FindControl<QPushButton>(window, "cmdTakeBack")->isEnabled()) << "nothing was cleared yet";
    test::Click(window, "cmdOK");
  });
  dialogs_.Expect("\n    General\n    Parameters: names, units, scales, alarms, graphs\n", Answer::No);
  commands_.mnuEditClear_Click();
  EXPECT_TRUE(dialogs_.shown.back().safeDefault) << "Enter clears nothing";
  EXPECT_EQ(session_.TheTimeOut, 9);
}

TEST_F(EditSettingsTest, TakesBackWhatWasClearedWithWhatNobodyReads) {
  session_.TheTimeOut = 9;
  session_.Parameters[1].name = "Pressure";
  store_.Save("VELK2", "Protocol", "PortDevice1", "/dev/serial/by-id/unit");
  Clear({0, 1, 3});
  EXPECT_EQ(session_.Parameters[1].name, "Parameter 1");
  EXPECT_EQ(store_.Get("VELK2", "Protocol", "PortDevice1", ""), "");
  windows_.ThenClick("ClearSettings", "cmdTakeBack");
  commands_.mnuEditClear_Click();
  EXPECT_EQ(session_.TheTimeOut, 9);
  EXPECT_EQ(session_.Parameters[1].name, "Pressure");
  EXPECT_EQ(OnDisk("VELK2", "Protocol", "PortDevice1"), "/dev/serial/by-id/unit");
  EXPECT_EQ(OnDisk("VELK2", "General", "TheTimeOut"), "9");
}

TEST_F(EditSettingsTest, TakesBackWhatStoodAheadOfTheFirstOfTwoClearings) {
  session_.TheTimeOut = 9;
  session_.Parameters[1].name = "Pressure";
  Clear({0});
  session_.TheTimeOut = 7;
  Clear({0, 3});
  windows_.ThenClick("ClearSettings", "cmdTakeBack");
  commands_.mnuEditClear_Click();
  EXPECT_EQ(session_.TheTimeOut, 9);
  EXPECT_EQ(session_.Parameters[1].name, "Pressure");
  windows_.Then("ClearSettings", [](QDialog& window) {
    EXPECT_FALSE(test::FindControl<QPushButton>(window, "cmdTakeBack")->isEnabled()) << "all of it is back";
    test::Click(window, "cmdCancel");
  });
  commands_.mnuEditClear_Click();
}

TEST_F(EditSettingsTest, LeavesWhatWasSetSinceAClearingThatIsTakenBack) {
  session_.TheTimeOut = 9;
  session_.BaudRate = 300;
  Clear({0});
  session_.BaudRate = 600;
  session_.Parameters[1].name = "Pressure";
  Clear({3});
  windows_.ThenClick("ClearSettings", "cmdTakeBack");
  commands_.mnuEditClear_Click();
  EXPECT_EQ(session_.TheTimeOut, 9);
  EXPECT_EQ(session_.BaudRate, 600);
  EXPECT_EQ(session_.Parameters[1].name, "Pressure") << "it was set behind the first clearing";
  EXPECT_EQ(OnDisk("VELK2", "Protocol", "BaudRate"), "600");
}

TEST_F(EditSettingsTest, TellsInTheLanguageOfTheBoxesWhatCouldNotBeRead) {
  const test::InBrackets language;
  test::ScriptedDialogs boxes(gate_, language);
  Platform platform{clock_, gate_, boxes, store_, language};
  store_.Save("VELK2", "Protocol", "BaudRate", "fast");
  WindowHost host(boxes, test::EnglishWindows());
  EditSettingsCommands commands(host, {session_, platform, [] {}, [] {}, [] {}}, [] {});
  boxes.Expect("Protocol/BaudRate: <Type mismatch> (\"fast\")", Answer::Ok);
  windows_.ThenClick("ClearSettings", "cmdOK");
  commands.mnuEditClear_Click();
}

// --- User options ---

TEST_F(EditSettingsTest, TakesUserOptionsOverAndEnds) {
  windows_.Then("frmUserOptions", [](QDialog& window) {
    EXPECT_EQ(OptionsIn(window), (UserOptionTexts{"120", "15", "3600", "10", "64"}));
    Enter(window, {"60", "30", "7200", "12", "64"});
    test::Click(window, "cmdOK");
  });
  dialogs_.Expect("VELK MUST NOW END for this change to take effect", Answer::Ok, [this] {
    EXPECT_EQ(session_.pixelslength, 60);
    EXPECT_EQ(OnDisk("VELK2", "General", "pixelslength"), "60") << "before the box, which may stand for hours";
    EXPECT_EQ(OnDisk("VELK2", "General", "intFontSize"), "12");
    EXPECT_EQ(ends_, 0);
  });
  commands_.mnuEditUserOptions_Click();
  EXPECT_EQ(session_.pixelslength, 60);
  EXPECT_EQ(session_.pixeldivide, 30);
  EXPECT_EQ(session_.MaximumTime, 7200);
  EXPECT_EQ(session_.intFontSize, 12);
  EXPECT_EQ(ends_, 1);
}

TEST_F(EditSettingsTest, TellsEachUnacceptableOptionAndStaysOpen) {
  for (const char* text : {"Unacceptable values", "Minimum font size is 6", "Maximum font size is 20",
                           "Minimum number of curves per graph is 1"})
    dialogs_.Expect(text, Answer::Ok);
  windows_.Then("frmUserOptions", [](QDialog& window) {
    for (const UserOptionTexts& texts : {UserOptionTexts{"7", "15", "3600", "10", "64"},
                                         {"120", "15", "3600", "5", "64"},
                                         {"120", "15", "3600", "21", "64"},
                                         {"120", "15", "3600", "10", "0"}}) {
      Enter(window, texts);
      test::Click(window, "cmdOK");
      EXPECT_TRUE(window.isVisible());
    }
    window.reject();
  });
  commands_.mnuEditUserOptions_Click();
  for (const ShownMessage& box : dialogs_.shown) EXPECT_EQ(box.icon, BoxIcon::Critical) << box.text;
  EXPECT_EQ(session_.pixelslength, 120);
  EXPECT_EQ(session_.intFontSize, 10);
  EXPECT_EQ(ends_, 0);
}

// --- Language ---

TEST_F(EditSettingsTest, EndsForTheLanguageOfBeforeToo) {
  Choose("English");
  dialogs_.Expect("VELK MUST NOW END for this change to take effect", Answer::Ok);
  mnuEditLanguage_Click(edit_);
  EXPECT_EQ(OnDisk("VELK2", "General", "Current_language"), "English");
  EXPECT_EQ(ends_, 1);
}

TEST_F(EditSettingsTest, DoesNotEndWhereTheLanguageCouldNotBeSaved) {
  Choose("Russian");
  dialogs_.Expect(" - mnuEditLanguage_Click", Answer::Cancel);
  {
    const test::FileSizeLimit full(0);
    mnuEditLanguage_Click(edit_);
  }
  EXPECT_EQ(ends_, 0);
  EXPECT_EQ(session_.Current_language, "English");
}

TEST_F(EditSettingsTest, SavesTheLanguageAndEnds) {
  Choose("Russian");
  dialogs_.Expect("VELK MUST NOW END for this change to take effect", Answer::Ok, [this] {
    EXPECT_EQ(OnDisk("VELK2", "General", "Current_language"), "Russian");
    EXPECT_EQ(ends_, 0);
  });
  mnuEditLanguage_Click(edit_);
  EXPECT_EQ(dialogs_.listsAsked[0].title, "Select language");
  EXPECT_EQ(dialogs_.listsAsked[0].entries, (Names{"English", "Russian"}));
  EXPECT_FALSE(dialogs_.listsAsked[0].mayEnter);
  EXPECT_EQ(session_.Current_language, "Russian");
  EXPECT_EQ(ends_, 1);
}

}  // namespace
}  // namespace velk
