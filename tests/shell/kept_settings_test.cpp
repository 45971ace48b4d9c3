// What is on the disk while the program runs: a power cut may come at any moment.

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>

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
