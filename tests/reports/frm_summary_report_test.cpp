#include "reports/windows/frm_summary_report.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QTableView>
#include <QTest>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "model/status.h"
#include "model/texts.h"
#include "platform/database/jet_copy.h"
#include "reports/viewed_log.h"
#include "reports/windows/summary_report_command.h"
#include "support/fake_printers.h"
#include "support/host.h"
#include "support/locking_program.h"
#include "support/recording_view.h"
#include "support/window_script.h"

namespace velk {
namespace {

using test::Morning;
using test::Seconds;
using Lines = std::vector<std::string>;

/// A clock that a millisecond passes on each time it is asked.
class PassingClock : public test::FakeClock {
 public:
  using FakeClock::FakeClock;
  std::int64_t Ticks() const override { return ++passed_; }

 private:
  mutable std::int64_t passed_ = 0;
};

class SummaryReportEditing : public test::ViewedLog {
 protected:
  ~SummaryReportEditing() override { host.CloseAll(); }

  /// Opens the viewer, and acts on it.
  void View(const std::function<void(QDialog&)>& act) {
    script.Then("frmSummaryReport", [this, act](QDialog& window) {
      window_ = &window;
      QApplication::processEvents();  // what comes with showing it
      act(window);
      window_ = nullptr;
      window.reject();
    });
    mnuViewSummaryReport_Click(host, access);
  }
  template <class Control>
  Control& Find(const char* name) {
    return *window_->findChild<Control*>(QLatin1String(name));
  }
  void Press(const char* key) {
    ASSERT_TRUE(Find<QAbstractButton>(key).isEnabled()) << key;
    Find<QAbstractButton>(key).click();
  }
  bool IsOn(const char* key) { return Find<QAbstractButton>(key).isEnabled(); }
  void Enter(const char* entry, const std::string& text) {
    Find<QLineEdit>(entry).setText(QString::fromStdString(text));
  }
  std::string Entered(const char* entry) { return Find<QLineEdit>(entry).text().toStdString(); }
  std::string Text(const char* label) { return Find<QLabel>(label).text().toStdString(); }
  QTableView& Grid(const char* name) { return Find<QTableView>(name); }
  int Row(const char* grid) { return Grid(grid).currentIndex().row(); }
  void GoTo(const char* grid, int row) { Grid(grid).setCurrentIndex(Grid(grid).model()->index(row, 0)); }
  /// A column of a grid, as it is shown.
  Lines Shown(const char* grid, int column) {
    Lines cells;
    const auto& model = *Grid(grid).model();
    for (int row = 0; row < model.rowCount(); ++row)
      cells.push_back(model.index(row, column).data().toString().toStdString());
    return cells;
  }
  void ClickHead(const char* grid, int column) {
    QHeaderView& heads = *Grid(grid).horizontalHeader();
    QTest::mouseClick(heads.viewport(), Qt::LeftButton, {},
                      QPoint(heads.sectionViewportPosition(column) + 10, heads.height() / 2));
  }
  void ThenChoosePrinter(int row) {
    script.Then("frmPrinterSelect", [row](QDialog& dialog) {
      dialog.findChild<QListWidget*>("List1")->setCurrentRow(row);
      dialog.findChild<QAbstractButton*>("Command1")->click();
    });
  }
  Lines Printed(const std::string& part) {
    Lines found;
    for (const std::string& call : printers.documents.back()->page.calls)
      if (call.starts_with("print") && call.find(part) != std::string::npos) found.push_back(call);
    return found;
  }

  test::WindowScript script;
  WindowHost host{dialogs, test::EnglishWindows()};
  FakePrinters printers;
  PrinterChoice printer{printers};
  PassingClock passing{gate};
  const Platform viewing{passing, gate, dialogs, settings, test::English()};
  const ViewerAccess access{session, viewing, open, printer};

