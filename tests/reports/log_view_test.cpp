#include "reports/log_view.h"

#include <gtest/gtest.h>

#include "reports/viewed_log.h"

namespace velk {
namespace {

using test::Morning;
using test::Seconds;
using Keys = std::vector<std::int64_t>;

class LogViewTest : public test::ViewedLog {
 protected:
  std::unique_ptr<LogView> Open() {
    LongTask task(dialogs, clock, "Test");
    return std::make_unique<LogView>(path, task);
  }
  void Sort(LogView& view, const char* column, bool descending) {
    LongTask task(dialogs, clock, "Test");
    view.SortBy(ColumnOf(view, column), descending, task);
  }
  int Go(LogView& view, int row, double second) {
    LongTask task(dialogs, clock, "Test");
    return view.RowAtTime(row, Morning() + Seconds(second), task);
  }
  std::optional<int> Find(LogView& view, int row, double factor, const std::vector<int>& watched) {
    LongTask task(dialogs, clock, "Test");
    int reached = 0;
    return view.FindEvent(row, EventSearch(factor), watched, task, reached);
  }
};

TEST_F(LogViewTest, ShowsAllFieldsOfTheRowsInOrderOfTime) {
  Record({1204.5, 7});
  const auto view = Open();
  EXPECT_EQ(view->Columns(), (std::vector<std::string>{"ID", "Date", "Time", "Pressure", "Rate"}));
  ASSERT_EQ(view->Count(), 2);
  const auto row = [&](int number) {
    std::string texts;
    for (int i = 0; i < 5; ++i) texts += view->Text(number, i) + "|";
    return texts;
  };
  EXPECT_EQ(row(0), "1|14-Mar-2026|09:30:00|1,204.500|1.000|");
  EXPECT_EQ(row(1), "2|14-Mar-2026|09:30:01|7.000|2.000|");
  EXPECT_EQ(*view->FirstTime(), Morning());
  EXPECT_EQ(*view->LastTime(), JoinDateTime(DateSerial(2026, 3, 14), TimeOfDay(9, 30, 1)));
}

TEST_F(LogViewTest, PutsRowsInOrderOfTimeWhereTheClockWasSetBack) {
  Record({1, 2, 3}, Morning() + Seconds(100));
  Record({4, 5}, Morning());
  EXPECT_EQ(Shown(*Open()), (Keys{4, 5, 1, 2, 3}));
}

TEST_F(LogViewTest, DoesTheSameWithAFileOfAnotherProgramWithoutAnIndex) {
  path = folder.File("other.mdb");
  MakeDatabase(path,
               "CREATE TABLE logData (Depth, Date, Time);"
               "INSERT INTO logData VALUES (7, 46095, 0.5), ('stuck', 46095, 0.25), (NULL, 46094, 0.75), (9, '', '')");
  const auto view = Open();
  EXPECT_EQ(Shown(*view), (Keys{4, 3, 2, 1})) << "a row without a time comes first";
  EXPECT_EQ(view->Text(2, 0), "stuck");
  EXPECT_EQ(view->Text(1, 0), "");
  EXPECT_EQ(view->Text(3, 0), "7.000");
  view->SetRange(46094.5, 46095.25);
  EXPECT_EQ(Shown(*view), (Keys{3, 2}));
}

TEST_F(LogViewTest, ShowsNothingOfALogWithoutRows) {
  StartLog(path);
  const auto view = Open();
  EXPECT_EQ(view->Count(), 0);
  EXPECT_FALSE(view->FirstTime());
  Sort(*view, "Rate", true);
  EXPECT_EQ(view->Count(), 0);
}

TEST_F(LogViewTest, ShowsARangeWithBothOfItsBounds) {
  Record({0, 1, 2, 3, 4, 5});
  const auto view = Open();
  view->SetRange(Morning() + TimeOfDay(0, 0, 2), Morning() + TimeOfDay(0, 0, 4));
  EXPECT_EQ(Shown(*view), (Keys{3, 4, 5}));
  view->SetRange(Morning() + TimeOfDay(0, 0, 5) + Seconds(0.5), Morning() + Seconds(100));
  EXPECT_EQ(view->Count(), 0);
}

TEST_F(LogViewTest, FindsRowsOverMidnight) {
  const double late = JoinDateTime(DateSerial(2026, 3, 14), TimeOfDay(23, 59, 58));
  Record({0, 1, 2, 3}, late);
  const auto view = Open();
  view->SetRange(JoinDateTime(DateSerial(2026, 3, 14), TimeOfDay(23, 59, 59)),
                 JoinDateTime(DateSerial(2026, 3, 15), TimeOfDay(0, 0, 0)));
  EXPECT_EQ(Shown(*view), (Keys{2, 3}));
}

TEST_F(LogViewTest, SortsByAnyColumnAndChangesNothingInTheFile) {
  Record({5, 3, 9, 3});
  log.Finalise();
  const auto written = std::filesystem::last_write_time(path);
  const auto view = Open();
  Sort(*view, "Pressure", false);
  EXPECT_EQ(Shown(*view), (Keys{2, 4, 1, 3}));
  EXPECT_EQ(view->Text(0, 3), "3.000");
  Sort(*view, "Pressure", true);
  EXPECT_EQ(Shown(*view), (Keys{3, 1, 2, 4}));
  Sort(*view, "ID", true);
  EXPECT_EQ(Shown(*view), (Keys{4, 3, 2, 1}));
  EXPECT_EQ(std::filesystem::last_write_time(path), written);
  EXPECT_EQ(FilesInFolder(), (std::vector<std::string>{"run.mdb"}));
}

TEST_F(LogViewTest, SortsTheSecondTimeWithoutReading) {
  Record({5, 3, 9});
  log.Finalise();
  const auto view = Open();
  Sort(*view, "Pressure", false);
  Sort(*view, "Rate", false);
  std::filesystem::remove(path);
  Sort(*view, "Pressure", true);
  EXPECT_EQ(Shown(*view), (Keys{3, 1, 2}));
}

TEST_F(LogViewTest, KeepsItsOrderWhereASortIsCancelled) {
  Record(std::vector<double>(3000, 5));
  const auto view = Open();
  view->SetRange(Morning(), Morning() + Seconds(5.5));
  dialogs.cancelProgress = true;
  LongTask task(dialogs, clock, "Test");
  clock.Advance(400);
  EXPECT_THROW(view->SortBy(3, true, task), TaskCancelled);
  EXPECT_EQ(Shown(*view), (Keys{1, 2, 3, 4, 5, 6}));
}

TEST_F(LogViewTest, SortsWhatWasRecordedWithTheClockSetBack) {
  Record({1, 5}, Morning() + Seconds(100));
  Record({4, 2}, Morning());
  const auto view = Open();
  Sort(*view, "Pressure", false);
  EXPECT_EQ(Shown(*view), (Keys{1, 4, 3, 2}));
}

TEST_F(LogViewTest, GoesForwardToTheFirstRowAtOrBehindATime) {
  Record({0, 1, 2, 3, 4});
  const auto view = Open();
  EXPECT_EQ(Go(*view, 0, 3), 3);
  EXPECT_EQ(Go(*view, 1, 2.5), 3);
  EXPECT_EQ(Go(*view, 1, 500), 4) << "the end";
  EXPECT_EQ(Go(*view, 2, 2), 2);
}

TEST_F(LogViewTest, GoesBackToTheFirstRowAtOrAheadOfATime) {
  Record({0, 1, 2, 3, 4});
  const auto view = Open();
  EXPECT_EQ(Go(*view, 4, 1), 1);
  EXPECT_EQ(Go(*view, 4, 2.5), 2);
  EXPECT_EQ(Go(*view, 3, -100), 0) << "the beginning";
}

TEST_F(LogViewTest, WalksToATimeInAnotherOrder) {
  Record({5, 1, 4, 2, 3});
  const auto view = Open();
  Sort(*view, "Pressure", false);  // seconds 1, 3, 4, 2, 0
  EXPECT_EQ(Go(*view, 0, 2), 1) << "the first that passes it on the way";
  EXPECT_EQ(Go(*view, 4, 4), 4) << "no row behind the last";
  EXPECT_EQ(Go(*view, 2, 2), 0) << "from 4 back: 3, then 1, which has passed it";
}

TEST_F(LogViewTest, FindsTheNextJumpBehindARow) {
  Record({10, 10, 10, 30, 10, 10, 10, 40});
  const auto view = Open();
  EXPECT_EQ(Find(*view, 0, 2, {0}), 3);
  EXPECT_EQ(Find(*view, 3, 2, {0}), 7) << "30 and 10 before it: 10 is no less than half of their mean";
  EXPECT_EQ(Find(*view, 3, 1.9, {0}), 5);
  EXPECT_EQ(Find(*view, 6, 2, {0}), std::nullopt) << "the last two are all there is";
  EXPECT_EQ(Find(*view, 0, 2, {1}), std::nullopt) << "1, 2, 3: the third is no more than twice 1.5";
}

TEST_F(LogViewTest, SearchesInTheOrderAndTheRangeThatAreShown) {
  Record({10, 10, 10, 30, 10, 10});
  const auto view = Open();
  Sort(*view, "Pressure", false);
  EXPECT_EQ(Find(*view, 0, 2, {0}), 5);
  view->SetRange(Morning(), Morning() + Seconds(2.5));
  EXPECT_EQ(Find(*view, 0, 2, {0}), std::nullopt);
}

TEST_F(LogViewTest, FindsAJumpBehindManyRowsAndAGap) {
  std::vector<double> pressures(1500, 10);
  pressures[1400] = 50;
  Record(pressures);
  log.Writing()->Execute("DELETE FROM logData WHERE ID IN (300, 301, 900)");
  const auto view = Open();
  EXPECT_EQ(Find(*view, 0, 2, {0, 1}), 1397) << "1400, less the three that are gone";
}

TEST_F(LogViewTest, FindsTimesAmongRowsThatSomebodyElseHasDeleted) {
  Record({0, 1, 2, 3, 4, 5, 6, 7});
  const auto view = Open();
  log.Writing()->Execute("DELETE FROM logData WHERE ID IN (4, 5, 6)");  // the middle, where a bisection looks first
  EXPECT_EQ(Go(*view, 0, 0.5), 1);
  EXPECT_EQ(Go(*view, 7, 1.5), 1);
  EXPECT_EQ(Go(*view, 0, 5.5), 6);
  EXPECT_EQ(Go(*view, 4, 1.5), 1) << "from one of them, whose time is that of the row ahead of it";
  view->SetRange(Morning() + Seconds(0.5), Morning() + Seconds(1.5));
  EXPECT_EQ(Shown(*view), (Keys{2}));
  EXPECT_TRUE(view->IsInFile(0));
}

TEST_F(LogViewTest, ReadsALogThatIsRecordedToAndLetsItEnd) {
  Record({1, 2, 3});
  const auto view = Open();
  EXPECT_EQ(view->Text(2, 3), "3.000");
  log.Finalise();
  EXPECT_EQ(view->Text(1, 3), "2.000");
}

TEST_F(LogViewTest, ShowsTextsEmptyAndOddFieldsAsTheyAre) {
  EXPECT_EQ(CellText(std::string("open"), CellKind::Number, false), "open");
  EXPECT_EQ(CellText({}, CellKind::Number, false), "");
  EXPECT_EQ(CellText(std::nan(""), CellKind::Number, false), "nan");
  EXPECT_EQ(CellText(5e12, CellKind::Number, false), "5,000,000,000,000.000");
  EXPECT_EQ(CellText(std::int64_t{1234}, CellKind::Number, false), "1,234.000");
  EXPECT_EQ(CellText(std::int64_t{1234}, CellKind::Number, true), "1234");
  EXPECT_EQ(CellText(std::string("14-Mar-2026"), CellKind::Date, false), "14-Mar-2026");
  EXPECT_EQ(CellText(std::string("sometime"), CellKind::Date, false), "sometime");
  EXPECT_EQ(CellText(0.5, CellKind::Time, false), "12:00:00");
}

}  // namespace
}  // namespace velk
