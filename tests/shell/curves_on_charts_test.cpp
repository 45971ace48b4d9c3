// Curves edited on their charts, in the whole program.

#include <gtest/gtest.h>

#include "graphs/label_reading.h"
#include "graphs/windows/graph_form_new.h"
#include "shell/shell_rig.h"

namespace velk {
namespace {

class CurvesInTheProgram : public testing::Test {
 protected:
  void SetUp() override {
    rig.Start();
    rig.Connect();
    rig.Press("Pause");
  }
  GraphFormNew& Form(int graph) { return dynamic_cast<GraphFormNew&>(*rig.State().GraphForms[graph]); }
  void Press(int graph, const char* key) { Form(graph).findChild<QAction*>(QLatin1String(key))->trigger(); }
  std::string OnDisk(const char* section, const char* key) {
    SettingsStore store(rig.folder.File("settings"));
    return store.Get("VELK2", section, key, "missing");
  }

  test::ShellRig rig;
};

TEST_F(CurvesInTheProgram, AreOnTheDiskAsSoonAsTheyAreEdited) {
  rig.dialogs.ExpectInput("Enter parameter units", "bar");
  test::ClickLabel(Form(1), "Label3_0");
  EXPECT_EQ(rig.State().Parameters[1].units, "bar");
  EXPECT_EQ(OnDisk("Parameter1", "units"), "bar");
}

TEST_F(CurvesInTheProgram, GoOnInTheWindowThatTheyWereMovedTo) {
  rig.Frame(10, 20, 30);
  Press(2, "Copy");
  Press(1, "Paste");
  EXPECT_EQ(rig.State().GraphForms[2], nullptr);
  EXPECT_EQ(OnDisk("Parameter2", "FormIndex"), "1");
  rig.Frame(11, 21, 31);
  rig.clock.Advance(40);
  EXPECT_EQ(test::LabelText(Form(1), "Label2_1"), "21.0000");
  Press(1, "Remove");
  EXPECT_NE(rig.State().GraphForms[2], nullptr);
  rig.Frame(12, 22, 32);
  rig.clock.Advance(40);
  EXPECT_EQ(test::LabelText(Form(2), "Label2_0"), "22.0000");
}

TEST_F(CurvesInTheProgram, StandInTheirNewWindowsAfterTheNextConnect) {
  Press(2, "Copy");
  Press(1, "Paste");
  rig.Press("Stop");
  rig.Connect();
  EXPECT_EQ(rig.State().GraphCount, 2);
  EXPECT_EQ(rig.State().GraphCurveCount[1], 2);
}

}  // namespace
}  // namespace velk