 private:
  QDialog* window_ = nullptr;
};

constexpr int kTimeColumn = 2, kPressureColumn = 3, kCommentColumn = 4;
constexpr const char* kLog = "logDataGrid";
constexpr const char* kReport = "summaryGrid";

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

TEST_F(SummaryReportEditing, RestrictsBothGridsToARangeAndBackToAll) {
  Record({0, 1, 2, 3, 4});
  Comment(Morning() + Seconds(1.2), "early");
  Comment(Morning() + Seconds(3.2), "late");
  log.Finalise();
  View([&](QDialog&) {
    Enter("txtBeginTime", "14-Mar-2026 09:30:02");
    Enter("txtEndTime", "14-Mar-2026 09:30:03");
    Press("cmdUpdate");
    EXPECT_EQ(Shown(kLog, kPressureColumn), (Lines{"2.000", "3.000"}));
    EXPECT_EQ(Shown(kReport, kCommentColumn), (Lines{"late"}));
    Press("cmdALL");
    EXPECT_EQ(Entered("txtBeginTime"), "14-Mar-2026 09:30:00");
    EXPECT_EQ(Shown(kLog, kPressureColumn).size(), 2u) << "until Update";
    Press("cmdUpdate");
    EXPECT_EQ(Shown(kLog, kPressureColumn).size(), 5u);
    EXPECT_EQ(Shown(kReport, kCommentColumn), (Lines{"early", "late"}));
  });
}

TEST_F(SummaryReportEditing, PutsBackABoundThatIsNoTimeOrLiesWrong) {
  Record({0, 1, 2});
  log.Finalise();
  View([&](QDialog&) {
    Enter("txtBeginTime", "nonsense");
    dialogs.Expect("Invalid Date or Time", Answer::Ok);
    Press("cmdUpdate");
    EXPECT_EQ(Entered("txtBeginTime"), "14-Mar-2026 09:30:00");
    Enter("txtBeginTime", "14-Mar-2026 09:30:02");
    Enter("txtEndTime", "14-Mar-2026 09:30:01");
    Press("cmdUpdate");
    EXPECT_EQ(Entered("txtBeginTime"), "14-Mar-2026 09:30:00");
    EXPECT_EQ(Entered("txtEndTime"), "14-Mar-2026 09:30:02");
    Enter("txtEndTime", "1-Jan-2030");
    Press("cmdUpdate");
    EXPECT_EQ(Entered("txtEndTime"), "14-Mar-2026 09:30:02");
    EXPECT_EQ(Shown(kLog, 0).size(), 3u);
  });
}

TEST_F(SummaryReportEditing, GoesToATime) {
  Record({0, 1, 2, 3, 4});
  log.Finalise();
  View([&](QDialog&) {
    Enter("Text1", "14-Mar-2026 09:30:03");
    Press("cmdGo");
    EXPECT_EQ(Row(kLog), 3);
    EXPECT_EQ(Text("lblLogRecord"), "Row 4 of 5");
    Enter("Text1", "at noon");
    dialogs.Expect("Invalid Date or Time", Answer::Ok);
    Press("cmdGo");
    EXPECT_EQ(Row(kLog), 3);
  });
}

TEST_F(SummaryReportEditing, StopsAtTheNextJumpOfAnyColumnOrOfOne) {
  Record({10, 10, 10, 30, 10, 10, 10, 10});
  log.Finalise();
  View([&](QDialog&) {
    Enter("Text2", "0");
    Press("cmdFilter");
    EXPECT_EQ(Row(kLog), 3);
    EXPECT_TRUE(Grid(kLog).selectionModel()->isRowSelected(3, {}));
    GoTo(kLog, 0);
    Find<QComboBox>("Combo1").setCurrentIndex(2);
    Press("cmdFilter");
    EXPECT_EQ(Row(kLog), 7) << "the rate counts up without a jump";
    EXPECT_EQ(Text("lblNote"), "No value jumps between here and the end.");
    Find<QComboBox>("Combo1").setCurrentIndex(1);
    Press("cmdFilter");
    EXPECT_EQ(Row(kLog), 7) << "at its end it stays";
  });
}

TEST_F(SummaryReportEditing, StaysWhereStopFilterIsPressed) {
  Record(std::vector<double>(3000, 10));
  log.Finalise();
  View([&](QDialog& window) {
    int yields = 0;
    const QPoint stop = Find<QAbstractButton>("cmdFilterStop").pos();
    passing.onYield = [&] {
      if (++yields != 10) return;
      window.layout()->activate();
      EXPECT_EQ(Find<QAbstractButton>("cmdFilterStop").pos(), stop) << "the mouse may be on its way to it";
      EXPECT_FALSE(IsOn("cmdUpdate")) << "nothing else is begun meanwhile";
      EXPECT_FALSE(Grid(kLog).isEnabled());
      Find<QAbstractButton>("cmdFilterStop").click();
    };
    Press("cmdFilter");
    EXPECT_EQ(yields, 10);
    EXPECT_GT(Row(kLog), 0);
    EXPECT_LT(Row(kLog), 2999);
    EXPECT_FALSE(IsOn("cmdFilterStop"));
    EXPECT_TRUE(window.isVisible());
    passing.onYield = nullptr;
  });
}

TEST_F(SummaryReportEditing, IsBackAtItsRowWhereEscapeEndsTheSearch) {
  Record(std::vector<double>(3000, 10));
  log.Finalise();
  View([&](QDialog& window) {
    GoTo(kLog, 7);
    int yields = 0;
    passing.onYield = [&] {
      if (++yields == 10) window.reject();
    };
    Press("cmdFilter");
    EXPECT_EQ(Row(kLog), 7);
    EXPECT_TRUE(window.isVisible());
    passing.onYield = nullptr;
  });
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

TEST_F(SummaryReportEditing, GoesToTheRowThatIsPutBackInAnotherOrder) {
  Record({5, 3, 9});
  log.Finalise();
  View([&](QDialog&) {
    GoTo(kLog, 2);
    Press("cmdDelete");
    ClickHead(kLog, kPressureColumn);
    EXPECT_EQ(Shown(kLog, kPressureColumn), (Lines{"3.000", "5.000"}));
    Press("cmdUndo");
    EXPECT_EQ(Shown(kLog, kPressureColumn), (Lines{"3.000", "5.000", "9.000"}));
    EXPECT_EQ(Row(kLog), 2);
    Press("cmdDelete");
    EXPECT_EQ(Query(path, "SELECT Pressure FROM logData"), (Lines{"5.0", "3.0"}));
  });
}

TEST_F(SummaryReportEditing, StaysAtItsRowWhereTheOnePutBackIsOutOfTheRange) {
  Record({0, 1, 2, 3});
  log.Finalise();
  View([&](QDialog&) {
    GoTo(kLog, 0);
    Press("cmdDelete");
    Enter("txtBeginTime", "14-Mar-2026 09:30:02");
    Press("cmdUpdate");
    GoTo(kLog, 1);
    Press("cmdUndo");
    EXPECT_EQ(Shown(kLog, kPressureColumn), (Lines{"2.000", "3.000"}));
    EXPECT_EQ(Row(kLog), 1);
    EXPECT_EQ(Text("lblNote"), "The row is back. It lies outside of the times that are shown.");
  });
}

TEST_F(SummaryReportEditing, TakesAFactorWithACommaAndRefusesOneBelowZero) {
  Record({10, 10, 16, 10, 10});
  log.Finalise();
  View([&](QDialog&) {
    Find<QComboBox>("Combo1").setCurrentIndex(1);
    Enter("Text2", "1,5");
    Press("cmdFilter");
    EXPECT_EQ(Row(kLog), 2) << "16 is more than 1.5 times 10";
    GoTo(kLog, 0);
    Enter("Text2", "1,7");
    Press("cmdFilter");
    EXPECT_EQ(Row(kLog), 4) << "nothing jumps that far";
    GoTo(kLog, 0);
    Enter("Text2", "-2");
    Press("cmdFilter");
    EXPECT_EQ(Row(kLog), 0);
    EXPECT_EQ(Text("lblNote"), "The filter factor can't be less than 0.");
  });
}

TEST_F(SummaryReportEditing, TurnsTheOrderOfAGridByItsHeads) {
  Record({5, 3, 9});
  Comment(Morning() + Seconds(1), "b");
  Comment(Morning() + Seconds(2), "a");
  log.Finalise();
  View([&](QDialog& window) {
    ClickHead(kLog, kPressureColumn);
    EXPECT_EQ(Shown(kLog, kPressureColumn), (Lines{"3.000", "5.000", "9.000"}));
    ClickHead(kLog, kPressureColumn);
    EXPECT_EQ(Shown(kLog, kPressureColumn), (Lines{"9.000", "5.000", "3.000"}));
    EXPECT_EQ(Grid(kLog).horizontalHeader()->sortIndicatorOrder(), Qt::DescendingOrder);
    EXPECT_EQ(window.cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(Shown(kReport, kCommentColumn), (Lines{"b", "a"}));
    ClickHead(kReport, kCommentColumn);
    EXPECT_EQ(Shown(kReport, kCommentColumn), (Lines{"a", "b"}));
    ClickHead(kReport, kCommentColumn);
    EXPECT_EQ(Shown(kReport, kCommentColumn), (Lines{"b", "a"}));
  });
}

TEST_F(SummaryReportEditing, SortsWhatTheRangeHas) {
  Record({5, 3, 9, 1});
  log.Finalise();
  View([&](QDialog&) {
    ClickHead(kLog, kPressureColumn);
    Enter("txtEndTime", "14-Mar-2026 09:30:02");
    Press("cmdUpdate");
    EXPECT_EQ(Shown(kLog, kPressureColumn), (Lines{"3.000", "5.000", "9.000"}));
  });
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
