// What is edited while a recorded file is shown is the file's way to be shown, and nothing else.

#include <gtest/gtest.h>

#include <QAction>
#include <QTableView>
#include <QTest>
#include <fstream>
#include <iterator>

#include "graphs/strip_chart.h"
#include "graphs/windows/graph_form_new.h"
#include "model/status.h"
#include "model/texts.h"
#include "platform/drawing/units.h"
#include "settings/windows/parameters_table.h"
#include "settings/windows/properties.h"
#include "shell/shell_rig.h"

namespace velk {
namespace {

class EditingAPlayedFile : public testing::Test {
 protected:
  /// A job of five rows of three channels, opened for playback.
  void SetUp() override {
    rig.Start();
    rig.RecordFiveRows(File());
    configured = rig.State().Parameters;
    recorded = BytesOfFile();
    rig.dialogs.ExpectOpenFile(File());
    rig.Choose("mnuFilePlayback");
    ASSERT_TRUE(StatusIs(rig.State(), text::StatusReadyToPlayback));
  }

  std::string File() const { return rig.folder.File("job.mdb"); }
  std::string BytesOfFile() const {
    std::ifstream file(File(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  Parameter& Shown(int i) { return rig.State().CurrentParameters[static_cast<std::size_t>(i)]; }
  Parameter& Playback(int i) { return rig.State().PlaybackParameters[static_cast<std::size_t>(i)]; }
  GraphFormNew& Form(int graph) { return dynamic_cast<GraphFormNew&>(*rig.State().GraphForms[graph]); }
  void Press(int graph, const char* key) { Form(graph).findChild<QAction*>(QLatin1String(key))->trigger(); }
  /// A click into the header's row of a curve, at a share of the room behind the axis.
  void ClickHeader(int graph, double share) {
    QWidget& band = Form(graph).View().HeaderBand();
    const double width = band.width() * kTwipsPerPixel;
    const QPointF place(kLeftMargin + share * (width - kLeftMargin), 0.5 * kHeaderRowHeight);
    QTest::mouseClick(&band, Qt::LeftButton, {}, (place / kTwipsPerPixel).toPoint());
  }
  void TypeIntoTable(int row, TableColumn column, const char* text) {
    rig.windows.Then("ParametersTable", [=](QDialog& window) {
      auto& table = dynamic_cast<ParametersTable&>(window);
      auto* grid = test::FindControl<QTableView>(table, "Grid1");
      grid->model()->setData(grid->model()->index(row, table.Answer().PlaceOf(column)), text, Qt::EditRole);
      window.close();
    });
    rig.Choose("mnuEditTable");
  }
  std::string OnDisk(const char* section, const char* key) {
    SettingsStore store(rig.folder.File("settings"));
    return store.Get("VELK2", section, key, "missing");
  }

  /// Neither the unit's set-up nor the file is touched, in memory and on the disk.
  void ExpectNothingElseTouched() {
    for (int i = 1; i <= 3; ++i) {
      const Parameter& now = rig.State().Parameters[static_cast<std::size_t>(i)];
      const Parameter& before = configured[static_cast<std::size_t>(i)];
      EXPECT_EQ(now.name, before.name) << i;
      EXPECT_EQ(now.units, before.units) << i;
      EXPECT_EQ(now.min, before.min) << i;
      EXPECT_EQ(now.max, before.max) << i;
      EXPECT_EQ(now.color, before.color) << i;
      EXPECT_EQ(now.format, before.format) << i;
      EXPECT_EQ(now.FormIndex, before.FormIndex) << i;
      EXPECT_EQ(now.Gain, before.Gain) << i;
      EXPECT_EQ(OnDisk(("Parameter" + std::to_string(i)).c_str(), "name"), before.name) << i;
    }
    EXPECT_TRUE(BytesOfFile() == recorded) << "the log has changed";
  }

  test::ShellRig rig;
  Session::PerParameter<Parameter> configured;
  std::string recorded;
};

TEST_F(EditingAPlayedFile, InTheTableReachesWhatPlaysOnly) {
  TypeIntoTable(0, TableColumn::Name, "Of the file");
  TypeIntoTable(1, TableColumn::Gain, "4");
  TypeIntoTable(2, TableColumn::Graph, "9");
  EXPECT_EQ(Shown(1).name, "Of the file");
  EXPECT_EQ(Playback(1).name, "Of the file");
  EXPECT_EQ(OnDisk("PlaybackParameter1", "name"), "Of the file");
  EXPECT_EQ(OnDisk("PlaybackParameter2", "Gain"), "4");
  EXPECT_NE(rig.State().GraphForms[9], nullptr);
  ExpectNothingElseTouched();
}

TEST_F(EditingAPlayedFile, OnTheHeaderReachesWhatPlaysOnly) {
  rig.dialogs.ExpectInput("Enter new minimum value", "-25");
  ClickHeader(1, 0.1);
  rig.dialogs.ExpectInput("Enter new maximum value", "75");
  ClickHeader(1, 0.9);
  rig.dialogs.ExpectColour("Select a color for", 0x00FF00);
  ClickHeader(1, 0.5);
  EXPECT_EQ(Shown(1).min, -25);
  EXPECT_EQ(Playback(1).min, -25);
  EXPECT_EQ(Playback(1).max, 75);
  EXPECT_EQ(Playback(1).color, 0x00FF00);
  EXPECT_EQ(OnDisk("PlaybackParameter1", "min"), "-25");
  ExpectNothingElseTouched();
}

TEST_F(EditingAPlayedFile, FromWindowToWindowReachesWhatPlaysOnly) {
  for (const int graph : {1, 2, 3}) Form(graph).EnableToolbar();
  Press(1, "Copy");
  Press(2, "Paste");
  EXPECT_EQ(Playback(1).FormIndex, 2);
  ExpectNothingElseTouched();
  Press(2, "Remove");
  EXPECT_EQ(Playback(1).FormIndex, 1);
  ExpectNothingElseTouched();
}

TEST_F(EditingAPlayedFile, StaysWithTheFileWhenItIsOver) {
  rig.Choose("mnuAcquireStart");
  rig.dialogs.Expect("End of playback", Answer::Ok);
  rig.clock.Advance(10'000);
  ASSERT_TRUE(StatusIs(rig.State(), text::StatusReady));
  rig.dialogs.ExpectInput("Enter new maximum value", "75");
  ClickHeader(1, 0.9);
  EXPECT_EQ(Playback(1).max, 75);
  ExpectNothingElseTouched();
  rig.Connect();
  EXPECT_EQ(Shown(1).max, configured[1].max) << "the unit's own again";
}

TEST_F(EditingAPlayedFile, LeavesTheSmoothingOfTheUnit) {
  rig.State().SmoothValue[1] = 5;
  CurveProperties properties = PropertiesOf(rig.State(), 1);
  properties.smoothing = 2;
  StoreProperties(rig.State(), 1, properties);
  EXPECT_EQ(rig.State().SmoothValue[1], 5);
}

TEST_F(EditingAPlayedFile, IsNoCalibrationAndNoReset) {
  const auto expectOff = [this] {
    for (const char* item : {"mnuToolsCalibrate", "mnuToolsReset"})
      EXPECT_FALSE(rig.Window().MenuItem(item)->isEnabled()) << item;
  };
  rig.State().SerialData = "sent when requested";  // whose values can be reset
  expectOff();
  rig.Choose("mnuAcquireStart");
  expectOff();
  rig.Choose("mnuAcquireStart");
  expectOff();
  EXPECT_FALSE(rig.Window().MenuItem("mnuEditTable")->isEnabled()) << "paused: the rows go on from here";
}

}  // namespace
}  // namespace velk
