#include "log/summary_rows.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <cmath>
#include <fstream>
#include <iterator>

#include "log/log_fixture.h"
#include "log/open_log.h"
#include "model/status.h"
#include "model/texts.h"
#include "support/locking_program.h"

namespace velk {
namespace {

using Kind = SummaryColumn::Kind;
using Rows = std::vector<std::string>;

class SummaryRows : public test::LogFixture {
 protected:
  SummaryRows() {
    NameChannels({"Pressure", "Rate", "Density"});
    session.CurrentParameters[1].IncludeInSummary = session.CurrentParameters[3].IncludeInSummary = true;
    session.SummaryExtraFields = {"Crew", "Water"};
    session.CurrentValue[1] = 1204.5F;
    session.CurrentValue[3] = 8.3456F;
    session.Data.hasValues = true;
  }

  Rows Lines(const std::string& columns = "*") { return Query(path, "SELECT " + columns + " FROM SummaryReport"); }
  std::int64_t KeyOfLine(const std::string& comment) {
    return std::stoll(Query(path, "SELECT rowid FROM SummaryReport WHERE Comments='" + comment + "'").at(0));
  }
  void Play() {
    log.Finalise();
    session.AcquisitionMode = false;
    session.LogFileInUse = path;
    session.CurrentStatus = text::StatusPlayingBack;
  }

