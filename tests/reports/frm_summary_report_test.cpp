#include "reports/windows/frm_summary_report.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "model/status.h"
#include "model/texts.h"
#include "platform/database/jet_copy.h"
#include "reports/viewer_fixture.h"
#include "support/file_size_limit.h"
#include "support/locking_program.h"
#include "support/recording_view.h"

namespace velk {
namespace {

using test::kCommentColumn;
using test::kLog;
using test::kPressureColumn;
using test::kReport;
using test::kTimeColumn;
using test::Lines;
using test::Morning;
using test::Seconds;
using test::SummaryReportEditing;

TEST_F(SummaryReportEditing, ShowsTheLogBesideItsReport) {
  Record({1204.5, 7});
  Comment(Morning(), "pump 2 on");
  log.Finalise();
  View([&](QDialog& window) {
    EXPECT_EQ(window.windowTitle(), "Summary Report Editing");
    EXPECT_EQ(Shown(kLog, kPressureColumn), (Lines{"1,204.500", "7.000"}));
    EXPECT_EQ(Shown(kReport, 0), (Lines{"14-Mar-2026"}));
    EXPECT_EQ(Shown(kReport, 1), (Lines{"09:30:00"}));
    EXPECT_EQ(Shown(kReport, kCommentColumn), (Lines{"pump 2 on"}));
    EXPECT_EQ(Entered("txtBeginTime"), "14-Mar-2026 09:30:00");
    EXPECT_EQ(Entered("txtEndTime"), "14-Mar-2026 09:30:01");
    EXPECT_EQ(Text("lblRecord"), "Record: 1");
    EXPECT_EQ(Text("lblLogRecord"), "Row 1 of 2");
    EXPECT_EQ(Text("lblFactor"), "Filter Fa&ctor");
    EXPECT_EQ(Find<QComboBox>("Combo1").currentText(), "All Columns");
    EXPECT_EQ(Find<QComboBox>("Combo1").count(), 3);
    EXPECT_EQ(Find<QComboBox>("Combo1").itemText(1), "Pressure");
  });
}

TEST_F(SummaryReportEditing, GivesColumnsTheWidthOfTheirHeadsAndOfTheFirstRows) {
  Record({5, 123456789.25, 3});
  log.Finalise();
  View([&](QDialog&) {
    QTableView& grid = Grid(kLog);
    const auto width = [&](const char* text) { return grid.fontMetrics().horizontalAdvance(QLatin1String(text)); };
    EXPECT_GT(grid.columnWidth(kTimeColumn), width("00:00:00"));
    EXPECT_GT(grid.columnWidth(kPressureColumn), width("123,456,789.250"));
    EXPECT_LT(grid.columnWidth(kPressureColumn), 2 * width("123,456,789.250"));
    for (int i = 0; i < grid.model()->columnCount(); ++i)
      EXPECT_GE(grid.columnWidth(i), grid.horizontalHeader()->sectionSizeHint(i)) << i;
  });
}

TEST_F(SummaryReportEditing, MakesTheReportOfALogThatHasNone) {
  Record({1});
  log.Writing()->Execute("DROP TABLE SummaryReport");
  log.Finalise();
  View([&](QDialog&) { EXPECT_TRUE(Shown(kReport, 0).empty()); });
  EXPECT_EQ(Columns(path, "SummaryReport"), (Lines{"Date", "Time", "Pressure", "Water", "Comments"}));
}

TEST_F(SummaryReportEditing, SaysWhereAReportCanBeNeitherFoundNorMade) {
  MakeDatabase(path, "CREATE TABLE Other (x)");
  dialogs.Expect("Unable to locate / create the summary report", Answer::Ok);
  mnuViewSummaryReport_Click(host, access);
  session.LogFileInUse = folder.File("gone.mdb");
  dialogs.Expect("Unable to locate / create the summary report", Answer::Ok);
  mnuViewSummaryReport_Click(host, access);
}

TEST_F(SummaryReportEditing, LeavesTheReportOfARunningJobToItsOwnWindow) {
  Record({1});
  test::RecordingView view;
  ChangeCurrentStatus(session, view, text::StatusAcquiringData);
  mnuViewSummaryReport_Click(host, access);
  EXPECT_NE(host.Opened<frmRTSumRep>(), nullptr);
}

TEST_F(SummaryReportEditing, AddsALineUnderTheTimeOfTheRow) {
  Record({0, 10, 20});
  Comment(Morning() + Seconds(2.1), "later");
  log.Finalise();
  View([&](QDialog&) {
    GoTo(kLog, 1);
    dialogs.ExpectInput("Enter your comment, max. 255 characters", "packer set");
    Press("cmdAddRow");
    EXPECT_EQ(dialogs.inputTitles.back(), "Adding Comment");
    EXPECT_EQ(Shown(kReport, 1), (Lines{"09:30:01", "09:30:02"}));
    EXPECT_EQ(Shown(kReport, 2), (Lines{"10.000", "0.000"}));
    EXPECT_EQ(Shown(kReport, kCommentColumn), (Lines{"packer set", "later"}));
    EXPECT_EQ(Text("lblRecord"), "Record: 1") << "the line that was added";
    for (const auto& nothing : {std::optional<std::string>(), std::optional<std::string>("")}) {
      dialogs.ExpectInput("Enter your comment", nothing);
      Press("cmdAddRow");
    }
    EXPECT_EQ(Shown(kReport, 0).size(), 2u);
  });
}

TEST_F(SummaryReportEditing, RemovesLinesAndPutsThemBack) {
  Record({0});
  for (const char* comment : {"a", "b", "c"}) Comment(clock.Now() + Seconds(1), comment);
  log.Finalise();
  View([&](QDialog&) {
    EXPECT_FALSE(IsOn("cmdUndo"));
    GoTo(kReport, 1);
    Press("cmdRemoveRow");
    EXPECT_EQ(Shown(kReport, kCommentColumn), (Lines{"a", "c"}));
    EXPECT_EQ(Row(kReport), 1) << "the next one";
    EXPECT_EQ(Text("lblRecord"), "Record: 2");
    Press("cmdRemoveRow");
    EXPECT_EQ(Row(kReport), 0) << "at the end the last one";
    Press("cmdUndo");
    Press("cmdUndo");
    EXPECT_EQ(Shown(kReport, kCommentColumn), (Lines{"a", "b", "c"}));
    EXPECT_FALSE(IsOn("cmdUndo"));
  });
}

TEST_F(SummaryReportEditing, DeletesARowOfTheLogAndPutsItBack) {
  Record({0, 1, 2});
  log.Finalise();
  View([&](QDialog&) {
    GoTo(kLog, 1);
    Press("cmdDelete");
    EXPECT_EQ(Shown(kLog, kPressureColumn), (Lines{"0.000", "2.000"}));
    EXPECT_EQ(Row(kLog), 1);
    EXPECT_EQ(Query(path, "SELECT count(*) FROM logData"), (Lines{"2"}));
    Press("cmdUndo");
    EXPECT_EQ(Shown(kLog, kPressureColumn), (Lines{"0.000", "1.000", "2.000"}));
    EXPECT_EQ(Row(kLog), 1);
  });
  EXPECT_EQ(Query(path, "SELECT count(*) FROM logData"), (Lines{"3"}));
}

TEST_F(SummaryReportEditing, PrintsTheLogAsItIsShownWithLinesSkipped) {
  Record({5, 3, 9, 1, 7});
  log.Finalise();
  View([&](QDialog&) {
    ClickHead(kLog, kPressureColumn);
    GoTo(kLog, 2);
    dialogs.ExpectInput("Skip every ... lines", "1");
    ThenChoosePrinter(0);
    Press("cmdPrintLog");
    EXPECT_EQ(dialogs.inputTitles.back(), "Skip Lines");
    EXPECT_EQ(Row(kLog), 2) << "the present row stays";
  });
  ASSERT_EQ(printers.documents.size(), 1u);
  EXPECT_EQ(printers.documents[0]->printer, "Office");
  EXPECT_TRUE(printers.documents[0]->ended);
  EXPECT_EQ(
      Printed("Data Log On  14-Mar-2026   From [ 14-Mar-2026 09:30:03]  to  [14-Mar-2026 09:30:02] Page 1").size(), 1u)
      << "the first and the last record as they stand";
  // Pressures 1, 5 and 9, which are rows 4, 1 and 3; without 3 and 7, which are rows 2 and 5.
  EXPECT_EQ(Printed("'1.000'").size(), 2u);
  for (const char* cell : {"'5.000'", "'9.000'", "'4.000'", "'3.000'"}) EXPECT_EQ(Printed(cell).size(), 1u) << cell;
  for (const char* cell : {"'7.000'", "'2.000'"}) EXPECT_EQ(Printed(cell).size(), 0u) << cell;
  EXPECT_EQ(Printed("'4'").size(), 1u) << "the number of a row, without places";
}

TEST_F(SummaryReportEditing, PrintsTheReport) {
  Record({1250, 3});
  session.CurrentValue[1] = 1250;
  Comment(Morning(), "pump 2 on");
  log.Finalise();
  View([&](QDialog&) {
    ThenChoosePrinter(1);
    Press("cmdPrintSummary");
  });
  EXPECT_EQ(Printed("Summary Data On  14-Mar-2026").size(), 1u);
  EXPECT_EQ(Printed("'1,250'").size(), 1u);
  EXPECT_EQ(Printed("'pump 2 on'").size(), 1u);
}

TEST_F(SummaryReportEditing, PrintsNothingWhereNoNumberOfLinesIsGiven) {
  Record({1});
  log.Finalise();
  View([&](QDialog&) {
    dialogs.ExpectInput("Skip every ... lines", std::nullopt);
    Press("cmdPrintLog");
  });
  EXPECT_TRUE(printers.documents.empty());
}

TEST_F(SummaryReportEditing, PrintsOnceWhateverIsPressedMeanwhile) {
  Record(std::vector<double>(300, 5));
  log.Finalise();
  View([&](QDialog&) {
    bool pressed = false;
    passing.onYield = [&] {
      if (pressed) return;
      pressed = true;
      for (const char* key : {"cmdPrintLog", "cmdDelete", "cmdFilter"}) Find<QAbstractButton>(key).click();
      ClickHead(kLog, kPressureColumn);
    };
    dialogs.ExpectInput("Skip every ... lines", "0");
    ThenChoosePrinter(0);
    Press("cmdPrintLog");
    passing.onYield = nullptr;
    EXPECT_TRUE(pressed);
    EXPECT_EQ(Grid(kLog).model()->rowCount(), 300);
    EXPECT_FALSE(Grid(kLog).horizontalHeader()->isSortIndicatorShown());
  });
  ASSERT_EQ(printers.documents.size(), 1u);
  EXPECT_TRUE(printers.documents[0]->ended);
}

TEST_F(SummaryReportEditing, TellsOfAPrinterThatFailsAndStaysAsItWas) {
  Record({1, 2});
  log.Finalise();
  printers.fails = true;
  View([&](QDialog& window) {
    GoTo(kLog, 1);
    dialogs.ExpectInput("Skip every ... lines", "0");
    ThenChoosePrinter(0);
    dialogs.Expect(" - PrintGrid", Answer::Cancel);
    Press("cmdPrintLog");
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(Row(kLog), 1);
    EXPECT_TRUE(IsOn("cmdPrintLog"));
  });
}

TEST_F(SummaryReportEditing, TellsOfADiskThatIsFullForATableAndStaysAsItWas) {
  Record(std::vector<double>(300, 5));
  log.Finalise();
  const std::string pdf = folder.File("log.pdf");
  View([&](QDialog& window) {
    dialogs.ExpectInput("Skip every ... lines", "0");
    ThenChoosePrinter(2);
    dialogs.ExpectSaveFile(pdf);
    dialogs.Expect(" - PrintGrid", Answer::Cancel);
    const test::FileSizeLimit full(1000);
    Press("cmdPrintLog");
    EXPECT_TRUE(window.isVisible());
  });
  EXPECT_FALSE(std::filesystem::exists(pdf));
}

TEST_F(SummaryReportEditing, CanOnlyBeReadWhileAnotherProgramRecords) {
  Record({0, 1, 2});
  Comment(Morning(), "a");
  log.Finalise();
  const test::LockingProgram other(path);
  View([&](QDialog&) {
    for (const char* off : {"cmdDelete", "cmdAddRow", "cmdRemoveRow", "cmdUndo"}) EXPECT_FALSE(IsOn(off)) << off;
    for (const char* on : {"cmdFilter", "cmdGo", "cmdUpdate", "cmdPrintLog"}) EXPECT_TRUE(IsOn(on)) << on;
    EXPECT_TRUE(Text("lblNote").starts_with("The log can be read, not changed: The log [")) << Text("lblNote");
  });
}

TEST_F(SummaryReportEditing, TellsOfADatabaseErrorOnTheReportByItsNumber) {
  Record({0});
  Comment(Morning(), "a");
  log.Finalise();
  View([&](QDialog&) {
    Connection::Open(path, OpenMode::ReadWrite)->Execute("DROP TABLE SummaryReport");
    dialogs.Expect("Database error, No 3078 Which is ", Answer::Ok);
    Press("cmdRemoveRow");
    EXPECT_EQ(Shown(kReport, 0).size(), 1u);
  });
}

TEST_F(SummaryReportEditing, NamesTheProcedureThatFailed) {
  Record({0, 1});
  log.Finalise();
  View([&](QDialog&) {
    Connection::Open(path, OpenMode::ReadWrite)->Execute("DROP TABLE logData");
    dialogs.Expect(" - cmdFilter_Click", Answer::Cancel);
    Press("cmdFilter");
    dialogs.Expect(" - cmdGo_Click", Answer::Cancel);
    Press("cmdGo");
    dialogs.Expect(" - SortlogDataData", Answer::Cancel);
    ClickHead(kLog, kPressureColumn);
    dialogs.Expect(" - cmdDelete_Click", Answer::Cancel);
    Press("cmdDelete");
  });
}

TEST_F(SummaryReportEditing, EntersAdditionalFields) {
  Record({0});
  Comment(Morning(), "a");
  log.Finalise();
  View([&](QDialog&) {
    auto& model = *Grid(kReport).model();
    EXPECT_TRUE(model.setData(model.index(0, 3), "12,5", Qt::EditRole));
    EXPECT_FALSE(model.setData(model.index(0, 3), "much", Qt::EditRole));
  });
  EXPECT_EQ(Query(path, "SELECT Water FROM SummaryReport"), (Lines{"12.5"}));
}

TEST_F(SummaryReportEditing, RefusesAWrongEntryWhateverTakesTheFocus) {
  Record({0});
  Comment(Morning(), "a");
  log.Finalise();
  View([&](QDialog&) {
    QTableView& grid = Grid(kReport);
    grid.setCurrentIndex(grid.model()->index(0, 3));
    grid.edit(grid.currentIndex());
    QTest::keyClicks(grid.findChild<QLineEdit*>("entry"), "much");
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualRect(grid.model()->index(0, 2)).center());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const auto* entry = grid.findChild<QLineEdit*>("entry");
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->text(), "much");
  });
  EXPECT_EQ(Query(path, "SELECT Water FROM SummaryReport"), (Lines{""}));
}

