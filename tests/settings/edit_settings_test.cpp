#include "settings/edit_settings.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/settings/settings.h"
#include "settings/settings_io.h"
#include "settings/templates.h"
#include "support/fake_clock.h"
#include "support/file_size_limit.h"
#include "support/in_english.h"
#include "support/memory_folder.h"
#include "support/scripted_dialogs.h"
#include "support/scripted_settings_questions.h"

namespace velk {
namespace {

using Names = std::vector<std::string>;

class EditSettingsTest : public testing::Test {
 protected:
  EditSettingsTest() {
    LoadSettings(session_, store_, test::English());
    SaveSettings(session_, store_);
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
  test::ScriptedSettingsQuestions questions_;
  Platform platform_{clock_, gate_, dialogs_, store_, test::English()};
  int resets_ = 0;
  int ends_ = 0;
  EditSettings edit_{session_, platform_, questions_, [this] { ++resets_; }, [this] { ++ends_; }};
};

// --- Templates ---

TEST_F(EditSettingsTest, SavesATemplateUnderANewName) {
  session_.TheTimeOut = 9;
  questions_.choice = "Job";
  mnuEditSaveTemplate_Click(edit_);
  ASSERT_EQ(questions_.asked.size(), 1U);
  EXPECT_EQ(questions_.asked[0].title.English(), "Save Settings Template");
  EXPECT_EQ(questions_.asked[0].prompt.English(), "Select or enter the template name");
  EXPECT_TRUE(questions_.asked[0].entries.empty());
  EXPECT_TRUE(questions_.asked[0].mayEnter);
  EXPECT_EQ(session_.TemplateNames, (Names{"", "Job"}));
  EXPECT_EQ(OnDisk("VELKJob", "General", "TheTimeOut"), "9");
  EXPECT_EQ(OnDisk("VELK2", "General", "TheTimeOut"), "9") << "the live settings are saved, too";
  EXPECT_EQ(OnDisk("VELKTemplates", "General", "NumberOfTemplates"), "1");
  EXPECT_EQ(OnDisk("VELKTemplates", "General", "TheTemplateName1"), "Job");
}

TEST_F(EditSettingsTest, SavesATemplateAgainWithoutASecondName) {
  session_.TemplateNames = {"", "A", "Job"};
  session_.TheTimeOut = 9;
  questions_.choice = "Job";
  mnuEditSaveTemplate_Click(edit_);
  EXPECT_EQ(questions_.asked[0].entries, (Names{"A", "Job"}));
  EXPECT_EQ(session_.TemplateNames, (Names{"", "A", "Job"}));
  EXPECT_EQ(OnDisk("VELKJob", "General", "TheTimeOut"), "9");
}

TEST_F(EditSettingsTest, TakesANameInAnotherCaseForAnotherTemplate) {
  session_.TemplateNames = {"", "Job"};
  questions_.choice = "job";
  mnuEditSaveTemplate_Click(edit_);
  EXPECT_EQ(session_.TemplateNames, (Names{"", "Job", "job"}));
}

TEST_F(EditSettingsTest, DoesNothingOnCancel) {
  session_.TemplateNames = {"", "Job"};
  session_.TheTimeOut = 9;
  const std::size_t files = folder_.Count();
  mnuEditSaveTemplate_Click(edit_);
  mnuEditLoadTemplate_Click(edit_);
  mnuEditDeleteTemplate_Click(edit_);
  mnuEditClear_Click(edit_);
  mnuEditUserOptions_Click(edit_);
  mnuEditLanguage_Click(edit_);
  EXPECT_EQ(questions_.asked.size(), 4U);
  EXPECT_EQ(folder_.Count(), files);
  EXPECT_EQ(OnDisk("VELK2", "General", "TheTimeOut"), "5");
  EXPECT_EQ(session_.TheTimeOut, 9);
  EXPECT_EQ(session_.TemplateNames, (Names{"", "Job"}));
  EXPECT_EQ(resets_, 0);
  EXPECT_EQ(ends_, 0);
}

TEST_F(EditSettingsTest, TellsANameThatIsTooLongAndDoesNotListIt) {
  questions_.choice = std::string(300, 'x');
  dialogs_.Expect("The template name is too long - mnuEditSaveTemplate_Click", Answer::Cancel);
  mnuEditSaveTemplate_Click(edit_);
  EXPECT_EQ(session_.TemplateNames.size(), 1U);
  SaveSettings(session_, store_);
}

TEST_F(EditSettingsTest, ForgetsATemplateThatCouldNotBeWritten) {
  questions_.choice = "Job";
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
  questions_.choice = "Job";
  session_.TheTimeOut = 9;
  mnuEditSaveTemplate_Click(edit_);
  session_.TheTimeOut = 7;
  dialogs_.Expect(" - mnuEditSaveTemplate_Click", Answer::Cancel);
  {
    const test::FileSizeLimit full(0);
    mnuEditSaveTemplate_Click(edit_);
  }
  mnuEditLoadTemplate_Click(edit_);
  EXPECT_EQ(session_.TheTimeOut, 9);
  EXPECT_EQ(session_.TemplateNames, (Names{"", "Job"}));
}

TEST_F(EditSettingsTest, LoadsATemplate) {
  session_.TheTimeOut = 9;
  SaveTemplate(session_, store_, "Job");
  session_.TheTimeOut = 5;
  session_.TemplateNames = {"", "A", "Job"};
  questions_.choice = "Job";
  mnuEditLoadTemplate_Click(edit_);
  EXPECT_EQ(questions_.asked[0].title.English(), "Load Settings Template");
  EXPECT_EQ(questions_.asked[0].prompt.English(), "Select the template to load");
  EXPECT_EQ(questions_.asked[0].entries, (Names{"A", "Job"}));
  EXPECT_FALSE(questions_.asked[0].mayEnter);
  EXPECT_EQ(session_.TheTimeOut, 9);
  EXPECT_EQ(resets_, 0) << "only own units have their connection reset";
}

TEST_F(EditSettingsTest, ResetsTheConnectionOfEachOwnUnitOnceItsConstantsAreSet) {
  questions_.choice = "Job";
  edit_.resetConnection = [this] {
    ++resets_;
    EXPECT_EQ(session_.BaudRate, 19200);
  };
  int expected = 0;
  for (const char* unit : {"KESTA version 3", "KESTA version 4", "KESTA version 5", "LUMO version A", "LUMO version B",
                           "orben version 3", "orben version 4"}) {
    store_.Save("VELKJob", "Protocol", "SerialData", unit);
    mnuEditLoadTemplate_Click(edit_);
    EXPECT_EQ(resets_, ++expected) << unit;
  }
  store_.Save("VELKJob", "Protocol", "SerialData", "sent when requested");
  mnuEditLoadTemplate_Click(edit_);
  EXPECT_EQ(resets_, expected);
}

TEST_F(EditSettingsTest, TellsTheKeyOfATemplateThatCanNotBeLoaded) {
  session_.NumberOfFormulae = 1;
  session_.AdditionalParameters.resize(2);
  session_.Formula.resize(2);
  session_.SerialData = "KESTA version 3";
  SaveTemplate(session_, store_, "Job");
  session_.TheTimeOut = 8;
  questions_.choice = "Job";
  dialogs_.Expect("Formula1/Offset: Type mismatch (\"False\") - mnuEditLoadTemplate_Click", Answer::Retry);
  dialogs_.Expect("Formula1/Offset: Type mismatch (\"False\") - mnuEditLoadTemplate_Click", Answer::Cancel);
  mnuEditLoadTemplate_Click(edit_);
  EXPECT_EQ(session_.TheTimeOut, 8);
  EXPECT_EQ(resets_, 0);
}

TEST_F(EditSettingsTest, LoadsATemplateThatWasMendedBeforeRetry) {
  store_.Save("VELKJob", "General", "TheTimeOut", "x");
  store_.Flush();
  questions_.choice = "Job";
  dialogs_.Expect("General/TheTimeOut", Answer::Retry,
                  [this] { folder_.Write("VELKJob.ini", "[General]\nTheTimeOut=9\n"); });
  mnuEditLoadTemplate_Click(edit_);
  EXPECT_EQ(session_.TheTimeOut, 9);
}

TEST_F(EditSettingsTest, DeletesATemplateAndLoadsTheLiveSettings) {
  for (const char* name : {"A", "Job"}) {
    questions_.choice = name;
    mnuEditSaveTemplate_Click(edit_);
  }
  session_.TheTimeOut = 9;
  mnuEditDeleteTemplate_Click(edit_);
  EXPECT_EQ(questions_.asked.back().title.English(), "Delete Settings Template");
  EXPECT_EQ(questions_.asked.back().prompt.English(), "Select the template to delete");
  EXPECT_EQ(questions_.asked.back().entries, (Names{"A", "Job"}));
  EXPECT_FALSE(questions_.asked.back().mayEnter);
  EXPECT_EQ(session_.TemplateNames, (Names{"", "A"}));
  EXPECT_EQ(session_.TheTimeOut, 5);
  EXPECT_EQ(OnDisk("VELKJob", "General", "TheTimeOut"), "(none)");
}

TEST_F(EditSettingsTest, TellsWhatCouldNotBeReadAfterADelete) {
  session_.TemplateNames = {"", "Job"};
  store_.Save("VELK2", "General", "TheTimeOut", "x");
  questions_.choice = "Job";
  dialogs_.Expect("General/TheTimeOut: Type mismatch", Answer::Ok);
  mnuEditDeleteTemplate_Click(edit_);
  EXPECT_EQ(session_.TheTimeOut, 5);
}

// --- Clear ---

TEST_F(EditSettingsTest, ClearsTheChosenGroups) {
  session_.TheTimeOut = 9;
  session_.BaudRate = 300;
  SaveSettings(session_, store_);
  questions_.groups = GroupChoice{true};
  mnuEditClear_Click(edit_);
  EXPECT_EQ(session_.TheTimeOut, 5);
  EXPECT_EQ(session_.BaudRate, 300);
  EXPECT_EQ(OnDisk("VELK2", "General", "TheTimeOut"), "5");
}

TEST_F(EditSettingsTest, TellsInTheLanguageOfTheBoxesWhatCouldNotBeRead) {
  const test::InBrackets language;
  test::ScriptedDialogs boxes(gate_, language);
  Platform platform{clock_, gate_, boxes, store_, language};
  store_.Save("VELK2", "Protocol", "BaudRate", "fast");
  questions_.groups = GroupChoice{};
  boxes.Expect("Protocol/BaudRate: <Type mismatch> (\"fast\")", Answer::Ok);
  mnuEditClear_Click({session_, platform, questions_, [] {}, [] {}});
}

// --- User options ---

TEST_F(EditSettingsTest, TakesUserOptionsOverAndEnds) {
  questions_.entered = {{"60", "30", "7200", "12", "64"}};
  dialogs_.Expect("VELK MUST NOW END for this change to take effect", Answer::Ok, [this] {
    EXPECT_EQ(session_.pixelslength, 60);
    EXPECT_EQ(ends_, 0);
  });
  mnuEditUserOptions_Click(edit_);
  EXPECT_EQ(questions_.optionsShown, (UserOptionTexts{"120", "15", "3600", "10", "64"}));
  EXPECT_EQ(session_.pixelslength, 60);
  EXPECT_EQ(session_.pixeldivide, 30);
  EXPECT_EQ(session_.MaximumTime, 7200);
  EXPECT_EQ(session_.intFontSize, 12);
  EXPECT_EQ(ends_, 1);
}

TEST_F(EditSettingsTest, TellsEachUnacceptableOptionAndStaysOpen) {
  questions_.entered = {{"7", "15", "3600", "10", "64"},
                        {"120", "15", "3600", "5", "64"},
                        {"120", "15", "3600", "21", "64"},
                        {"120", "15", "3600", "10", "0"}};
  for (const char* text : {"Unacceptable values", "Minimum font size is 6", "Maximum font size is 20",
                           "Minimum number of curves per graph is 1"})
    dialogs_.Expect(text, Answer::Ok);
  mnuEditUserOptions_Click(edit_);
  EXPECT_EQ(questions_.accepted, (std::vector<bool>{false, false, false, false}));
  for (const ShownMessage& box : dialogs_.shown) EXPECT_EQ(box.icon, BoxIcon::Critical) << box.text;
  EXPECT_EQ(session_.pixelslength, 120);
  EXPECT_EQ(session_.intFontSize, 10);
  EXPECT_EQ(ends_, 0);
}

// --- Language ---

TEST_F(EditSettingsTest, EndsForTheLanguageOfBeforeToo) {
  questions_.choice = "English";
  dialogs_.Expect("VELK MUST NOW END for this change to take effect", Answer::Ok);
  mnuEditLanguage_Click(edit_);
  EXPECT_EQ(OnDisk("VELK2", "General", "Current_language"), "English");
  EXPECT_EQ(ends_, 1);
}

TEST_F(EditSettingsTest, DoesNotEndWhereTheLanguageCouldNotBeSaved) {
  questions_.choice = "Russian";
  dialogs_.Expect(" - mnuEditLanguage_Click", Answer::Cancel);
  {
    const test::FileSizeLimit full(0);
    mnuEditLanguage_Click(edit_);
  }
  EXPECT_EQ(ends_, 0);
  EXPECT_EQ(session_.Current_language, "English");
}

TEST_F(EditSettingsTest, SavesTheLanguageAndEnds) {
  questions_.choice = "Russian";
  dialogs_.Expect("VELK MUST NOW END for this change to take effect", Answer::Ok, [this] {
    EXPECT_EQ(OnDisk("VELK2", "General", "Current_language"), "Russian");
    EXPECT_EQ(ends_, 0);
  });
  mnuEditLanguage_Click(edit_);
  EXPECT_EQ(questions_.asked[0].title.English(), "Select language");
  EXPECT_EQ(questions_.asked[0].entries, (Names{"English", "Russian"}));
  EXPECT_FALSE(questions_.asked[0].mayEnter);
  EXPECT_EQ(session_.Current_language, "Russian");
  EXPECT_EQ(ends_, 1);
}

}  // namespace
}  // namespace velk
