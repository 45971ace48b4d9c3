// Playback in the whole program, from its menu on.

#include <gtest/gtest.h>

#include <QLabel>
#include <QMdiArea>
#include <QSlider>
#include <QTest>
#include <QToolBar>

#include "formula/additional_parameters.h"
#include "shell/shell_rig.h"

namespace velk {
namespace {

class PlaybackInTheProgram : public testing::Test {
 protected:
  /// A job of five rows in job.mdb, behind us.
  void SetUp() override {
    rig.Start();
    rig.RecordFiveRows(File());
  }
  std::string File() const { return rig.folder.File("job.mdb"); }
  void Open() {
    rig.dialogs.ExpectOpenFile(File());
    rig.Choose("mnuFilePlayback");
  }
  std::string Status() { return rig.Window().Panel(1).toStdString(); }
  QSlider& Bar() { return *rig.Window().findChild<QSlider*>("HScroll1"); }

  test::ShellRig rig;
};

TEST_F(PlaybackInTheProgram, RunsFromTheMenuToItsEnd) {
  MainForm& window = rig.Window();
  const long long rows = rig.application->RowsRecorded();
  Open();
  EXPECT_EQ(Status(), "Ready to Playback");
  EXPECT_EQ(window.MenuItem("mnuAcquire")->text(), "Playback");
  EXPECT_FALSE(window.MenuItem("mnuAcquireConnect")->isVisible());
  EXPECT_FALSE(window.MenuItem("mnuFilePlayback")->isEnabled());
  EXPECT_TRUE(window.MenuItem("mnuToolsDefine")->isEnabled());
  EXPECT_TRUE(window.MenuItem("mnuAcquireStart")->isEnabled() && window.MenuItem("mnuAcquireStop")->isEnabled());
  EXPECT_EQ(window.MenuItem("mnuAcquireStart")->text(), "&Start");
  EXPECT_TRUE(window.Button("ScrollBar")->isVisible());
  EXPECT_FALSE(window.Button("RecordToDB")->isVisible());
  EXPECT_EQ(rig.State().GraphCount, 3);
  for (int graph = 1; graph <= 3; ++graph) EXPECT_NE(rig.State().GraphForms[graph], nullptr) << graph;
  rig.Choose("mnuAcquireStart");
  EXPECT_EQ(Status(), "Playing Back");
  EXPECT_FALSE(window.MenuItem("mnuFileExit")->isEnabled());
  rig.clock.Advance(2000);
  EXPECT_EQ(window.Panel(3), "14-Mar-2026");
  EXPECT_EQ(window.Panel(6), QString("Row 2 of %1").arg(rows));
  // The screen follows within 33 ms of the machine's own clock.
  QTRY_VERIFY(window.findChild<QLabel*>("StatusBar1_6")->isVisibleTo(&window));
  rig.Choose("mnuAcquireStart");
  EXPECT_EQ(Status(), "Playing Back Paused");
  EXPECT_EQ(window.MenuItem("mnuAcquireStart")->text(), "&Resume");
  EXPECT_TRUE(window.MenuItem("mnuFileExit")->isEnabled());
  rig.Choose("mnuAcquireStart");
  rig.dialogs.Expect("End of playback", Answer::Ok);
  rig.clock.Advance(10'000);
  EXPECT_EQ(Status(), "Ready");
  EXPECT_FALSE(window.Button("ScrollBar")->isVisible());
  EXPECT_FALSE(window.Button("Pause")->isVisible());
  EXPECT_TRUE(window.MenuItem("mnuAcquireConnect")->isVisible());
  EXPECT_EQ(window.MenuItem("mnuAcquire")->text(), "&Data Acquisition");
}

TEST_F(PlaybackInTheProgram, OffersReadValueFromItsStartToItsEnd) {
  Open();
  const auto key = [this](const char* name) {
    const auto* form = dynamic_cast<QWidget*>(rig.State().GraphForms[1]);
    return form->findChild<QAction*>(name);
  };
  EXPECT_FALSE(key("AddComment")->isEnabled() || key("ReadValue")->isEnabled());
  rig.Choose("mnuAcquireStart");
  EXPECT_TRUE(key("AddComment")->isEnabled() && key("ReadValue")->isEnabled());
  key("ReadValue")->trigger();
  EXPECT_TRUE(key("ReadValue")->isChecked());
  rig.dialogs.Expect("End of playback", Answer::Ok);
  rig.clock.Advance(10'000);
  EXPECT_FALSE(key("ReadValue")->isEnabled()) << "no log is open";
  EXPECT_FALSE(key("ReadValue")->isChecked());
}

TEST_F(PlaybackInTheProgram, ChangesItsSpeedByTheBarWithMouseAndKeys) {
  Open();
  const auto* words = rig.Window().findChild<QLabel*>("lblSpeed");
  EXPECT_EQ(words->text(), "Playback Speed  1:1");
  EXPECT_EQ(Bar().minimum(), 1);
  EXPECT_EQ(Bar().maximum(), 1000);
  EXPECT_EQ(Bar().toolTip(), "Adjust Playback Speed");
  Bar().setFocus();
  QTest::keyClick(&Bar(), Qt::Key_Right);
  EXPECT_EQ(rig.State().PlaybackSpeed, 2);
  QTest::keyClick(&Bar(), Qt::Key_PageUp);
  EXPECT_EQ(rig.State().PlaybackSpeed, 52);
  QTest::keyClick(&Bar(), Qt::Key_PageDown);
  QTest::keyClick(&Bar(), Qt::Key_Left);
  EXPECT_EQ(rig.State().PlaybackSpeed, 1);
  QTest::keyClick(&Bar(), Qt::Key_End);
  EXPECT_EQ(rig.State().PlaybackSpeed, 1000);
  EXPECT_EQ(words->text(), "Playback Speed  1000:1");
  rig.Choose("mnuAcquireStart");
  rig.dialogs.Expect("End of playback", Answer::Ok);
  rig.clock.Advance(10);
  EXPECT_EQ(Status(), "Ready") << "five rows and the look behind them, a millisecond each";
}

TEST_F(PlaybackInTheProgram, EndsWithTheProgramWithoutABoxOfItsOwn) {
  Open();
  rig.Choose("mnuAcquireStart");
  rig.clock.Advance(1000);
  rig.Choose("mnuAcquireStart");
  rig.dialogs.Expect("Are you sure you want to exit VELK?", Answer::Yes);
  rig.Choose("mnuFileExit");
  EXPECT_FALSE(rig.Window().isVisible());
  rig.Start();
  EXPECT_EQ(rig.State().NumberOfParameters, 3);
  EXPECT_EQ(rig.State().Parameters[1].name, "Parameter 1");
  EXPECT_EQ(rig.State().PlaybackParameters[1].name, "Parameter 1");
}

TEST_F(PlaybackInTheProgram, LeavesWhenTheFrameIsClosedOverTheBoxOfARow) {
  rig.State().PlaybackParameters[1].Gain = 1e300;
  Open();
  rig.Choose("mnuAcquireStart");
  rig.dialogs.Expect("Overflow", Answer::Cancel, [this] {
    rig.dialogs.Expect("Are you sure you want to exit VELK?", Answer::Yes);
    rig.Window().close();
    EXPECT_TRUE(rig.Window().isVisible()) << "the row is on the stack";
  });
  rig.clock.Advance(2000);
  EXPECT_FALSE(rig.Window().isVisible());
}

TEST_F(PlaybackInTheProgram, LeavesTheSetUpOfTheUnitThroughEditsAndSaves) {
  rig.State().Parameters[1].max = 77;
  Open();
  rig.State().CurrentParameters[1].max = 500;
  rig.State().GraphForms[rig.State().CurrentParameters[1].FormIndex]->UpdateParametersDefs();
  EXPECT_EQ(rig.State().Parameters[1].max, 77);
  EXPECT_EQ(rig.State().PlaybackParameters[1].max, 500);
  rig.dialogs.Expect("Playback is Stopped", Answer::Ok);
  rig.Press("Stop");
  rig.Window().GraphArea().closeAllSubWindows();
  EXPECT_EQ(rig.State().Parameters[1].max, 77) << "windows that still show the file";
  rig.Connect();
  EXPECT_EQ(rig.State().CurrentParameters[1].max, 77);
}

}  // namespace
}  // namespace velk