  OpenLog open{session, platform, log};
};

TEST_F(SummaryRows, HoldTheTimeOfTheClockTheValuesAndTheComment) {
  StartLog(path);
  session.SampleTime = DateSerial(2020, 1, 1);
  clock.SetNow(DateSerial(2026, 3, 14) + TimeOfDay(9, 31, 7.9));
  open.AddSummaryRow("Pump 2 on");
  EXPECT_EQ(Columns(path, "SummaryReport"), (Rows{"Date", "Time", "Pressure", "Density", "Crew", "Water", "Comments"}));
  // 9:31:07 is 34267 seconds of 86400; 8.3456 with three places.
  EXPECT_EQ(Lines("Date, round(Time*86400), Pressure, Density, Comments"),
            Rows{"46095|34267.0|1204.5|8.346|Pump 2 on"});
}

TEST_F(SummaryRows, LeaveAdditionalFieldsEmpty) {
  StartLog(path);
  open.AddSummaryRow("x");
  EXPECT_EQ(Lines("Crew IS NULL, Water IS NULL"), Rows{"1|1"});
}

TEST_F(SummaryRows, AreNotWrittenWithoutAComment) {
  StartLog(path);
  open.AddSummaryRow("");
  EXPECT_TRUE(Lines().empty());
}

TEST_F(SummaryRows, HoldNoValueOfAChannelThatGotItsPlaceLater) {
  StartLog(path);
  session.CurrentParameters[2].IncludeInSummary = true;
  open.AddSummaryRow("x");
  EXPECT_EQ(Columns(path, "SummaryReport").size(), 7U);
  EXPECT_EQ(Lines("Pressure, Comments"), Rows{"1204.5|x"});
}

TEST_F(SummaryRows, FindTheirColumnsByNameInALogOfAnotherLanguage) {
  StartLog(path);
  log.Finalise();
  Connection::Open(path, OpenMode::ReadWrite)
      ->Execute(
          "DROP TABLE SummaryReport; CREATE TABLE SummaryReport (Date DATE, Time DATE, Density DOUBLE, Crew "
          "DOUBLE, Pressure DOUBLE, \"Примечания\" LONGTEXT)");
  log.ConnectLogFile(path);
  open.AddSummaryRow("насос");
  EXPECT_EQ(Lines("Density, Crew IS NULL, Pressure, \"Примечания\""), Rows{"8.346|1|1204.5|насос"});
}

TEST_F(SummaryRows, KeepACommentOfAnyLengthAndScriptWhole) {
  StartLog(path);
  std::string comment;
  for (int i = 0; i < 3000; ++i) comment += "Ж'\"%";
  open.AddSummaryRow(comment);
  EXPECT_EQ(Lines("Comments"), Rows{comment});
}

TEST_F(SummaryRows, LeaveAValueThatIsNoNumberEmpty) {
  StartLog(path);
  session.CurrentValue[1] = std::nanf("");
  open.AddSummaryRow("x");
  EXPECT_EQ(Lines("Pressure IS NULL, Density"), Rows{"1|8.346"});
}

TEST_F(SummaryRows, HaveNoValuesBeforeTheFirstSampleOfTheJob) {
  StartLog(path);
  session.Data.hasValues = false;  // CurrentValue is an earlier job's
  open.AddSummaryRow("Ready");
  EXPECT_EQ(Lines("Pressure IS NULL, Density IS NULL, Comments"), Rows{"1|1|Ready"});
}

TEST_F(SummaryRows, KeepTheirColumnsWhenAChannelIsRenamedWhileTheJobIsRecorded) {
  StartLog(path);
  session.CurrentParameters[1].name = "Treating Pressure";
  EXPECT_EQ(open.Channels(), (Rows{"Pressure", "Rate", "Density"}));
  open.AddSummaryRow("renamed");
  std::swap(session.CurrentParameters[1].name, session.CurrentParameters[3].name);
  open.AddSummaryRow("swapped");
  EXPECT_EQ(Lines("Pressure, Density, Comments"), (Rows{"1204.5|8.346|renamed", "1204.5|8.346|swapped"}));
}

TEST_F(SummaryRows, KeepTheirColumnsWhenAChannelOfThePlayedFileIsRenamed) {
  StartLog(path);
  Play();
  session.CurrentParameters[1].name = "Treating Pressure";
  EXPECT_EQ(open.Channels(), (Rows{"Pressure", "Rate", "Density"}));
  open.AddSummaryRow("renamed");
  std::swap(session.CurrentParameters[1].name, session.CurrentParameters[3].name);
  open.AddSummaryRow("swapped");
  EXPECT_EQ(Lines("Pressure, Density, Comments"), (Rows{"1204.5|8.346|renamed", "1204.5|8.346|swapped"}));
}

TEST_F(SummaryRows, StandBesideTheRowsOfTheRecordingAndSurviveItsEnd) {
  StartLog(path);
  for (int i = 0; i < 5; ++i) {
    AppendLogRow();
    open.AddSummaryRow("comment " + std::to_string(i));
  }
  log.Finalise();
  EXPECT_EQ(Lines("count(*)"), Rows{"5"});
  EXPECT_EQ(Query(path, "SELECT count(*) FROM logData"), Rows{"5"});
  EXPECT_EQ(FilesInFolder(), Rows{"run.mdb"});
}

TEST_F(SummaryRows, GoIntoTheFileThatPlaysAndLeaveItInOnePiece) {
  StartLog(path);
  Play();
  open.AddSummaryRow("seen again");
  EXPECT_EQ(Lines("Comments"), Rows{"seen again"});
  EXPECT_EQ(FilesInFolder(), Rows{"run.mdb"});
}

TEST_F(SummaryRows, AreRefusedWhereAnotherProgramRecordsToTheFile) {
  StartLog(path);
  Play();
  const test::LockingProgram other(path);
  const std::string error = ErrorOf([&] { open.AddSummaryRow("x"); }, ErrorNumber::FileAlreadyOpen);
  EXPECT_NE(error.find(other.Process()), std::string::npos) << error;
  EXPECT_TRUE(Lines().empty());
}

TEST_F(SummaryRows, NeedAnOpenLog) {
  EXPECT_FALSE(open.IsOpen());
  ErrorOf([&] { open.AddSummaryRow("x"); }, ErrorNumber::Database);
  StartLog(path);
  EXPECT_TRUE(open.IsOpen());
  Connection::Open(path, OpenMode::ReadWrite)->Execute("DROP TABLE SummaryReport");
  ErrorOf([&] { open.AddSummaryRow("x"); }, ErrorNumber::NoSuchTable);
}

// --- Reading ---

TEST_F(SummaryRows, AreReadInOrderOfTimeWithWhatEachColumnHolds) {
  StartLog(path);
  open.AddSummaryRow("later");
  clock.SetNow(clock.Now() - 1);
  open.AddSummaryRow("the day before");
  const SummaryLines report = OpenLog::Report(path);
  std::vector<Kind> kinds;
  for (const SummaryColumn& column : report.columns) kinds.push_back(column.kind);
  EXPECT_EQ(kinds, (std::vector<Kind>{Kind::Date, Kind::Time, Kind::Value, Kind::Value, Kind::Entry, Kind::Entry,
                                      Kind::Comments}));
  ASSERT_EQ(report.lines.size(), 2U);
  EXPECT_EQ(std::get<std::string>(report.lines[0].fields[6]), "the day before");
  EXPECT_EQ(std::get<std::string>(report.lines[1].fields[6]), "later");
  EXPECT_EQ(report.lines[1].key, KeyOfLine("later"));
}

TEST_F(SummaryRows, OfAFileWithoutAReportCannotBeRead) {
  MakeDatabase(path, "CREATE TABLE logData (ID INTEGER PRIMARY KEY, Date DATE, Time DATE)");
  ErrorOf([&] { OpenLog::Report(path); }, ErrorNumber::NoSuchTable);
}

// --- Additional fields ---

TEST_F(SummaryRows, TakeEntriesOfAdditionalFieldsWhileTheJobIsRecorded) {
  StartLog(path);
  open.AddSummaryRow("first");
  open.AddSummaryRow("second");
  open.EnterSummaryField(path, KeyOfLine("second"), "Water", 12.25);
  EXPECT_EQ(Lines("Comments, Water"), (Rows{"first|", "second|12.25"}));
  open.EnterSummaryField(path, KeyOfLine("second"), "Water", std::nullopt);
  EXPECT_EQ(Lines("Water IS NULL"), (Rows{"1", "1"}));
  AppendLogRow();
}

TEST_F(SummaryRows, TakeEntriesOfAFinishedLog) {
  StartLog(path);
  open.AddSummaryRow("x");
  log.Finalise();
  open.EnterSummaryField(path, KeyOfLine("x"), "Crew", 4);
  EXPECT_EQ(Lines("Crew"), Rows{"4.0"});
}

TEST_F(SummaryRows, RaiseWhereTheLineOfAnEntryIsGone) {
  StartLog(path);
  ErrorOf([&] { open.EnterSummaryField(path, 77, "Water", 1); }, ErrorNumber::NoCurrentRecord);
}

TEST(SummaryEntry, IsANumberOrNothing) {
  EXPECT_EQ(ReadSummaryEntry("12.5").value, 12.5);
  EXPECT_EQ(ReadSummaryEntry(" -3,25 ").value, -3.25);
  EXPECT_EQ(ReadSummaryEntry("1e3").value, 1000);
  for (const char* empty : {"", "   "}) {
    EXPECT_TRUE(ReadSummaryEntry(empty).isSound);
    EXPECT_FALSE(ReadSummaryEntry(empty).value.has_value());
  }
  for (const char* wrong : {"four", "1.2.3", "1,2,3", "1,234.5", "12 bbl", "--1"})
    EXPECT_FALSE(ReadSummaryEntry(wrong).isSound) << wrong;
}

// --- Comments for charts ---

class Comments : public SummaryRows {
 protected:
  Comments() { StartLog(path); }

