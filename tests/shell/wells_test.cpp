#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTableView>
#include <QTest>
#include <vector>

#include "platform/database/catalog.h"
#include "platform/database/command.h"
#include "platform/files/file_errors.h"
#include "shell/shell_rig.h"
#include "wells/windows/frm_3d_well.h"
#include "wells/windows/report_form.h"

namespace velk {
namespace {

template <class Window>
Window* Shown() {
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (auto* window = qobject_cast<Window*>(widget); window && window->isVisible()) return window;
  return nullptr;
}

/// The depths of the table of the well profile.
std::vector<std::string> Depths(const QWidget& table) {
  const QAbstractItemModel& model = *test::FindControl<QTableView>(table, "Grid1")->model();
  std::vector<std::string> depths;
  for (int row = 0; row < model.rowCount(); ++row)
    if (const QString depth = model.index(row, 0).data().toString(); !depth.isEmpty())
      depths.push_back(depth.toStdString());
  return depths;
}

void EnterSurvey(QDialog& editor, const char* rows) {
  QApplication::clipboard()->setText(rows);
  auto* grid = test::FindControl<QTableView>(editor, "Grid1");
  grid->setCurrentIndex(grid->model()->index(0, 0));
  QTest::keyClick(grid, Qt::Key_V, Qt::ControlModifier);
  test::Click(editor, "cmdOK");
}

TEST(Wells, ShowThePathOfTheSurveyThatWasEnteredInWindowsThatStayOpen) {
  test::ShellRig rig;
  rig.Start();
  rig.windows.Then("EditSur", [](QDialog& editor) { EnterSurvey(editor, "0\t0\t0\n250\t20\t90\n"); });
  rig.Choose("mnuToolsSurvey");
  rig.Choose("mnuToolsWellProfileTable");
  rig.Choose("mnuTools3DWell");
  ASSERT_NE(Shown<ReportForm>(), nullptr);
  ASSERT_NE(Shown<frm3DWell>(), nullptr);
  EXPECT_EQ(Depths(*Shown<ReportForm>()), (std::vector<std::string>{"0", "100", "200", "250"}));
  rig.windows.Then("EditSur", [](QDialog& editor) { EnterSurvey(editor, "0\t0\t0\n100\t20\t90\n"); });
  rig.Choose("mnuToolsSurvey");
  EXPECT_EQ(Depths(*Shown<ReportForm>()), (std::vector<std::string>{"0", "100"}));
}

TEST(Wells, AreToldAtTheExitWhereTheirRowsAreInNoFile) {
  test::ShellRig rig;
  rig.Start();
  const auto question = [&] {
    rig.dialogs.Expect("Are you sure you want to exit VELK?", Answer::No);
    rig.Choose("mnuFileExit");
    return rig.dialogs.shown.back().text;
  };
  EXPECT_EQ(question().find("survey"), std::string::npos);
  rig.windows.Then("EditSur", [](QDialog& editor) { EnterSurvey(editor, "0\t0\t0\n250\t20\t90\n"); });
  rig.Choose("mnuToolsSurvey");
  EXPECT_NE(question().find("The well survey holds rows that are in no file"), std::string::npos);
  rig.windows.Then("EditSur", [&](QDialog& editor) {
    rig.dialogs.ExpectSaveFile(rig.folder.File("a.d15"));
    test::Click(editor, "cmdSaveAs");
    test::Click(editor, "cmdCancel");
  });
  rig.Choose("mnuToolsSurvey");
  EXPECT_EQ(question().find("survey"), std::string::npos);
}

TEST(Wells, KnowTheUnitsOfTheOperatorsOwnFromTheSettings) {
  test::ShellRig rig;
  rig.Start();
  rig.windows.Then("EditSur", [](QDialog& editor) { EnterSurvey(editor, "0\t0\t0\n200\t20\t90\n"); });
  rig.Choose("mnuToolsSurvey");
  rig.settings->Save("VELK2", "Units", "UserLength", "0.25");
  rig.settings->Save("VELK2", "Units", "UserDepthLabel", "fathom");
  rig.Choose("mnuToolsWellProfileTable");
  test::FindControl<QRadioButton>(*Shown<ReportForm>(), "Option3")->click();
  EXPECT_EQ(Depths(*Shown<ReportForm>()), (std::vector<std::string>{"0", "25", "50"}));
  const QAbstractItemModel& model = *test::FindControl<QTableView>(*Shown<ReportForm>(), "Grid1")->model();
  EXPECT_EQ(model.headerData(0, Qt::Horizontal).toString(), "Depth\nfathom");
}

class LiveWells : public testing::Test {
 protected:
  void SetUp() override {
    rig.Start();
    const char* const names[] = {"", "Speed", "Depth", "Inclination"};
    for (std::size_t i = 1; i <= 3; ++i) rig.State().Parameters[i].name = names[i];
  }
  void BeginJob() {
    rig.Connect();
    rig.dialogs.ExpectSaveFile(file);
    rig.Press("Record");
    rig.Press("Pause");
    rig.Frame(1, 1, 0);  // tells how long a line is, and is no row
  }
  /// Ten seconds of a way down, 5 a second.
  void RunIn() {
    for (int row = 1; row <= 10; ++row) rig.Frame(1, 5 * row, row);
  }
  void BeginSurvey(const char* filter = "optSpeed_0") {
    rig.windows.Then("frmImportSurvey", [filter](QDialog& match) {
      test::FindControl<QRadioButton>(match, filter)->click();
      test::FindControl<QLineEdit>(match, "txtField_5")->setText("Inclination");
      test::FindControl<QLineEdit>(match, "txtField_6")->setText("Speed");
      test::FindControl<QLineEdit>(match, "Text1")->setText("10");
      test::Click(match, "cmdOK");
    });
    rig.Choose("mnuToolsLiveSurvey");
    rig.Choose("mnuToolsWellProfileTable");
  }
  /// The depths and inclinations of the survey of a log.
  std::vector<std::pair<double, double>> Surveyed() const {
    const auto log = Connection::Open(file, OpenMode::ReadOnly);
    Command rows(*log, "SELECT Depth, Inclination FROM surveyData ORDER BY ID");
    std::vector<std::pair<double, double>> seen;
    while (rows.Next()) seen.emplace_back(rows.Number(0), rows.Number(1));
    return seen;
  }
  bool IsOffered() {
    QMetaObject::invokeMethod(rig.Window().findChild<QMenu*>("mnuTools"), "aboutToShow");
    return rig.Window().MenuItem("mnuToolsLiveSurvey")->isEnabled();
  }

