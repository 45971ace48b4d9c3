#include "exchange/csv_import.h"

#include "base/dates.h"
#include "base/numbers.h"
#include "exchange/csv_times.h"
#include "exchange/exchange_fixture.h"
#include "exchange/log_tables.h"
#include "log/log_parameters.h"
#include "log/playback_file.h"
#include "platform/files/file_lock.h"
#include "support/file_size_limit.h"

namespace velk {
namespace {

using Rows = std::vector<std::string>;

class CsvImport : public test::ExchangeFixture {
 protected:
  CsvImportResult Import(const std::string& bytes, bool replaces = false) {
    return Run(bytes, [&](const CsvFile& file, const CsvPlan& plan, LongTask& task) {
      return ImportIntoNewLog(file, plan, path, replaces, test::English(), task);
    });
  }
  CsvImportResult Append(const std::string& bytes) {
    return Run(bytes, [&](const CsvFile& file, const CsvPlan& plan, LongTask& task) {
      return AppendToLog(file, plan, path, test::English(), task);
    });
  }
  template <class Work>
  CsvImportResult Run(const std::string& bytes, Work work) {
    CsvFile file(Write("in.csv", bytes), CodePage::Western);
    CsvPlan plan = PlanOf(file.Shape(), file.Shape().ColumnNames);
    plan.startDay = DateSerial(2026, 11, 21);
    plan.deletedLines = deleted;
    LongTask task = Task();
    clock.Advance(400);
    return work(file, plan, task);
  }
  Rows LogRows() const {
    Rows rows;
    LogReader log(path);
    for (const LogRow& row : log.Page({}, 100)) {
      std::string text = FormatDate(row.time, "dd-mmm-yyyy hh:nn:ss");
      for (const double value : row.values) text += "|" + NumberText(value);
      rows.push_back(text);
    }
    return rows;
  }

