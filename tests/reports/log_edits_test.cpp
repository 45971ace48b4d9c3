#include "reports/log_edits.h"

#include <gtest/gtest.h>

#include "platform/files/file_lock.h"
#include "reports/viewed_log.h"
#include "support/locking_program.h"

namespace velk {
namespace {

using test::Lines;
using test::Morning;
using test::Seconds;
using Keys = std::vector<std::int64_t>;

class LogEditsTest : public test::ViewedLog {
 protected:
  void Open() {
    LongTask task(dialogs, clock, "Test");
    view = std::make_unique<LogView>(path, task);
    edits = std::make_unique<LogEdits>(open, *view);
  }
  Lines Rows() { return Query(path, "SELECT ID, Pressure, Rate FROM logData ORDER BY ID"); }
  Lines Report() { return Query(path, "SELECT Pressure, Water, Comments FROM SummaryReport ORDER BY rowid"); }

  std::unique_ptr<LogView> view;
  std::unique_ptr<LogEdits> edits;
};

TEST_F(LogEditsTest, DeletesARowAndPutsItBackAsItWas) {
  Record({10, 20, 30});
  log.Finalise();
  Open();
  const Lines before = Rows();
  int told = 0;
  open.onRowsChanged = [&] { ++told; };
  edits->DeleteRow(1);
  EXPECT_EQ(told, 1);
  EXPECT_EQ(Rows(), (Lines{"1|10.0|1.0", "3|30.0|3.0"}));
  EXPECT_EQ(Shown(*view), (Keys{1, 3}));
  ASSERT_TRUE(edits->CanUndo());
  EXPECT_EQ(edits->Undo(), Place{1});
  EXPECT_EQ(told, 2);
  EXPECT_EQ(Rows(), before);
  EXPECT_EQ(Shown(*view), (Keys{1, 2, 3}));
  EXPECT_FALSE(edits->CanUndo());
}

TEST_F(LogEditsTest, TakesBackTheLastChangeFirst) {
  Record({10, 20, 30});
  Comment(Morning(), "kept");
  Comment(Morning() + Seconds(1), "removed");
  log.Finalise();
  Open();
  edits->DeleteRow(2);
  edits->RemoveLine(2);
  edits->DeleteRow(0);
  EXPECT_EQ(Rows(), (Lines{"2|20.0|2.0"}));
  EXPECT_EQ(Report().size(), 1u);
  EXPECT_EQ(edits->Undo(), Place{0});
  EXPECT_EQ(edits->Undo(), std::nullopt);
  EXPECT_EQ(Report(), (Lines{"0.0||kept", "0.0||removed"}));
  EXPECT_EQ(edits->Undo(), Place{2});
  EXPECT_EQ(Rows().size(), 3u);
}

TEST_F(LogEditsTest, AddsALineWithTimeAndValuesOfTheRow) {
  Record({10, 20.25, 30});
  log.Finalise();
  Open();
  edits->AddLine(1, "pump 2 on");
  EXPECT_EQ(Report(), (Lines{"20.25||pump 2 on"})) << "Rate is not included, Water is entered by hand";
  EXPECT_EQ(Query(path, "SELECT r.Date = l.Date, r.Time = l.Time FROM SummaryReport r, logData l WHERE l.ID = 2"),
            (Lines{"1|1"}));
}

TEST_F(LogEditsTest, KeepsTheFirst255CharactersOfAComment) {
  Record({10});
  Open();
  std::string letters;
  for (int i = 0; i < 300; ++i) letters += "ы";
  edits->AddLine(0, letters);
  EXPECT_EQ(Query(path, "SELECT length(Comments) FROM SummaryReport"), (Lines{"255"}));
}

TEST_F(LogEditsTest, OfAPausedJobGoThroughItsConnectionAndCostItNoRow) {
  Record({10, 20, 30});
  Open();
  EXPECT_TRUE(edits->WhyNot().IsEmpty());
  edits->DeleteRow(2);
  edits->AddLine(0, "bad record taken out");
  Record({40, 50}, Morning() + Seconds(10));
  EXPECT_EQ(log.RowsOfJob().count, 4) << "as many as can be read back";
  log.Finalise();
  EXPECT_EQ(Query(path, "SELECT Pressure FROM logData ORDER BY Date, Time"), (Lines{"10.0", "20.0", "40.0", "50.0"}));
  EXPECT_EQ(Report(), (Lines{"10.0||bad record taken out"}));
}

TEST_F(LogEditsTest, CountARowAgainThatIsPutBack) {
  Record({10, 20});
  Open();
  edits->DeleteRow(0);
  EXPECT_EQ(log.RowsOfJob().count, 1);
  edits->Undo();
  EXPECT_EQ(log.RowsOfJob().count, 2);
}

TEST_F(LogEditsTest, AreOffWhileAnotherProgramRecords) {
  Record({10, 20});
  log.Finalise();
  const test::LockingProgram other(path);
  Open();
  EXPECT_NE(edits->WhyNot().English().find("is being recorded by another VELK"), std::string::npos);
  EXPECT_THROW(edits->DeleteRow(0), RuntimeError);
  EXPECT_EQ(Rows().size(), 2u);
  EXPECT_EQ(view->Count(), 2);
  EXPECT_FALSE(edits->CanUndo());
}

TEST_F(LogEditsTest, SayThatARowIsGoneAlready) {
  Record({10, 20});
  log.Finalise();
  Open();
  Connection::Open(path, OpenMode::ReadWrite)->Execute("DELETE FROM logData WHERE ID = 1");
  EXPECT_EQ(ErrorOf([&] { edits->DeleteRow(0); }, ErrorNumber::NoCurrentRecord).empty(), false);
  EXPECT_FALSE(edits->CanUndo());
}

TEST_F(LogEditsTest, PutARowBackWhereItBelongsInAnOrderThatWasReadWithoutIt) {
  Record({30, 10, 20});
  log.Finalise();
  Open();
  edits->DeleteRow(2);  // 20
  edits->DeleteRow(0);  // 30, the highest
  LongTask task(dialogs, clock, "Test");
  view->SortBy(ColumnOf(*view, "Pressure"), false, task);
  EXPECT_EQ(Shown(*view), (Keys{2}));
  EXPECT_EQ(edits->Undo(), Place{0});
  EXPECT_EQ(Shown(*view), (Keys{2, 1}));
  EXPECT_EQ(edits->Undo(), Place{2});
  EXPECT_EQ(Shown(*view), (Keys{2, 3, 1})) << "10, 20, 30";
  EXPECT_EQ(view->Order().RowOf(2), 1);
  view->SortBy(ColumnOf(*view, "Pressure"), true, task);
  EXPECT_EQ(Shown(*view), (Keys{1, 3, 2}));
}

TEST_F(LogEditsTest, PutALineBackWhoseKeyHasBeenTaken) {
  Record({10, 20});
  for (const char* comment : {"a", "b", "c"}) Comment(clock.Now() + Seconds(1), comment);
  log.Finalise();
  Open();
  edits->RemoveLine(2);
  edits->RemoveLine(3);
  edits->AddLine(0, "d");  // the highest key that stands is 1: this line gets 2
  edits->AddLine(0, "e");  // and this one 3
  edits->Undo();
  EXPECT_EQ(Query(path, "SELECT Comments FROM SummaryReport ORDER BY rowid"), (Lines{"a", "d", "e", "c"}));
  edits->Undo();
  EXPECT_EQ(Query(path, "SELECT Comments FROM SummaryReport ORDER BY Date, Time, rowid"),
            (Lines{"d", "e", "a", "b", "c"}))
      << "each once, at its own time";
  EXPECT_FALSE(edits->CanUndo());
}

TEST_F(LogEditsTest, PutARowOfTheLogBackWhoseNumberHasBeenTaken) {
  Record({10, 20});
  log.Finalise();
  Open();
  edits->DeleteRow(1);
  Connection::Open(path, OpenMode::ReadWrite)
      ->Execute("INSERT INTO logData (ID, Date, Time, Pressure) SELECT 2, Date, Time, 99 FROM logData");
  EXPECT_EQ(edits->Undo(), Place{1});
  EXPECT_EQ(Query(path, "SELECT ID, Pressure FROM logData ORDER BY ID"), (Lines{"1|10.0", "2|99.0", "3|20.0"}));
  EXPECT_EQ(Shown(*view), (Keys{1, 3}));
}

TEST_F(LogEditsTest, AddNoLineForARowThatSomebodyElseHasDeleted) {
  Record({10, 20});
  log.Finalise();
  Open();
  Connection::Open(path, OpenMode::ReadWrite)->Execute("DELETE FROM logData WHERE ID = 1");
  EXPECT_FALSE(ErrorOf([&] { edits->AddLine(0, "of nothing"); }, ErrorNumber::NoCurrentRecord).empty());
  EXPECT_TRUE(Report().empty());
}

TEST_F(LogEditsTest, PutBackARowOfATableWithoutAnIdentity) {
  path = folder.File("other.mdb");
  MakeDatabase(path,
               "CREATE TABLE logData (Date, Time, Depth); CREATE TABLE SummaryReport (Date, Time, Comments TEXT);"
               "INSERT INTO logData VALUES (46095, 0.25, 7), (46095, 0.5, 'stuck'), (46095, 0.75, NULL)");
  Open();
  edits->DeleteRow(1);
  EXPECT_EQ(Shown(*view), (Keys{1, 3}));
  edits->Undo();
  EXPECT_EQ(Query(path, "SELECT rowid, Time, Depth FROM logData ORDER BY rowid"),
            (Lines{"1|0.25|7", "2|0.5|stuck", "3|0.75|"}));
}

}  // namespace
}  // namespace velk