  void Write(int day, int hour, int minute, int second, const std::string& comment) {
    clock.SetNow(DateSerial(2026, 3, day) + TimeOfDay(hour, minute, second));
    open.AddSummaryRow(comment);
  }
  Rows Found(const RowFilter& filter) {
    Rows texts;
    for (const ReportComment& comment : open.Comments(filter)) texts.push_back(comment.text);
    return texts;
  }
  static double At(int day, int hour, int minute) { return DateSerial(2026, 3, day) + TimeOfDay(hour, minute, 0); }
};

TEST_F(Comments, AreFoundByDayAndTimeOfDayEachForItself) {
  Write(14, 23, 59, 0, "before midnight");
  Write(15, 0, 1, 0, "behind midnight");
  Write(15, 23, 59, 30, "a day later");
  EXPECT_EQ(Found({At(14, 23, 58), At(14, 23, 59)}), Rows{"before midnight"});
  EXPECT_TRUE(Found({At(14, 23, 58), At(15, 0, 2)}).empty());
  EXPECT_EQ(Found({At(14, 23, 58)}), (Rows{"before midnight", "a day later"}));
}

TEST_F(Comments, HaveTheTimeOfTheirLine) {
  Write(14, 9, 31, 5, "x");
  const auto comments = open.Comments({});
  ASSERT_EQ(comments.size(), 1U);
  EXPECT_EQ(comments[0].time, DateSerial(2026, 3, 14) + TimeOfDay(9, 31, 5));
}

TEST_F(Comments, OfTheLogThatIsRecordedToAreReadWithoutOpeningAFile) {
  Write(14, 9, 31, 5, "at once");
  const int watch = inotify_init1(IN_NONBLOCK);
  ASSERT_GE(inotify_add_watch(watch, folder.Path().c_str(), IN_OPEN), 0);
  char events[4096];
  EXPECT_EQ(Found({}), Rows{"at once"});
  EXPECT_LT(read(watch, events, sizeof events), 0) << "a chart asks at each of its pages";
  Query(path, "SELECT 1");
  EXPECT_GT(read(watch, events, sizeof events), 0);
  close(watch);
  AppendLogRow();
  EXPECT_EQ(Query(path, "SELECT count(*) FROM logData"), Rows{"1"});
}

/// Damages the pages on which a text of one letter goes on: each names a next page that isn't there.
void LoseTheRestOf(const std::string& path, char letter) {
  constexpr std::size_t kPage = 4096;
  constexpr std::size_t kNextPage = 4;
  std::ifstream stream(path, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(stream), {}};
  int damaged = 0;
  for (std::size_t at = 0; at + kPage <= bytes.size(); at += kPage) {
    if (bytes.compare(at + kNextPage, kPage - kNextPage, std::string(kPage - kNextPage, letter)) != 0) continue;
    bytes.replace(at, kNextPage, "\xff\xff\xff\x0f");
    ++damaged;
  }
  ASSERT_GT(damaged, 0);
  std::ofstream(path, std::ios::binary) << bytes;
}

TEST_F(Comments, ThatCannotBeReadLeaveTheRowsToComeAlone) {
  Write(14, 9, 31, 5, "sound");
  Write(14, 9, 31, 6, std::string(20'000, 'x'));
  log.Finalise();
  LoseTheRestOf(path, 'x');
  log.ConnectLogFile(path);
  log.OpenLogRecordset();
  for (int rows = 1; rows <= 3; ++rows) {
    ErrorOf([&] { Found({}); }, ErrorNumber::Database);
    AppendLogRow();
    EXPECT_EQ(Query(path, "SELECT count(*) FROM logData"), Rows{std::to_string(rows)});
  }
}

TEST_F(Comments, AreThoseOfTheFileUnderTheNameOfTheLog) {
  Write(14, 9, 31, 5, "of the log");
  std::filesystem::rename(path, folder.File("moved.mdb"));
  ErrorOf([&] { Found({}); }, ErrorNumber::FileNotFound);
  MakeDatabase(path,
               "CREATE TABLE logData (ID INTEGER PRIMARY KEY, Date DATE, Time DATE);"
               "CREATE TABLE SummaryReport (Date DATE, Time DATE, Comments LONGTEXT);"
               "INSERT INTO SummaryReport VALUES (46095, 0.5, 'of another')");
  EXPECT_EQ(Found({}), Rows{"of another"});
}

TEST_F(Comments, AreNoneWhereTheFileHasNoReportOrNoColumnOfThem) {
  log.Finalise();
  const auto file = Connection::Open(path, OpenMode::ReadWrite);
  file->Execute("DROP TABLE SummaryReport");
  Play();
  EXPECT_TRUE(Found({}).empty());
  file->Execute("CREATE TABLE SummaryReport (Comments LONGTEXT); INSERT INTO SummaryReport VALUES ('timeless')");
  EXPECT_TRUE(Found({}).empty());
}

}  // namespace
}  // namespace velk
