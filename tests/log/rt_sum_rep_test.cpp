#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "log/log_fixture.h"
#include "log/windows/real_time_report.h"
#include "support/host.h"
#include "support/window_driving.h"

namespace velk {
namespace {

class RTSumRep : public test::LogFixture {
 protected:
  RTSumRep() {
    NameChannels({"Pressure"});
    session.CurrentParameters[1].IncludeInSummary = true;
    session.SummaryExtraFields = {"Water"};
    session.CurrentValue[1] = 1204.5F;
    session.Data.hasValues = true;
    open.onReportChanged = [this] {
      if (auto* window = host.Opened<frmRTSumRep>()) window->RefreshGrid();
    };
  }
  ~RTSumRep() override { host.CloseAll(); }

  void Comment(const std::string& comment) {
    clock.Advance(1000);
    open.AddSummaryRow(comment);
    open.onReportChanged();
  }
  frmRTSumRep& Open() {
    ShowRealTimeReport(host, access);
    auto* window = host.Opened<frmRTSumRep>();
    EXPECT_NE(window, nullptr);
    QApplication::processEvents();
    return *window;
  }
  QTableView& Grid() { return *test::FindControl<QTableView>(*host.Opened<frmRTSumRep>(), "DataGrid1"); }
  std::string Cell(int row, int column) { return Grid().model()->index(row, column).data().toString().toStdString(); }
  std::string Head(int column) {
    return Grid().model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString().toStdString();
  }
  QLineEdit* Entry() { return Grid().findChild<QLineEdit*>("entry"); }
  /// Begins to type into the additional field of a line.
  void Type(int row, const char* text) {
    Grid().setCurrentIndex(Grid().model()->index(row, 3));
    Grid().edit(Grid().currentIndex());
    ASSERT_NE(Entry(), nullptr);
    Entry()->selectAll();
    QTest::keyClicks(Entry(), QLatin1String(text));
  }
  /// Enter in the entry, which is done once events have run.
  void Enter() {
    QTest::keyClick(Entry(), Qt::Key_Return);
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  std::vector<std::string> Water() { return Query(path, "SELECT Water FROM SummaryReport"); }

  OpenLog open{session, platform, log};
  WindowHost host{dialogs, test::EnglishWindows()};
  ReportAccess access{session, platform, open};
};

TEST_F(RTSumRep, ShowsTheLinesOfTheJobThatIsRecorded) {
  StartLog(path);
  Comment("Pump 2 on");
  const QWidget& window = Open();
  EXPECT_EQ(window.objectName(), "frmRTSumRep");
  EXPECT_EQ(window.windowTitle(), "Summary Report");
  EXPECT_EQ(test::FindControl<QLabel>(window, "lblFile")->text().toStdString(), path);
  const std::vector<std::string> heads{Head(0), Head(1), Head(2), Head(3), Head(4)};
  EXPECT_EQ(heads, (std::vector<std::string>{"Date", "Time", "Pressure", "Water", "Comments"}));
  EXPECT_EQ(Cell(0, 0), "14-Mar-2026");
  EXPECT_EQ(Cell(0, 1), "09:30:01");
  EXPECT_EQ(Cell(0, 2), "1204.500");
  EXPECT_EQ(Cell(0, 3), "");
  EXPECT_EQ(Cell(0, 4), "Pump 2 on");
}

TEST_F(RTSumRep, FollowsEachCommentAndGoesToTheLastLine) {
  StartLog(path);
  Open();
  EXPECT_EQ(Grid().model()->rowCount(), 0);
  EXPECT_TRUE(test::FindControl<QLabel>(*host.Opened<frmRTSumRep>(), "lblNote")->isVisible());
  for (int i = 1; i <= 40; ++i) Comment("comment " + std::to_string(i));
  EXPECT_EQ(Grid().model()->rowCount(), 40);
  EXPECT_EQ(Grid().currentIndex().row(), 39);
  EXPECT_EQ(Cell(39, 4), "comment 40");
  EXPECT_FALSE(test::FindControl<QLabel>(*host.Opened<frmRTSumRep>(), "lblNote")->isVisible());
}

TEST_F(RTSumRep, TakesANumberForAnAdditionalField) {
  StartLog(path);
  Comment("x");
  Open();
  Type(0, "12,5");
  Enter();
  EXPECT_EQ(Cell(0, 3), "12.5");
  EXPECT_EQ(Water(), std::vector<std::string>{"12.5"});
}

TEST_F(RTSumRep, EmptiesAnAdditionalField) {
  StartLog(path);
  Comment("x");
  Open();
  Type(0, "7");
  Enter();
  Type(0, "");
  Entry()->clear();
  Enter();
  EXPECT_EQ(Cell(0, 3), "");
  EXPECT_EQ(Query(path, "SELECT Water IS NULL FROM SummaryReport"), std::vector<std::string>{"1"});
}

TEST_F(RTSumRep, RefusesWhatIsNoNumberWhereItStands) {
  StartLog(path);
  Comment("x");
  const QWidget& window = Open();
  Type(0, "four");
  Enter();
  ASSERT_NE(Entry(), nullptr);
  EXPECT_EQ(Entry()->text(), "four");
  EXPECT_EQ(test::FindControl<QLabel>(window, "lblNote")->text(), "Enter a number, or leave the field empty.");
  EXPECT_TRUE(test::FindControl<QLabel>(window, "lblNote")->isVisible());
  QTest::keyClick(Entry(), Qt::Key_Escape);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(Cell(0, 3), "");
  EXPECT_FALSE(test::FindControl<QLabel>(window, "lblNote")->isVisible());
  EXPECT_EQ(Water(), std::vector<std::string>{""});
}

TEST_F(RTSumRep, RefusesWhatIsNoNumberWhateverTakesTheFocus) {
  StartLog(path);
  Comment("x");
  Comment("y");
  QWidget& window = Open();
  QApplication::setActiveWindow(&window);
  const auto expectRefused = [&](const char* by) {
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_NE(Entry(), nullptr) << by;
    EXPECT_EQ(Entry()->text(), "four") << by;
    EXPECT_FALSE(Entry()->styleSheet().isEmpty()) << by;
    EXPECT_TRUE(test::FindControl<QLabel>(window, "lblNote")->isVisible()) << by;
    EXPECT_EQ(Grid().currentIndex(), Grid().model()->index(0, 3)) << by;
  };
  const auto cell = [&](int row, int column) { return Grid().visualRect(Grid().model()->index(row, column)).center(); };
  Type(0, "four");
  QTest::mouseClick(Grid().viewport(), Qt::LeftButton, {}, cell(1, 4));
  expectRefused("another cell");
  EXPECT_TRUE(Entry()->hasFocus());
  QTest::mouseDClick(Grid().viewport(), Qt::LeftButton, {}, cell(1, 3));
  expectRefused("an entry in another line");
  QTest::keyClick(&Grid(), Qt::Key_Down);
  expectRefused("a key of the grid");
  test::FindControl<QPushButton>(window, "cmdClose")->setFocus();
  expectRefused("a button");
  window.hide();
  host.Opened<frmRTSumRep>()->RefreshGrid();
  window.show();
  expectRefused("the window itself");

  Entry()->setFocus();
  Entry()->selectAll();
  QTest::keyClicks(Entry(), "4");
  EXPECT_FALSE(test::FindControl<QLabel>(window, "lblNote")->isVisible());
  QTest::mouseClick(Grid().viewport(), Qt::LeftButton, {}, cell(1, 4));
  EXPECT_EQ(Water(), (std::vector<std::string>{"4.0", ""}));
  EXPECT_EQ(Grid().currentIndex(), Grid().model()->index(1, 4));
}

TEST_F(RTSumRep, LetsOnlyAdditionalFieldsBeEntered) {
  StartLog(path);
  Comment("x");
  Open();
  for (const int column : {0, 1, 2, 4})
    EXPECT_FALSE(Grid().model()->flags(Grid().model()->index(0, column)) & Qt::ItemIsEditable) << column;
  EXPECT_TRUE(Grid().model()->flags(Grid().model()->index(0, 3)) & Qt::ItemIsEditable);
}

TEST_F(RTSumRep, LeavesAnEntryThatIsBeingMadeInPlaceWhenALineComes) {
  StartLog(path);
  Comment("first");
  Open();
  Type(0, "3.7");
  Comment("second");
  ASSERT_NE(Entry(), nullptr);
  EXPECT_EQ(Entry()->text(), "3.7");
  EXPECT_EQ(Grid().model()->rowCount(), 2);
  EXPECT_EQ(Grid().currentIndex().row(), 0);
  Enter();
  EXPECT_EQ(Water(), (std::vector<std::string>{"3.7", ""}));
}

TEST_F(RTSumRep, ShowsTheReportOfTheLastLogWhileNoneIsOpen) {
  StartLog(path);
  Comment("x");
  log.Finalise();
  Open();
  EXPECT_EQ(Cell(0, 4), "x");
}

TEST_F(RTSumRep, TellsWhereNoReportIsFound) {
  session.LogFileInUse = folder.File("gone.mdb");
  dialogs.Expect("Unable to locate / create the summary report", Answer::Ok);
  ShowRealTimeReport(host, access);
  EXPECT_EQ(host.Opened<frmRTSumRep>(), nullptr);
}

TEST_F(RTSumRep, TellsWhatHindersARefreshAndShowsItOnRetry) {
  StartLog(path);
  Comment("x");
  frmRTSumRep& window = Open();
  log.Finalise();
  const std::string elsewhere = folder.File("elsewhere.mdb");
  std::filesystem::rename(path, elsewhere);
  dialogs.Expect(" - RefreshGrid", Answer::Retry, [&] { std::filesystem::rename(elsewhere, path); });
  window.RefreshGrid();
  EXPECT_EQ(Grid().model()->rowCount(), 1);
}

TEST_F(RTSumRep, ShowsTheReportOfTheNextJobOnceItIsReadAnew) {
  StartLog(path);
  Comment("first job");
  frmRTSumRep& window = Open();
  log.Finalise();
  session.SummaryExtraFields = {"Sand", "Gel"};
  StartLog(folder.File("second.mdb"));
  window.RefreshGrid();
  EXPECT_EQ(Grid().model()->rowCount(), 0);
  EXPECT_EQ(Head(4), "Gel");
}

}  // namespace
}  // namespace velk
