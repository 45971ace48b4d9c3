// What is on the disk while the program runs: a power cut may come at any moment.

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QImage>
#include <QLineEdit>
#include <QToolButton>
#include <utility>

#include "settings/settings_io.h"
#include "settings/templates.h"
#include "shell/shell_rig.h"

namespace velk {
namespace {

using test::Click;
using test::FindControl;

class KeptSettings : public testing::Test {
 protected:
  void SetUp() override {
    rig.Start();
    rig.Connect();
  }
  std::string OnDisk(const char* section, const char* key) {
    SettingsStore store(rig.folder.File("settings"));
    return store.Get("VELK2", section, key, "missing");
  }
  /// Adds a formula and looks at the disk while the calculator is still open.
  void AddFormula(
      const char* formula, const std::function<void()>& look = [] {}) {
    rig.windows.Then("EqEditor", [formula, look](QDialog& window) {
      FindControl<QLineEdit>(window, "Text1")->setText(formula);
      Click(window, "Equals");
      look();
      Click(window, "cmdClose");
    });
    rig.Choose("mnuToolsDefine");
  }

  /// Saves a template with other channels, and loads it; `foresee` is what comes behind that.
  void LoadTemplateOf(
      const std::string& serialData, std::int16_t channels, const std::function<void()>& foresee = [] {}) {
    Session& session = rig.State();
    const std::string before = std::exchange(session.SerialData, serialData);
    const std::int16_t channelsBefore = std::exchange(session.NumberOfParameters, channels);
    SaveTemplate(session, *rig.settings, "Job");
    session.TemplateNames = {"", "Job"};
    session.SerialData = before;
    session.NumberOfParameters = channelsBefore;
    rig.dialogs.ExpectChoice("", "Job");
    rig.dialogs.Expect("Loading this template replaces:", Answer::Yes);
    foresee();
    rig.Choose("mnuEditLoadTemplate");
  }

  test::ShellRig rig;
};

TEST_F(KeptSettings, HoldAFormulaAsSoonAsItIsAdded) {
  AddFormula("{parameter 1}*2", [this] {
    EXPECT_EQ(OnDisk("Formulae", "NumberOfFormulae"), "1");
    EXPECT_EQ(OnDisk("Formula1", "Formula"), "{parameter 1}*2");
  });
}

TEST_F(KeptSettings, HoldThatAFormulaWasRemoved) {
  AddFormula("{parameter 1}*2");
  rig.dialogs.ExpectChoice("", rig.State().AdditionalParameters[1].name);
  rig.Choose("mnuToolsRemove");
  EXPECT_EQ(OnDisk("Formulae", "NumberOfFormulae"), "0");
}

TEST_F(KeptSettings, HoldWhichFormulasAreIncluded) {
  AddFormula("{parameter 1}*2");
  const std::string before = OnDisk("Formula1", "visible");
  rig.windows.Then("ComputedParameters", [](QDialog& window) {
    window.findChildren<QCheckBox*>().first()->click();
    Click(window, "cmdClose");
  });
  rig.Choose("mnuToolsInclude");
  EXPECT_NE(OnDisk("Formula1", "visible"), before);
}

TEST_F(KeptSettings, HoldWhatTheDialogOfThePortSet) {
  rig.Press("Stop");
  rig.windows.Then("HardwareSettings", [](QDialog& window) {
    FindControl<QLineEdit>(window, "txtNumberOfParameters")->setText("2");
    FindControl<QLineEdit>(window, "txtSensitivityCriterion")->setText("33");
    Click(window, "cmdOK");
  });
  rig.Choose("mnuEditSerialPort");
  EXPECT_EQ(OnDisk("Parameters", "NumberOfParameters"), "2");
  EXPECT_EQ(OnDisk("General", "SensitivityCriterion"), "33");
}

TEST_F(KeptSettings, DoNotHoldATemplateThatWasOnlyLoaded) {
  rig.Press("Stop");
  SaveSettings(rig.State(), *rig.settings);
  rig.State().TheTimeOut = 9;
  SaveTemplate(rig.State(), *rig.settings, "Job");
  rig.State().TheTimeOut = 5;
  rig.State().TemplateNames = {"", "Job"};
  rig.dialogs.ExpectChoice("", "Job");
  rig.dialogs.Expect("Loading this template replaces:", Answer::Yes);
  rig.Choose("mnuEditLoadTemplate");
  EXPECT_EQ(rig.State().TheTimeOut, 9);
  EXPECT_EQ(OnDisk("General", "TheTimeOut"), "5");
}

TEST_F(KeptSettings, HoldTheNumberOfChannelsOfALoadedTemplateWithTheNextChange) {
  rig.Press("Stop");
  LoadTemplateOf("KESTA version 3", 2);
  EXPECT_EQ(OnDisk("Parameters", "NumberOfParameters"), "3");
  rig.Choose("mnuViewNightColours");
  EXPECT_EQ(OnDisk("Parameters", "NumberOfParameters"), "2");
}

TEST_F(KeptSettings, HoldTheWholeTemplateThatTheProgramStartsAnewFor) {
  rig.Press("Stop");
  LoadTemplateOf("Any Serial Data", 2,
                 [this] { rig.dialogs.Expect("takes full effect after a new start", Answer::Yes); });
  EXPECT_TRUE(rig.application->StartsAnew());
  EXPECT_EQ(OnDisk("Protocol", "SerialData"), "Any Serial Data");
  EXPECT_EQ(OnDisk("Parameters", "NumberOfParameters"), "2");
}

TEST_F(KeptSettings, HoldTheLogoAndWhetherItIsShown) {
  QImage picture(60, 60, QImage::Format_RGB32);
  picture.fill(Qt::green);
  const std::string file = rig.folder.File("logo.png");
  ASSERT_TRUE(picture.save(QString::fromStdString(file)));
  rig.dialogs.ExpectOpenFile(file);
  rig.Window().findChild<QToolButton*>("CompanyLogo")->click();
  EXPECT_EQ(OnDisk("General", "CompanyLogoFile"), file);
  rig.Choose("mnuViewCompany");
  EXPECT_EQ(OnDisk("General", "CompanyLogoVisible"), "False");
  rig.Choose("mnuViewFitGraphs");
  EXPECT_EQ(OnDisk("General", "FitGraphsToWindows"), rig.State().FitGraphsToWindows ? "True" : "False");
}

TEST_F(KeptSettings, TellThatTheyCannotBeWrittenAndKeepTheFormula) {
  std::filesystem::remove_all(rig.folder.File("settings"));
  rig.folder.Touch("settings");
  rig.dialogs.Expect(" - SaveSettings", Answer::Cancel);
  AddFormula("{parameter 1}*2");
  EXPECT_EQ(rig.State().NumberOfFormulae, 1);
  std::filesystem::remove(rig.folder.File("settings"));
}

}  // namespace
}  // namespace velk