  test::ShellRig rig;
  const std::string file = rig.folder.File("job.mdb");
};

/// Means of 5, 10, 15; of 20, 25; of 30, 35; of 40, 45; and the depths of the grid.
const std::vector<std::string> kWholeWay = {"0", "10", "20", "23", "30", "33", "40", "43"};

TEST_F(LiveWells, GrowWhileAJobIsRecorded) {
  BeginJob();
  BeginSurvey();
  RunIn();
  // Ten seconds on, behind the second computation: by then rows of a depth of 40 are in the log.
  EXPECT_EQ(Depths(*Shown<ReportForm>()), (std::vector<std::string>{"0", "10", "20", "23", "30", "33"}));
  rig.Press("Stop");
  EXPECT_EQ(Depths(*Shown<ReportForm>()), kWholeWay) << "computed once more at the end";
  const auto log = Connection::Open(file, OpenMode::ReadOnly);
  Command count(*log, "SELECT count(*) FROM logData");
  ASSERT_TRUE(count.Next());
  EXPECT_EQ(count.Integer(0), 10);
  // Each sample brings the row ahead of it.
  EXPECT_EQ(Surveyed(), (std::vector<std::pair<double, double>>{{10, 2}, {22.5, 4.5}, {32.5, 6.5}, {42.5, 8.5}}));
}

TEST_F(LiveWells, CountTheWayThatIsChosen) {
  BeginJob();
  BeginSurvey("optSpeed_1");
  RunIn();
  for (int row = 1; row <= 7; ++row) rig.Frame(-1, 50 - 5 * row, 10 - row);
  rig.Press("Stop");
  // 45; the mean of 40, 35, 30; of 25, 20.
  EXPECT_EQ(Surveyed(), (std::vector<std::pair<double, double>>{{45, 9}, {35, 7}, {22.5, 4.5}}));
}

TEST_F(LiveWells, EndWithTheirLogWhereRecordingBeginsAnewInAnother) {
  BeginJob();
  BeginSurvey();
  RunIn();
  rig.Press("RecordToDB");
  EXPECT_TRUE(IsOffered()) << "it runs";
  rig.dialogs.ExpectSaveFile(rig.folder.File("next.mdb"));
  rig.Press("RecordToDB");
  EXPECT_EQ(Depths(*Shown<ReportForm>()), kWholeWay) << "computed while its log was open";
  rig.windows.Then("frmImportSurvey", [](QDialog& match) {
    EXPECT_FALSE(test::FindControl<QPushButton>(match, "Command1")->isEnabled());
    test::Click(match, "cmdCancel");
  });
  EXPECT_TRUE(IsOffered());
  rig.Choose("mnuToolsLiveSurvey");
}

TEST_F(LiveWells, AreStoppedWhileRecordingIsOff) {
  BeginJob();
  BeginSurvey();
  RunIn();
  rig.Press("RecordToDB");
  ASSERT_TRUE(IsOffered());
  rig.windows.ThenClick("frmImportSurvey", "Command1");
  rig.Choose("mnuToolsLiveSurvey");
  EXPECT_EQ(Depths(*Shown<ReportForm>()), kWholeWay);
  EXPECT_FALSE(IsOffered());
}

TEST_F(LiveWells, LeaveTheEditorsRowsOutUntilTheyEnd) {
  BeginJob();
  BeginSurvey();
  RunIn();
  rig.windows.Then("EditSur", [this](QDialog& editor) {
    rig.dialogs.Expect("A live survey makes this well from the log", Answer::Ok);
    EnterSurvey(editor, "0\t0\t0\n250\t20\t90\n");
    EXPECT_TRUE(editor.isVisible());
    rig.dialogs.Expect("Leave the survey without what you have changed?", Answer::Yes);
    test::Click(editor, "cmdCancel");
  });
  rig.Choose("mnuToolsSurvey");
  rig.Press("Stop");
  EXPECT_EQ(Depths(*Shown<ReportForm>()), kWholeWay);
}

TEST_F(LiveWells, GrowWhileALogPlaysToItsEndAndLeaveItAsItIs) {
  BeginJob();
  RunIn();
  rig.Press("Stop");
  rig.dialogs.ExpectOpenFile(file);
  rig.Choose("mnuFilePlayback");
  rig.Window().findChild<QSlider*>("HScroll1")->setValue(1000);
  rig.State().CurrentParameters[2].name = "Way";  // the field is called Depth in the file
  BeginSurvey();
  rig.Choose("mnuAcquireStart");
  rig.dialogs.Expect("End of playback", Answer::Ok);
  // Well ahead of the first computation by the clock.
  rig.clock.Advance(1000);
  EXPECT_EQ(Depths(*Shown<ReportForm>()), kWholeWay);
  EXPECT_FALSE(IsOffered());
  const auto log = Connection::Open(file, OpenMode::ReadOnly);
  EXPECT_FALSE(Catalog(*log).Find("surveyData"));
  EXPECT_TRUE(FileExists(rig.settings->Directory() + "/Survey.mdb"));
}

}  // namespace
}  // namespace velk