  std::vector<std::int64_t> deleted;
};

TEST_F(CsvImport, MakesALogThatPlaysBack) {
  const CsvImportResult result =
      Import("Date,Time,Hook load,P.1\n28-Feb-2026,23:59:59,1.5,-2e3\n1/3/2026,00:00:00,2,3\n");
  EXPECT_EQ(result.rows, 2);
  EXPECT_EQ(result.badLine, 0);
  EXPECT_EQ(LogRows(), (Rows{"28-Feb-2026 23:59:59|1.5|-2000", "01-Mar-2026 00:00:00|2|3"}));
  EXPECT_EQ(Columns(path, "logData"), (Rows{"ID", "Date", "Time", "Hook load", "P1"}));
  const PlaybackFile played = OpenForPlayback(path, test::English());
  ASSERT_EQ(played.parameters.channels.size(), 2U);
  EXPECT_EQ(played.parameters.channels[1].name, "P.1");
  EXPECT_EQ(played.beginning.size(), 2U);
}

TEST_F(CsvImport, GivesEachColumnItsGraphSettings) {
  Import("Date,Time,A,\n21-Nov-2026,10:00:00,1,2\n");
  EXPECT_EQ(Query(path, "SELECT * FROM GraphSettings"),
            (Rows{"A|Units|0.0|100.0|#0.000|1|3018952", "Parameter 1|Units|0.0|100.0|#0.000|2|12080896"}));
}

TEST_F(CsvImport, TakesMissingFieldsAndTextsForZeroAndLeavesOutWhatIsTooMuch) {
  Import("Date,Time,A,B\n21-Nov-2026,10:00:00,7\n21-Nov-2026,10:00:01,abc,1.5x,9,9\n21-Nov-2026,10:00:02,,4\n");
  EXPECT_EQ(LogRows(), (Rows{"21-Nov-2026 10:00:00|7|0", "21-Nov-2026 10:00:01|0|1.5", "21-Nov-2026 10:00:02|0|4"}));
}

TEST_F(CsvImport, WritesEveryRowOfALongFile) {
  std::string bytes = "Date,Time,A,B,TheComment\n";
  for (int i = 1; i <= 9001; ++i)
    bytes += "21-Nov-2026," + CsvTimeText(i) + "," + std::to_string(i) + "," + std::to_string(2 * i) +
             (i % 3000 == 0 ? ",at " + std::to_string(i) : "") + "\n";
  EXPECT_EQ(Import(bytes).rows, 9001);
  EXPECT_EQ(Query(path,
                  "SELECT count(*), max(ID) FROM logData WHERE A = ID AND B = 2 * ID AND round(Time * 86400) = ID AND "
                  "(TheComment IS NULL) = (ID % 3000 <> 0)"),
            (Rows{"9001|9001"}));
  EXPECT_EQ(Query(path, "SELECT A, Comments FROM SummaryReport"),
            (Rows{"3000.0|at 3000", "6000.0|at 6000", "9000.0|at 9000"}));
}

TEST_F(CsvImport, CarriesTheDateOfAFileWithoutDatesOverMidnight) {
  Import("23:59:58,1\n23:59:59,2\n00:00:00,3\n00:00:01,4\n");
  EXPECT_EQ(LogRows(), (Rows{"21-Nov-2026 23:59:58|1|0", "21-Nov-2026 23:59:59|2|0", "22-Nov-2026 00:00:00|3|0",
                             "22-Nov-2026 00:00:01|4|0"}));
}

TEST_F(CsvImport, EndsAtARowWithoutDateOrTimeAndKeepsThoseAheadOfIt) {
  for (const char* bad : {"21-Nov-2026,noon,2", "yesterday,10:00:01,2", ",,", "x"}) {
    std::filesystem::remove(path);
    const CsvImportResult result =
        Import("Date,Time,A\n21-Nov-2026,10:00:00,1\n" + std::string(bad) + "\n21-Nov-2026,10:00:02,3\n");
    EXPECT_EQ(result.rows, 1) << bad;
    EXPECT_EQ(result.badLine, 3) << bad;
    EXPECT_EQ(LogRows(), (Rows{"21-Nov-2026 10:00:00|1"})) << bad;
  }
}

TEST_F(CsvImport, TakesABlankLineForARowUnlessItStandsAtTheEnd) {
  EXPECT_EQ(Import("Date,Time,A\n21-Nov-2026,10:00:00,1\n\n\n21-Nov-2026,10:00:02,3\n").badLine, 3);
  std::filesystem::remove(path);
  EXPECT_EQ(Import("Date,Time,A\n21-Nov-2026,10:00:00,1\n\n\n").badLine, 0);
}

TEST_F(CsvImport, LeavesOutDeletedRows) {
  deleted = {2, 3};
  Import("Date,Time,A\n21-Nov-2026,10:00:00,1\nno date\n\n21-Nov-2026,10:00:02,3\n");
  EXPECT_EQ(LogRows(), (Rows{"21-Nov-2026 10:00:00|1", "21-Nov-2026 10:00:02|3"}));
}

TEST_F(CsvImport, BringsEachNewCommentIntoTheReport) {
  Import(
      "Date,Time,A,TheComment\n21-Nov-2026,10:00:00,1,\n21-Nov-2026,10:00:01,2, Packer set "
      "\n21-Nov-2026,10:00:02,3,Packer "
      "set\n21-Nov-2026,10:00:03,4,\n21-Nov-2026,10:00:04,5,Packer set\n21-Nov-2026,10:00:05,6,Pulling out\n");
  EXPECT_EQ(Query(path, "SELECT A, Comments, round(Time*86400) FROM SummaryReport"),
            (Rows{"2.0|Packer set|36001.0", "6.0|Pulling out|36005.0"}));
  EXPECT_EQ(Columns(path, "logData"), (Rows{"ID", "Date", "Time", "A", "TheComment"}));
  EXPECT_EQ(Columns(path, "SummaryReport"), (Rows{"Date", "Time", "A", "Comments"}));
  EXPECT_EQ(Query(path, "SELECT TheComment FROM logData WHERE A = 2"), (Rows{" Packer set "}));
  EXPECT_EQ(OpenForPlayback(path, test::English()).parameters.channels.size(), 1U);
}

TEST_F(CsvImport, TellsColumnsOfOneNameApart) {
  Import("Date,Time,A,a,ID,BLANK,[]\n21-Nov-2026,10:00:00,1,2,3,4,5\n");
  EXPECT_EQ(Columns(path, "logData"), (Rows{"ID", "Date", "Time", "A", "a_2", "ID_3", "BLANK4", "BLANK5"}));
}

TEST_F(CsvImport, ReadsTheNumbersOfEveryPicture) {
  EXPECT_EQ(CsvNumber("12.5"), 12.5);
  EXPECT_EQ(CsvNumber("-12.5E-1"), -1.25);
  EXPECT_EQ(CsvNumber(" +3"), 3);
  EXPECT_EQ(CsvNumber(".5"), 0.5);
  EXPECT_EQ(CsvNumber("7 m"), 7);
  EXPECT_EQ(CsvNumber("5e"), 5);
  EXPECT_EQ(CsvNumber("-"), 0);
  EXPECT_EQ(CsvNumber("0x10"), 0);
  EXPECT_EQ(CsvNumber("nan"), 0);
  EXPECT_EQ(CsvNumber("1e400"), std::numeric_limits<double>::infinity());
}

TEST_F(CsvImport, LeavesNothingBehindWhereItIsCancelled) {
  std::string bytes = "Date,Time,A\n";
  for (int i = 0; i < 20000; ++i) bytes += "21-Nov-2026,10:00:00,1\n";
  dialogs.cancelProgress = true;
  EXPECT_THROW(Import(bytes), TaskCancelled);
  EXPECT_EQ(FilesInFolder(), (Rows{"in.csv"}));
}

TEST_F(CsvImport, LeavesTheOldLogWhereItsReplacementIsCancelled) {
  Import("Date,Time,A\n21-Nov-2026,10:00:00,1\n");
  std::string bytes = "Date,Time,B\n";
  for (int i = 0; i < 20000; ++i) bytes += "21-Nov-2026,10:00:00,1\n";
  dialogs.cancelProgress = true;
  EXPECT_THROW(Import(bytes, true), TaskCancelled);
  EXPECT_EQ(LogRows(), (Rows{"21-Nov-2026 10:00:00|1"}));
  EXPECT_EQ(FilesInFolder(), (Rows{"in.csv", "run.mdb"}));
}

TEST_F(CsvImport, ReplacesALogWithItsJournals) {
  Import("Date,Time,A\n21-Nov-2026,10:00:00,1\n");
  Write("run.mdb-journal", "left by a program that died");
  Import("Date,Time,B\n21-Nov-2026,10:00:05,5\n", true);
  EXPECT_EQ(LogRows(), (Rows{"21-Nov-2026 10:00:05|5"}));
  EXPECT_EQ(FilesInFolder(), (Rows{"in.csv", "run.mdb"}));
}

TEST_F(CsvImport, TouchesNoFileThatIsThereUnlessItReplacesIt) {
  Write("run.mdb", "another file");
  ErrorOf([&] { Import("Date,Time,A\n21-Nov-2026,10:00:00,1\n"); }, ErrorNumber::FileAlreadyExists);
  EXPECT_EQ(Read(path), "another file");
}

TEST_F(CsvImport, RemovesWhatItBeganOnAFullDisk) {
  std::string bytes = "Date,Time,A\n";
  for (int i = 0; i < 20000; ++i) bytes += "21-Nov-2026,10:00:00," + std::to_string(i * 0.37) + "\n";
  Write("in.csv", bytes);
  {
    const test::FileSizeLimit limit(900'000);
    ErrorOf([&] { Import(bytes); }, ErrorNumber::DiskFull);
  }
  EXPECT_EQ(FilesInFolder(), (Rows{"in.csv"}));
}

TEST_F(CsvImport, AppendsRowsBehindThoseOfALog) {
  Import("Date,Time,A,TheComment\n21-Nov-2026,10:00:00,1,one\n");
  const CsvImportResult result = Append("Date,Time,A,TheComment\n21-Nov-2026,10:00:01,2,one\n");
  EXPECT_EQ(result.rows, 1);
  EXPECT_EQ(Query(path, "SELECT ID, A, TheComment FROM logData"), (Rows{"1|1.0|one", "2|2.0|one"}));
  EXPECT_EQ(Query(path, "SELECT A, Comments FROM SummaryReport"), (Rows{"1.0|one", "2.0|one"}));
  EXPECT_EQ(Query(path, "SELECT count(*) FROM GraphSettings"), (Rows{"1"}));
}

TEST_F(CsvImport, AppendsToARecordedLogWhoseReportHasFewerChannels) {
  NameChannels({"A", "B"});
  session.CurrentParameters[2].IncludeInSummary = true;
  log.CreateLogFile(path);
  Append("Date,Time,A,B,TheComment\n21-Nov-2026,10:00:01,2,3,tripped\n");
  EXPECT_EQ(Query(path, "SELECT B, Comments FROM SummaryReport"), (Rows{"3.0|tripped"}));
}

TEST_F(CsvImport, RefusesToAppendToALogThatIsBeingRecorded) {
  Import("Date,Time,A\n21-Nov-2026,10:00:00,1\n");
  const auto held = FileLock::Take(path);
  ErrorOf([&] { Append("Date,Time,A\n21-Nov-2026,10:00:01,2\n"); }, ErrorNumber::FileAlreadyOpen);
  ErrorOf([&] { Import("Date,Time,A\n21-Nov-2026,10:00:01,2\n", true); }, ErrorNumber::FileAlreadyOpen);
  EXPECT_EQ(LogRows().size(), 1U);
}

TEST_F(CsvImport, KeepsWhatWasAppendedBeforeItIsCancelled) {
  Import("Date,Time,A\n21-Nov-2026,10:00:00,1\n");
  std::string bytes = "Date,Time,A\n";
  for (int i = 0; i < 20000; ++i) bytes += "21-Nov-2026,10:00:00,1\n";
  dialogs.cancelProgress = true;
  EXPECT_THROW(Append(bytes), TaskCancelled);
  EXPECT_EQ(Query(path, "SELECT count(*) > 1 FROM logData"), (Rows{"1"}));
  EXPECT_EQ(FilesInFolder(), (Rows{"in.csv", "run.mdb"}));
}

TEST_F(CsvImport, LeavesALogWholeThatIsAppendedToOnAFullDisk) {
  Import("Date,Time,A\n21-Nov-2026,10:00:00,1\n");
  std::string bytes = "Date,Time,A\n";
  for (int i = 0; i < 150'000; ++i) bytes += "21-Nov-2026,10:00:01," + std::to_string(i * 0.37) + "\n";
  const auto append = [&](const CsvFile& file, const CsvPlan& plan, LongTask& task) {
    // Some 51 bytes a row.
    const test::FileSizeLimit limit(5'500'000);
    return AppendToLog(file, plan, path, test::English(), task);
  };
  ErrorOf([&] { Run(bytes, append); }, ErrorNumber::DiskFull);
  EXPECT_EQ(Query(path, "PRAGMA integrity_check"), (Rows{"ok"}));
  EXPECT_EQ(Query(path, "SELECT count(*) >= 65536 FROM logData"), (Rows{"1"})) << "what was added stays";
  EXPECT_EQ(FilesInFolder(), (Rows{"in.csv", "run.mdb"}));
}

TEST_F(CsvImport, TellsWhichLogsCanBeAppendedTo) {
  Import("Date,Time,A,B\n21-Nov-2026,10:00:00,1,2\n");
  EXPECT_TRUE(CheckLogCompatible(path, {"A", "B"}));
  EXPECT_TRUE(CheckLogCompatible(path, {"A"}));
  EXPECT_FALSE(CheckLogCompatible(path, {"A", "C"}));
  EXPECT_FALSE(CheckLogCompatible(path, {"B", "A"}));
  EXPECT_FALSE(CheckLogCompatible(path, {"a", "B"}));
  EXPECT_FALSE(CheckLogCompatible(path, {"A", "B", "C"}));
  MakeDatabase(folder.File("other.mdb"), "CREATE TABLE t (a)");
  EXPECT_FALSE(CheckLogCompatible(folder.File("other.mdb"), {"A"}));
}

TEST_F(CsvImport, ComparesNamesAsTheyAreWritten) {
  Import("Date,Time,P.1\n21-Nov-2026,10:00:00,1\n");
  EXPECT_FALSE(CheckLogCompatible(path, {"P.1"})) << "the column is called P1";
}

TEST_F(CsvImport, TakesTheGraphSettingsOfAnotherLog) {
  Import("Date,Time,A,B\n21-Nov-2026,10:00:00,1,2\n");
  const std::string other = folder.File("other.mdb");
  std::filesystem::copy_file(path, other);
  Connection::Open(other, OpenMode::ReadWrite)->Execute("UPDATE GraphSettings SET units = 'kN', GraphNumber = 1");
  ASSERT_TRUE(CompareSettingsFile(path, other));
  ImportGraphSettings(path, other);
  EXPECT_EQ(Query(path, "SELECT ParameterName, units, GraphNumber FROM GraphSettings"), (Rows{"A|kN|1", "B|kN|1"}));
}

TEST_F(CsvImport, ComparesTheFirstThirtySixFieldsOfTwoLogs) {
  const auto make = [&](const std::string& file, int count, const std::string& last) {
    std::string sql = "CREATE TABLE logData (ID INTEGER PRIMARY KEY, Date DATE, Time DATE";
    for (int i = 4; i < count; ++i) sql += ", c" + std::to_string(i) + " DOUBLE";
    MakeDatabase(file, sql + ", " + last + " DOUBLE)");
  };
  make(folder.File("a.mdb"), 37, "x");
  make(folder.File("b.mdb"), 37, "y");
  EXPECT_TRUE(CompareSettingsFile(folder.File("a.mdb"), folder.File("b.mdb"))) << "the 37th differs";
  make(folder.File("c.mdb"), 36, "x");
  make(folder.File("d.mdb"), 36, "y");
  EXPECT_FALSE(CompareSettingsFile(folder.File("c.mdb"), folder.File("d.mdb"))) << "the 36th differs";
  make(folder.File("e.mdb"), 20, "x");
  make(folder.File("f.mdb"), 19, "x");
  EXPECT_FALSE(CompareSettingsFile(folder.File("e.mdb"), folder.File("f.mdb")));
}

}  // namespace
}  // namespace velk
