#include "shell/first_steps.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTimer>

#include "instruments/setup/edit_serial_port.h"
#include "instruments/table/protocols.h"
#include "settings/settings_io.h"
#include "shell/shell_rig.h"
#include "support/pty.h"

namespace velk {
namespace {

class Guide : public testing::Test {
 protected:
  Guide() { rig.Start(); }
  FirstSteps& Steps() { return rig.Window().Guide(); }
  QPushButton& Button(const char* name) { return *Steps().findChild<QPushButton*>(name); }
  bool IsDone(const char* name) {
    Steps().Refresh();
    return Button(name).property("done").toBool();
  }

  test::ShellRig rig;
};

TEST_F(Guide, StandsInAnEmptyWorkAreaAndGoesWhereGraphsStand) {
  Steps().Refresh();
  EXPECT_TRUE(Steps().isVisible());
  rig.Connect();
  QApplication::processEvents();
  EXPECT_FALSE(rig.Window().GraphArea().subWindowList().isEmpty());
  EXPECT_FALSE(Steps().isVisible());
  rig.Press("Stop");
  rig.clock.RunPosted();
  QApplication::processEvents();
  Steps().Refresh();
  EXPECT_TRUE(Steps().isVisible());
}

TEST_F(Guide, RunsTheCommandsAndOffersOnlyWhatIsPossible) {
  Steps().Refresh();
  EXPECT_TRUE(Button("cmdStep_1").isEnabled());
  EXPECT_TRUE(Button("cmdStep_2").isEnabled());
  EXPECT_FALSE(Button("cmdStep_3").isEnabled()) << "the table of parameters waits for Connect";
  EXPECT_FALSE(Button("cmdStep_5").isEnabled());
  rig.windows.ThenClick("HardwareSettings", "cmdCancel");
  Button("cmdStep_1").click();
  EXPECT_TRUE(rig.windows.IsDone());
}

TEST_F(Guide, SaysWhichStepsWaitForConnectAndWhy) {
  Steps().Refresh();
  EXPECT_TRUE(rig.Window().MenuItem("mnuFileRecord")->isEnabled()) << "but Connect begins with no file";
  for (const char* name : {"cmdStep_3", "cmdStep_4", "cmdStep_5"}) {
    EXPECT_FALSE(Button(name).isEnabled()) << name;
    EXPECT_EQ(Button(name).toolTip(), "Possible once VELK is connected to the instrument") << name;
    EXPECT_GT(Button(name).y(), Steps().findChild<QLabel*>("lblOnceConnected")->y()) << name;
  }
  EXPECT_LT(Button("cmdStep_2").y(), Steps().findChild<QLabel*>("lblOnceConnected")->y());
}

TEST_F(Guide, LeadsOnAboveTheGraphsUntilTheJobIsStarted) {
  rig.OnConnect([this] { Button("cmdStep_2").click(); });
  QApplication::processEvents();
  ASSERT_FALSE(rig.Window().GraphArea().subWindowList().isEmpty());
  EXPECT_TRUE(Steps().isVisible());
  EXPECT_FALSE(Button("cmdStep_1").isVisible());
  EXPECT_FALSE(Button("cmdSimulated").isVisible());
  const QRect strip(Steps().mapTo(&rig.Window(), QPoint()), Steps().size());
  const QMdiArea& area = rig.Window().GraphArea();
  EXPECT_FALSE(strip.intersects(QRect(area.mapTo(&rig.Window(), QPoint()), area.size()))) << "it covers no graph";
  EXPECT_LT(strip.height(), 60);
  for (const char* name : {"cmdStep_3", "cmdStep_4", "cmdStep_5"}) EXPECT_TRUE(Button(name).isEnabled()) << name;
  rig.dialogs.ExpectSaveFile(rig.folder.File("job"));
  Button("cmdStep_4").click();
  EXPECT_TRUE(IsDone("cmdStep_4"));
  Button("cmdStep_5").click();
  EXPECT_TRUE(rig.State().AcquireStarted);
  EXPECT_FALSE(Steps().isVisible());
  rig.Press("Stop");
  rig.clock.RunPosted();
  QApplication::processEvents();
  Steps().Refresh();
  EXPECT_TRUE(Steps().isVisible());
  EXPECT_TRUE(Button("cmdStep_1").isVisible()) << "whole again in the empty area";
  EXPECT_GT(Steps().height(), 100);
}

TEST_F(Guide, GoesWhereTheJobIsEndedAheadOfItsStart) {
  rig.OnConnect([this] { Button("cmdStep_2").click(); });
  QApplication::processEvents();
  EXPECT_FALSE(Button("cmdStep_1").isVisible());
  rig.Press("Stop");
  rig.clock.RunPosted();
  QApplication::processEvents();
  Steps().Refresh();
  EXPECT_TRUE(Button("cmdStep_1").isVisible());
}

TEST_F(Guide, ShowsWhatIsDone) {
  EXPECT_FALSE(IsDone("cmdStep_3"));
  rig.State().Parameters[2].name = "Pressure";
  EXPECT_TRUE(IsDone("cmdStep_3"));
  EXPECT_FALSE(IsDone("cmdStep_4"));
  rig.State().CurrentFile = "/jobs/a.mdb";
  EXPECT_TRUE(IsDone("cmdStep_4"));
}

TEST_F(Guide, OffersAStepAsSoonAsItsItemIsOffered) {
  rig.Window().MenuItem("mnuAcquireConnect")->setEnabled(false);
  EXPECT_FALSE(Button("cmdStep_2").isEnabled());
  rig.Window().MenuItem("mnuAcquireConnect")->setEnabled(true);
  EXPECT_TRUE(Button("cmdStep_2").isEnabled());
}

TEST_F(Guide, PaintsAMarkAnewOnlyWhereItsStepChanged) {
  Steps().Refresh();
  const auto shown = [this](const char* name) {
    return Button(name).icon().pixmap(16).toImage().convertToFormat(QImage::Format_ARGB32);
  };
  const QImage undone = shown("cmdStep_4");
  const qint64 key = Button("cmdStep_4").icon().cacheKey();
  Steps().Refresh();
  EXPECT_EQ(Button("cmdStep_4").icon().cacheKey(), key);
  rig.State().CurrentFile = "/jobs/a.mdb";
  Steps().Refresh();
  EXPECT_NE(Button("cmdStep_4").icon().cacheKey(), key);
  EXPECT_NE(shown("cmdStep_4"), undone) << "a check in place of an arrow";
  QImage nothing(16, 16, QImage::Format_ARGB32);
  nothing.fill(Qt::transparent);
  EXPECT_NE(undone, nothing);
}

TEST_F(Guide, ShowsTheInstrumentAsChosenOnlyWhereItsDeviceIsThere) {
  Steps().portIsThere = [] { return false; };
  EXPECT_FALSE(IsDone("cmdStep_1"));
  Steps().portIsThere = [] { return true; };
  EXPECT_TRUE(IsDone("cmdStep_1"));
  rig.State().SerialData.clear();
  EXPECT_FALSE(IsDone("cmdStep_1"));
}

TEST_F(Guide, ShowsNoInstrumentAsChosenOnAFirstStartThoughThePortOfThePresetsIsThere) {
  const test::Pty unit;
  rig.settings->Save("VELK2", "Protocol", "PortDevice1", unit.Device());
  EXPECT_TRUE(IsDone("cmdStep_1"));
  rig.State().SerialData = "formatted and at regular intervals";
  KeepSettings(rig.State(), *rig.settings);
  EXPECT_FALSE(IsDone("cmdStep_1")) << "any change of the settings stores the preset";
  const SerialPortOutcome chosen = OutcomeOf(rig.State(), HardwareChoicesOf(rig.State()), test::English());
  StoreSerialPort(rig.State(), *rig.settings, chosen);
  EXPECT_TRUE(IsDone("cmdStep_1")) << "Serial Port was answered";
}

TEST_F(Guide, AsksForNoDeviceWhereTheProtocolHasNoPort) {
  rig.settings->Save("VELK2", "Protocol", "PortDevice1", "/dev/nobody-has-this");
  EXPECT_FALSE(IsDone("cmdStep_1"));
  for (const Protocol& row : Protocols())
    if (!row.hasPort) rig.State().SerialData = std::string(row.serialData);
  ASSERT_FALSE(ProtocolOf(rig.State()).hasPort);
  EXPECT_TRUE(IsDone("cmdStep_1"));
}

TEST_F(Guide, OffersASimulatedUnit) {
  int started = 0;
  Steps().onSimulatedUnit = [&] { ++started; };
  Button("cmdSimulated").click();
  EXPECT_EQ(started, 1);
  Button("cmdSimulated").click();
  EXPECT_EQ(started, 1) << "the first one is coming up yet";
  auto* const starts = Steps().findChild<QTimer*>("simulatedStarts");
  EXPECT_GE(starts->interval(), 3000);
  EXPECT_LE(starts->interval(), 10'000);
  starts->start(0);  // in place of waiting for them
  QApplication::processEvents();
  Button("cmdSimulated").click();
  EXPECT_EQ(started, 2);
}

TEST_F(Guide, SaysWhereTheSimulatedUnitIsMissing) {
  rig.programFolder = rig.folder.Path().string();
  rig.Start();
  rig.dialogs.Expect("velk_sim_unit is missing", Answer::Ok);
  Button("cmdSimulated").click();
}

}  // namespace
}  // namespace velk
