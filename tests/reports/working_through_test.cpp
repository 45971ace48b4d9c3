#include <gtest/gtest.h>

#include <QComboBox>
#include <QLayout>

#include "reports/viewer_fixture.h"

// Ranges, jumps, searches and orders in the viewer.

namespace velk {
namespace {

using test::kCommentColumn;
using test::kLog;
using test::kPressureColumn;
using test::kReport;
using test::Lines;
using test::Morning;
using test::Seconds;
using test::SummaryReportEditing;

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

}  // namespace
}  // namespace velk