TEST_F(SummaryReportEditing, HasNothingToDoInAnEmptyLog) {
  StartLog(path);
  log.Finalise();
  View([&](QDialog&) {
    EXPECT_EQ(Entered("txtBeginTime"), "");
    EXPECT_EQ(Text("lblNote"), "The log has no records.");
    for (const char* off : {"cmdDelete", "cmdAddRow", "cmdRemoveRow", "cmdGo", "cmdFilter", "cmdPrintLog"})
      EXPECT_FALSE(IsOn(off)) << off;
    Press("cmdUpdate");
    ClickHead(kLog, kTimeColumn);
  });
}

/// A file that looks like one of the Jet format, with its copy in the cache.
class ViewingForeignLog : public SummaryReportEditing {
 protected:
  ViewingForeignLog() {
    setenv("XDG_CACHE_HOME", folder.File("cache").c_str(), 1);
    Record({1, 2});
    Comment(Morning(), "a");
    log.Finalise();
    std::ofstream(old, std::ios::binary) << std::string("\0\1\0\0Standard Jet DB\0", 20);
    std::filesystem::copy_file(path, JetCopyOf(old));
    session.LogFileInUse = old;
  }
  ~ViewingForeignLog() override { unsetenv("XDG_CACHE_HOME"); }

  const std::string old = folder.File("old.mdb");
};

