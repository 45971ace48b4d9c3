#include "log/log_reader.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <fstream>

#include "log/log_fixture.h"

namespace velk {
namespace {

namespace fs = std::filesystem;
using Keys = std::vector<std::int64_t>;

std::string Bytes(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

Keys KeysOf(const std::vector<LogRow>& rows) {
  Keys keys;
  for (const LogRow& row : rows) keys.push_back(row.key);
  return keys;
}

class LogReading : public test::LogFixture {
 protected:
  /// 14 March 2026 is day 46095.
  static double At(int hour, int minute, int second, int daysLater = 0) {
    return JoinDateTime(46095 + daysLater, TimeOfDay(hour, minute, second));
  }

  /// A file of another program, with rows (ID, Date, Time, A).
  void MakeForeign(const std::string& rows) {
    MakeDatabase(path, "CREATE TABLE logData (ID INTEGER PRIMARY KEY, Date DATE, Time DATE, A DOUBLE)" +
                           (rows.empty() ? rows : "; INSERT INTO logData VALUES " + rows));
  }
  /// The same, with the index that our files have or without it.
  void MakeForeign(const std::string& rows, bool indexed) {
    MakeForeign(rows);
    if (indexed) Connection::Open(path, OpenMode::ReadWrite)->Execute("CREATE INDEX times ON logData (Date, Time)");
  }
};

TEST_F(LogReading, GivesTheRowsThatWereRecorded) {
  NameChannels({"Pressure", "Rate"});
  StartLog(path);
  session.CurrentValue[1] = 1.5f;
  session.CurrentValue[2] = -2;
  AppendLogRow(At(9, 30, 7));
  AppendLogRow(At(9, 30, 8));
  LogReader reader(path);
  EXPECT_EQ(reader.Channels(), (std::vector<std::string>{"Pressure", "Rate"}));
  EXPECT_TRUE(reader.HasId());
  EXPECT_EQ(reader.ChannelOf("RATE"), 1);
  EXPECT_EQ(reader.ChannelOf("ID"), -1);
  const auto first = reader.First();
  ASSERT_TRUE(first);
  EXPECT_EQ(first->key, 1);
  EXPECT_EQ(first->time, At(9, 30, 7));
  EXPECT_EQ(first->values, (std::vector<double>{1.5, -2}));
  EXPECT_EQ(reader.Last()->key, 2);
  EXPECT_EQ(reader.ByKey(2)->time, At(9, 30, 8));
  EXPECT_FALSE(reader.ByKey(3));
}

TEST_F(LogReading, SeesWhatIsRecordedMeanwhile) {
  NameChannels({"A"});
  StartLog(path);
  LogReader reader(path);
  const auto rows = reader.Rows();
  EXPECT_FALSE(reader.Last());
  EXPECT_FALSE(rows->First());
  AppendLogRow();
  EXPECT_EQ(reader.Count(), 1);
  ASSERT_TRUE(rows->First());
  EXPECT_FALSE(rows->Next());
  AppendLogRow();
  EXPECT_EQ(reader.Count(), 2);
  EXPECT_EQ(reader.PositionOf(2), 2);
  ASSERT_TRUE(rows->Next());
  EXPECT_EQ(rows->Row().key, 2);
}

TEST_F(LogReading, ThreeReadersHoldOnWhileTheRecordingEnds) {
  NameChannels({"A"});
  StartLog(path);
  AppendLogRow();
  LogReader one(path), two(path), three(path);
  const auto rows = three.Rows();
  EXPECT_TRUE(one.First());
  EXPECT_EQ(two.Count(), 1);
  EXPECT_TRUE(rows->First());
  AppendLogRow();
  log.Finalise();
  EXPECT_EQ(FilesInFolder(), (std::vector<std::string>{"run.mdb"}));
  EXPECT_EQ(Query(path, "PRAGMA journal_mode"), (std::vector<std::string>{"delete"}));
  EXPECT_TRUE(rows->Next());
  EXPECT_EQ(one.Last()->key, 2);
  EXPECT_EQ(two.Count(), 2);
  // And once more, over connections that were kept from the file at rest.
  log.ConnectLogFile(path);
  log.OpenLogRecordset();
  AppendLogRow();
  EXPECT_EQ(one.Last()->key, 3);
  log.Finalise();
  EXPECT_EQ(FilesInFolder(), (std::vector<std::string>{"run.mdb"}));
}

TEST_F(LogReading, ReadersInOtherProgramsDoNotDisturbTheEndOfARecording) {
  NameChannels({"A"});
  StartLog(path);
  for (int i = 0; i < 20; ++i) AppendLogRow();
  std::vector<pid_t> children;
  int ready[2] = {};
  ASSERT_EQ(pipe(ready), 0);
  for (int i = 0; i < 3; ++i) {
    children.push_back(fork());
    if (children.back() != 0) continue;
    // Pages without a pause, until it is killed.
    LogReader reader(path);
    for (bool told = false;; told = true) {
      if (reader.Page({}, 240).size() < 20) _exit(1);
      if (!told && write(ready[1], "r", 1) != 1) _exit(2);
    }
  }
  char byte = 0;
  for (int i = 0; i < 3; ++i) ASSERT_EQ(read(ready[0], &byte, 1), 1);
  AppendLogRow();
  log.Finalise();
  EXPECT_EQ(Query(path, "PRAGMA journal_mode"), (std::vector<std::string>{"delete"}));
  EXPECT_EQ(FilesInFolder(), (std::vector<std::string>{"run.mdb"}));
  for (const pid_t child : children) {
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status)) << "a reader failed: " << WEXITSTATUS(status);
  }
  close(ready[0]);
  close(ready[1]);
  EXPECT_EQ(LogReader(path).Count(), 21);
}

TEST_F(LogReading, LeavesASoundFileAsItIs) {
  NameChannels({"A"});
  StartLog(path);
  AppendLogRow();
  log.Finalise();
  const std::string before = Bytes(path);
  const auto changed = fs::last_write_time(path);
  LogReader reader(path);
  EXPECT_EQ(reader.Page({At(9, 0, 0), At(10, 0, 0)}, 10).size(), 1u);
  EXPECT_EQ(reader.Count(), 1);
  EXPECT_EQ(Bytes(path), before);
  EXPECT_EQ(fs::last_write_time(path), changed);
  EXPECT_EQ(FilesInFolder(), (std::vector<std::string>{"run.mdb"}));
}

TEST_F(LogReading, ReadsEveryRowOfALogThatAKillLeft) {
  NameChannels({"A"});
  StartLog(path);
  AppendLogRow();
  AppendLogRow();
  const std::string copy = folder.File("copy.mdb");
  fs::copy_file(path, copy);
  fs::copy_file(path + "-wal", copy + "-wal");
  LogReader reader(copy);
  EXPECT_EQ(reader.Count(), 2);
  EXPECT_EQ(reader.Last()->key, 2);
  EXPECT_TRUE(fs::exists(copy + "-wal")) << "reading is not recording";
}

TEST_F(LogReading, HoldsSixtyFourChannelsAndChoosesAmongThem) {
  std::vector<std::string> names;
  for (int i = 1; i <= 64; ++i) names.push_back("Channel \"" + std::to_string(i) + "\"");
  NameChannels(names);
  StartLog(path);
  for (std::size_t i = 1; i <= 64; ++i) session.CurrentValue[i] = static_cast<float>(i);
  AppendLogRow();
  LogReader reader(path);
  EXPECT_EQ(reader.First()->values.size(), 64u);
  EXPECT_EQ(reader.First()->values[63], 64);
  reader.Choose({63, 0});
  EXPECT_EQ(reader.First()->values, (std::vector<double>{64, 1}));
  ErrorOf([&] { reader.Choose({64}); }, ErrorNumber::SubscriptOutOfRange);
}

TEST_F(LogReading, OfAnEmptyLogGivesNothing) {
  for (const bool indexed : {false, true}) {
    MakeForeign("", indexed);
    LogReader reader(path);
    EXPECT_FALSE(reader.First());
    EXPECT_FALSE(reader.Last());
    EXPECT_FALSE(reader.Nearest(At(9, 0, 0)));
    EXPECT_EQ(reader.Count(), 0);
    EXPECT_FALSE(reader.ByPosition(1));
    EXPECT_TRUE(reader.Page({At(9, 0, 0), At(10, 0, 0)}, 10).empty());
    EXPECT_TRUE(reader.Page({At(9, 0, 0)}, 10).empty());
    EXPECT_FALSE(reader.Rows()->First());
    EXPECT_FALSE(reader.Rows()->Seek(At(9, 0, 0)));
    ErrorOf([&] { reader.Rows()->Row(); }, ErrorNumber::NoCurrentRecord);
    fs::remove(path);
  }
}

TEST_F(LogReading, CountsPositionsOverGaps) {
  for (const bool indexed : {false, true}) {
    MakeForeign("(2, 46095, 0.1, 1), (5, 46095, 0.2, 1), (9, 46095, 0.3, 1)", indexed);
    LogReader reader(path);
    EXPECT_EQ(reader.Count(), 3);
    EXPECT_EQ(reader.ByPosition(2)->key, 5);
    EXPECT_FALSE(reader.ByPosition(0));
    EXPECT_FALSE(reader.ByPosition(4));
    EXPECT_EQ(reader.PositionOf(9), 3);
    EXPECT_EQ(reader.PositionOf(4), 0);
    Connection::Open(path, OpenMode::ReadWrite)->Execute("DELETE FROM logData WHERE ID = 2");
    reader.Refresh();
    EXPECT_EQ(reader.ByPosition(1)->key, 5);
    fs::remove(path);
  }
}

TEST_F(LogReading, TalliesRowsByTheDistanceOfKeysUntilAllAreCounted) {
  for (const bool indexed : {false, true}) {
    MakeForeign("(2, 46095, 0.1, 1), (5, 46095, 0.2, 1), (9, 46095, 0.3, 1), (10, 46095, 0.4, 1)", indexed);
    LogReader reader(path);
    EXPECT_EQ(reader.Tally(1), 9) << "the row 2, and the keys 3 to 10";
    EXPECT_EQ(reader.Tally(1), 7) << "the rows 2 and 5, and the keys 6 to 10";
    EXPECT_EQ(reader.Tally(10), 4);
    EXPECT_EQ(reader.Tally(10), 4);
    Connection::Open(path, OpenMode::ReadWrite)->Execute("INSERT INTO logData VALUES (14, 46095, 0.5, 1)");
    EXPECT_EQ(reader.Tally(10), 5);
    fs::remove(path);
  }
}

TEST_F(LogReading, TalliesTheRowsOfAnEmptyLogOnceTheyCome) {
  MakeForeign("");
  LogReader reader(path);
  EXPECT_EQ(reader.Tally(10), 0);
  Connection::Open(path, OpenMode::ReadWrite)->Execute("INSERT INTO logData VALUES (7, 46095, 0.5, 1)");
  EXPECT_EQ(reader.Tally(10), 1);
  Connection::Open(path, OpenMode::ReadWrite)->Execute("DELETE FROM logData");
  EXPECT_EQ(reader.Tally(10), 0);
}

TEST_F(LogReading, GivesTheKeysOfAllRowsInOrderOfTimeWhateverStandsInTheirDates) {
  const std::string rows =
      "(1, NULL, 0.5, 1), (2, 46095, NULL, 1), (3, 46095, 0.1, 1), (4, 46096, 0.2, 1), (6, 46096, NULL, 1), "
      "(7, 46095.5, 0.3, 1), (8, 46094, 0.9, 1), (9, 46094, 0.9, 1), (10, NULL, NULL, 1)";
  MakeForeign(rows, true);
  EXPECT_EQ(LogReader(path).KeysByTime([](auto) {}), (Keys{10, 1, 8, 9, 2, 3, 7, 6, 4}));
  fs::remove(path);
  MakeForeign(rows + ", (5, '14-Mar-2026', 0, 1)", true);
  EXPECT_EQ(LogReader(path).KeysByTime([](auto) {}), (Keys{10, 1, 8, 9, 2, 3, 7, 6, 4, 5}));
}

TEST_F(LogReading, ReadsTheKeysOfSeveralDaysInOrderAndCanBeLeft) {
  MakeForeign("", true);
  Connection::Open(path, OpenMode::ReadWrite)
      ->Execute(
          "WITH RECURSIVE n(i) AS (VALUES (1) UNION ALL SELECT i + 1 FROM n WHERE i < 9000)"
          "INSERT INTO logData SELECT i, 46095 + i / 1000, i % 1000 / 1000.0, 0 FROM n");
  LogReader reader(path);
  const Keys keys = reader.KeysByTime([](auto) {});
  ASSERT_EQ(keys.size(), 9000U);
  for (std::size_t i = 0; i < keys.size(); ++i) EXPECT_EQ(keys[i], static_cast<std::int64_t>(i) + 1);
  struct Left {};
  EXPECT_THROW(reader.KeysByTime([](auto) { throw Left{}; }), Left);
  EXPECT_EQ(reader.Count(), 9000);
}

TEST_F(LogReading, FindsTheRowNearestToATime) {
  for (const bool indexed : {false, true}) {
    MakeForeign("(1, 46095, 0.25, 1), (2, 46095, 0.75, 1), (3, 46096, 0.25, 1)", indexed);
    LogReader reader(path);
    EXPECT_EQ(reader.Nearest(46095.0)->key, 1);
    EXPECT_EQ(reader.Nearest(46095.5)->key, 1);
    EXPECT_EQ(reader.Nearest(46095.75)->key, 2);
    EXPECT_EQ(reader.Nearest(46096.125)->key, 3);
    EXPECT_EQ(reader.Nearest(46099.0)->key, 3);
    fs::remove(path);
  }
}

TEST_F(LogReading, AFileWithoutIdIsReadInTheOrderOfItsRows) {
  MakeDatabase(path,
               "CREATE TABLE logData (A DOUBLE, time DATE, date DATE);"
               "INSERT INTO logData VALUES (7, 0.25, 46095), (8, 0.5, 46095)");
  LogReader reader(path);
  EXPECT_FALSE(reader.HasId());
  EXPECT_EQ(reader.Channels(), (std::vector<std::string>{"A"}));
  EXPECT_EQ(reader.First()->time, 46095.25);
  EXPECT_EQ(reader.Last()->values, (std::vector<double>{8}));
}

TEST_F(LogReading, WhatIsNullOrStrangeIsNoNumber) {
  MakeForeign(
      "(1, 46095, 0.25, NULL), (2, NULL, 0.25, 1), (3, '14-Mar-2026', '06:00:00', 'text'), (4, 46095.0, 46095.5, 2),"
      "(5, 'yesterday', 0.5, 3)");
  LogReader reader(path);
  EXPECT_TRUE(std::isnan(reader.ByKey(1)->values[0]));
  EXPECT_TRUE(std::isnan(reader.ByKey(2)->time));
  EXPECT_EQ(reader.ByKey(3)->time, 46095.25);
  EXPECT_TRUE(std::isnan(reader.ByKey(3)->values[0]));
  EXPECT_EQ(reader.ByKey(4)->time, 46095.5);
  EXPECT_TRUE(std::isnan(reader.ByKey(5)->time));
}

TEST_F(LogReading, WhatIsNoLogIsNamed) {
  MakeDatabase(path, "CREATE TABLE music (title TEXT)");
  EXPECT_NE(ErrorOf([&] { LogReader reader(path); }, ErrorNumber::NoSuchTable).find(path), std::string::npos);
  MakeDatabase(folder.File("b.mdb"), "CREATE TABLE logData (ID INTEGER PRIMARY KEY, Date DATE, A DOUBLE)");
  EXPECT_EQ(ErrorOf([&] { LogReader reader(folder.File("b.mdb")); }, ErrorNumber::Database),
            "The log has no column Time: " + folder.File("b.mdb"));
  ErrorOf([&] { LogReader reader(folder.File("none.mdb")); }, ErrorNumber::FileNotFound);
}

struct OrderCase {
  const char* name;
  const char* rows;  ///< in order of their IDs, from 1
};

/// Files whose rows stand in any order; each is asked for many ranges, and has to answer as the query texts do.
TEST_F(LogReading, APageHasTheRowsOfTheQueryTexts) {
  const OrderCase cases[] = {
      {"one day", "(1,46095,0.1,1),(2,46095,0.2,1),(3,46095,0.3,1),(4,46095,0.4,1)"},
      {"over midnight", "(1,46095,0.8,1),(2,46095,0.9,1),(3,46096,0.1,1),(4,46096,0.85,1),(5,46097,0.8,1)"},
      {"the clock set back", "(1,46095,0.5,1),(2,46095,0.6,1),(3,46095,0.5,1),(4,46095,0.55,1),(5,46095,0.7,1)"},
      {"equal times", "(1,46095,0.5,1),(2,46095,0.5,1),(3,46095,0.5,1)"},
      {"nulls", "(1,NULL,0.5,1),(2,46095,NULL,1),(3,46095,0.5,1),(4,NULL,NULL,1)"},
      {"one row", "(7,46096,0.5,1)"},
      {"a gap", "(1,46095,0.1,1),(90,46095,0.9,1),(1000,46097,0.1,1)"},
  };
  const double times[] = {46094.9, 46095.1, 46095.45, 46095.5, 46095.52, 46095.8, 46096.05, 46096.5, 46097.1, 46098};
  for (const OrderCase& each : cases) {
    for (const bool indexed : {false, true}) {
      MakeForeign(each.rows, indexed);
      LogReader reader(path);
      const auto connection = Connection::Open(path, OpenMode::ReadOnly);
      for (const double from : times) {
        for (const double to : times) {
          Command text(*connection,
                       "SELECT ID FROM logData WHERE (Date >= ?1 AND Time >= ?2) AND (Date <= ?3 AND Time <= ?4) "
                       "ORDER BY ID ASC");
          text.Bind(1, DatePart(from)).Bind(2, TimePart(from)).Bind(3, DatePart(to)).Bind(4, TimePart(to));
          Keys expected;
          while (text.Next()) expected.push_back(text.Integer(0));
          EXPECT_EQ(KeysOf(reader.Page({from, to}, 100)), expected)
              << each.name << (indexed ? ", indexed, " : ", ") << from << " to " << to;
        }
      }
      fs::remove(path);
    }
  }
}

TEST_F(LogReading, AnOpenPageBeginsAtItsTimeAndKeepsToItsTimeOfDay) {
  for (const bool indexed : {false, true}) {
    MakeForeign("(1,46095,0.7,1),(2,46095,0.8,1),(3,46095,0.9,1),(4,46096,0.1,1),(5,46096,0.85,1)", indexed);
    LogReader reader(path);
    EXPECT_EQ(KeysOf(reader.Page({46095.8}, 100)), (Keys{2, 3, 5}));
    EXPECT_EQ(KeysOf(reader.Page({46095.8}, 2)), (Keys{2, 3}));
    EXPECT_EQ(KeysOf(reader.Page({46095.95}, 100)), Keys{});
    EXPECT_EQ(KeysOf(reader.Page({46095.8, {}, RowFilter::Compare::Sum}, 100)), (Keys{2, 3, 4, 5}));
    EXPECT_EQ(KeysOf(reader.Page({46095.8, 46096.1, RowFilter::Compare::Sum}, 100)), (Keys{2, 3, 4}));
    EXPECT_EQ(KeysOf(reader.Page({{}, 46095.8, RowFilter::Compare::Sum}, 100)), (Keys{1, 2}));
    fs::remove(path);
  }
}

TEST_F(LogReading, ASourceGoesThroughMoreThanAPage) {
  NameChannels({"A"});
  StartLog(path);
  for (int i = 0; i < 600; ++i) AppendLogRow(At(9, i / 60, i % 60));
  LogReader reader(path);
  const auto rows = reader.Rows({At(9, 1, 0), At(9, 8, 59)});
  Keys seen;
  for (bool more = rows->First(); more; more = rows->Next()) seen.push_back(rows->Row().key);
  ASSERT_EQ(seen.size(), 480u);
  EXPECT_EQ(seen.front(), 61);
  EXPECT_EQ(seen.back(), 540);
  ASSERT_TRUE(rows->Seek(At(9, 8, 58)));
  EXPECT_EQ(rows->Row().key, 539);
  EXPECT_TRUE(rows->Next());
  EXPECT_FALSE(rows->Next());
  EXPECT_FALSE(rows->Seek(At(9, 9, 0)));
}

}  // namespace
}  // namespace velk