TEST_F(ViewingForeignLog, ShowsItsRowsAndRefusesChangesWithTheReason) {
  View([&](QDialog&) {
    EXPECT_EQ(Shown(kLog, kPressureColumn), (Lines{"1.000", "2.000"}));
    EXPECT_EQ(Text("lblFile"), old);
    EXPECT_NE(Text("lblNote").find("it can be read, not changed"), std::string::npos) << Text("lblNote");
    for (const char* off : {"cmdDelete", "cmdAddRow", "cmdRemoveRow"}) EXPECT_FALSE(IsOn(off)) << off;
    EXPECT_TRUE(IsOn("cmdPrintLog"));
  });
}

TEST_F(ViewingForeignLog, IsSavedAsALogThatCanBeChanged) {
  const std::string saved = folder.File("saved.mdb");
  dialogs.ExpectSaveFile(folder.File("saved"));
  View([&](QDialog&) {
    Press("cmdSaveAsLog");
    EXPECT_EQ(Text("lblNote"), "Saved. Open it by PlayBack File to change it: " + saved);
  });
  Connection::Open(saved, OpenMode::ReadWrite)->Execute("DELETE FROM logData WHERE ID = 1");
  EXPECT_EQ(Query(saved, "SELECT count(*) FROM logData"), (Lines{"1"}));
}

TEST_F(SummaryReportEditing, OffersNoOtherCopyOfALogThatCanBeChanged) {
  Record({1});
  Comment(Morning(), "a");
  log.Finalise();
  View([&](QDialog&) { EXPECT_TRUE(Find<QAbstractButton>("cmdSaveAsLog").isHidden()); });
}

TEST_F(SummaryReportEditing, EndsWithTheProgramInTheMiddleOfASearch) {
  Record(std::vector<double>(3000, 10));
  log.Finalise();
  script.Then("frmSummaryReport", [&](QDialog& window) {
    int yields = 0;
    passing.onYield = [&, shown = &window] {
      if (++yields != 5) return;
      dialogs.SetEnding();
      shown->reject();
    };
    window.findChild<QAbstractButton*>("cmdFilter")->click();
    passing.onYield = nullptr;
    window.reject();
  });
  mnuViewSummaryReport_Click(host, access);
  EXPECT_EQ(dialogs.LongTasks(), 0);
}

}  // namespace
}  // namespace velk
