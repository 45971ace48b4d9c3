#include "platform/database/index_pages.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <optional>
#include <random>

#include "base/errors.h"
#include "platform/database/command.h"
#include "platform/pages_fixture.h"

namespace velk {
namespace {

using Keys = std::vector<std::int64_t>;

class IndexPagesTest : public test::PagesFixture {
 protected:
  /// Rows 1 to `count` of (ID, Date, Time), many with the same times, in an order of their own.
  void MakeMany(int count, int pageSize = 4096) {
    Make(
        "CREATE TABLE logData (ID INTEGER PRIMARY KEY, Date DATE, Time DATE); CREATE INDEX i ON logData (Date, Time);"
        "WITH RECURSIVE n(i) AS (VALUES (1) UNION ALL SELECT i + 1 FROM n WHERE i < " +
            std::to_string(count) +
            ") INSERT INTO logData SELECT i, 46095 + i * 7 % 5, CASE i % 11 WHEN 0 THEN NULL ELSE i % 50 / 64.0 END "
            "FROM n",
        pageSize);
  }
  /// What the pages give; nothing where they leave it to statements.
  std::optional<Keys> Read(const std::vector<std::string>& columns = {"Date", "Time"}) {
    const auto connection = Connection::Open(path_, OpenMode::ReadOnly);
    Keys keys;
    const bool isRead = KeysFromIndex(*connection, "logData", columns, keys, [] {});
    return isRead ? std::optional(keys) : std::nullopt;
  }
  Keys Stated(const std::string& order) {
    const auto connection = Connection::Open(path_, OpenMode::ReadOnly);
    Command rows(*connection, "SELECT rowid FROM logData NOT INDEXED ORDER BY " + order + ", rowid");
    Keys keys;
    while (rows.Next()) keys.push_back(rows.Integer(0));
    return keys;
  }
  std::size_t Root() {
    const auto connection = Connection::Open(path_, OpenMode::ReadOnly);
    Command root(*connection, "SELECT rootpage FROM sqlite_schema WHERE type = 'index'");
    root.Next();
    return static_cast<std::size_t>(root.Integer(0));
  }
};

TEST_F(IndexPagesTest, GiveTheKeysInTheOrderOfTheColumnsThenOfTheKeys) {
  for (const int pageSize : {512, 4096, 65536}) {
    MakeMany(5000, pageSize);
    const auto keys = Read();
    ASSERT_TRUE(keys) << pageSize;
    EXPECT_EQ(keys->size(), 5000U);
    EXPECT_EQ(*keys, Stated("Date, Time")) << pageSize;
  }
}

TEST_F(IndexPagesTest, ReadKeysAndNumbersOfEachSize) {
  const Keys keys{0,
                  1,
                  127,
                  -128,
                  32767,
                  -32768,
                  8388607,
                  -8388608,
                  2147483647,
                  -2147483648,
                  140737488355327,
                  -140737488355328,
                  9'000'000'000'000'000'000,
                  -9'000'000'000'000'000'000};
  const char* dates[] = {"NULL", "0", "1", "-1", "46095", "46095.5", "140737488355327", "9000000000000000000"};
  std::string rows;
  for (const std::int64_t key : keys)
    for (int i = 0; i < 8; ++i)
      rows += (rows.empty() ? "(" : ", (") + std::to_string(key < 0 ? key + i : key - i) + ", " + dates[i] + ", 0.5)";
  Make(
      "CREATE TABLE logData (ID INTEGER PRIMARY KEY, Date, Time DATE); CREATE INDEX i ON logData (Date, Time);"
      "INSERT OR IGNORE INTO logData VALUES " +
      rows);
  const auto read = Read();
  ASSERT_TRUE(read);
  EXPECT_GT(read->size(), 80U);
  EXPECT_EQ(*read, Stated("Date, Time"));
}

TEST_F(IndexPagesTest, AreThereForAnEmptyTable) {
  Make("CREATE TABLE logData (ID INTEGER PRIMARY KEY, Date, Time); CREATE INDEX i ON logData (Date, Time)");
  EXPECT_EQ(Read(), Keys());
}

TEST_F(IndexPagesTest, StandBehindTheKeysThatAreThereAndAreToldPageByPage) {
  MakeMany(5000, 512);
  const auto connection = Connection::Open(path_, OpenMode::ReadOnly);
  Keys keys{7};
  std::size_t before = 1;
  int steps = 0;
  EXPECT_TRUE(KeysFromIndex(*connection, "LOGDATA", {"DATE", "time"}, keys, [&] {
    EXPECT_GT(keys.size(), before);
    EXPECT_LT(keys.size(), before + 60);
    before = keys.size();
    ++steps;
  }));
  EXPECT_EQ(keys.size(), 5001U);
  EXPECT_EQ(keys[0], 7);
  EXPECT_GT(steps, 100);
}

TEST_F(IndexPagesTest, LeaveToStatementsWhatIsOutOfTheOrdinary) {
  const std::string table = "CREATE TABLE logData (ID INTEGER PRIMARY KEY, Date, Time, A);";
  const std::string rows = "INSERT INTO logData VALUES (1, 2, 3, 4), (5, 6, 7, 8);";
  const std::string index = "CREATE INDEX i ON logData (Date, Time);";
  Make(table + rows + index);
  EXPECT_EQ(Read(), (Keys{1, 5}));
  EXPECT_EQ(Read({"Date"}), std::nullopt);
  EXPECT_EQ(Read({"Date", "Time", "A"}), std::nullopt);
  for (const std::string& sql :
       {table + rows, table + rows + "CREATE INDEX i ON logData (Date, Time DESC)",
        table + rows + "CREATE INDEX i ON logData (Time, Date)",
        table + rows + "CREATE INDEX i ON logData (Date, Time, A)",
        table + rows + "CREATE INDEX i ON logData (Date, Time, ID)",
        table + rows + "CREATE INDEX i ON logData (A DESC, Date, Time)",
        table + rows + "CREATE INDEX i ON logData (Date, Time + 0)",
        table + rows + "CREATE INDEX i ON logData (Date, Time) WHERE A > 1",
        table + rows + "CREATE INDEX i ON logData (Date COLLATE NOCASE, Time)",
        table + rows + index + "PRAGMA journal_mode=WAL",
        table + rows + index + "INSERT INTO logData VALUES (9, 1, 'text', 1)",
        table + rows + index + "INSERT INTO logData VALUES (9, x'00', 1, 1)",
        "CREATE TABLE logData (ID INTEGER PRIMARY KEY, Date, Time, A) WITHOUT ROWID;" + rows + index,
        "CREATE TABLE logData (ID INTEGER PRIMARY KEY DESC, Date, Time, A);" + rows + index,
        "CREATE TABLE t (ID INTEGER PRIMARY KEY, Date, Time, A); CREATE INDEX i ON t (Date, Time);"
        "CREATE VIEW logData AS SELECT * FROM t" +
            std::string()}) {
    Make(sql);
    EXPECT_EQ(Read(), std::nullopt) << sql;
  }
}

/// A number, an empty field, or now and then a text.
std::string RandomField(std::mt19937& random, bool texts) {
  const auto bits = static_cast<std::int64_t>(std::uint64_t{random()} << 32 | random());
  switch (random() % 8) {
    case 0:
      return "NULL";
    case 1:
      return std::to_string(random() % 3);
    case 2:
      return texts && random() % 400 == 0 ? "'text'" : "-0.0";
    case 3:
      return std::to_string(random() % 40) + ".5";
    case 4:
      return "1e" + std::to_string(static_cast<int>(random() % 600) - 300);
    default:
      return std::to_string(bits >> (1 + random() % 62));
  }
}

TEST_F(IndexPagesTest, GiveWhatStatementsGiveOfRandomTables) {
  constexpr int kTables = 80;
  int read = 0, left = 0;
  for (unsigned seed = 1; seed <= kTables; ++seed) {
    std::mt19937 random(seed);
    std::filesystem::remove(path_);
    const std::size_t columns = 1 + random() % 9;
    const auto connection = Connection::Open(path_, OpenMode::CreateNew);
    int reserved = seed % 4 == 0 ? 32 : 0;
    ASSERT_EQ(sqlite3_file_control(connection->Handle(), "main", SQLITE_FCNTL_RESERVE_BYTES, &reserved), SQLITE_OK);
    std::vector<std::string> wanted;
    std::string names, declared;
    for (std::size_t i = 0; i < columns; ++i) {
      const char* types[] = {"", " DOUBLE", " INTEGER", " DATE", " NUMERIC"};
      wanted.push_back("c" + std::to_string(i));
      names += (i > 0 ? ", " : "") + wanted.back();
      declared += ", " + wanted.back() + types[random() % 5];
    }
    std::string sql = "PRAGMA page_size=" + std::to_string(512 << random() % 8) +
                      ";BEGIN;CREATE TABLE logData (ID INTEGER PRIMARY KEY" + declared + ", other);";
    if (seed % 2 == 0) sql += "CREATE INDEX i ON logData (" + names + ");";
    const auto rows = random() % 1500;
    for (unsigned row = 0; row < rows; ++row) {
      sql += "INSERT OR IGNORE INTO logData VALUES (" + std::to_string(static_cast<int>(random() % 4000) - 2000);
      for (std::size_t i = 0; i < columns; ++i) sql += "," + RandomField(random, seed % 5 == 0);
      sql += ",'" + std::string(random() % 90, 'o') + "');";
    }
    sql += "DELETE FROM logData WHERE ID % 5 = 0; UPDATE logData SET c0 = 7 WHERE ID % 7 = 0; COMMIT;";
    if (seed % 2 == 1) sql += "CREATE INDEX i ON logData (" + names + ");";
    connection->Execute(sql);
    const auto given = Read(wanted);
    ++(given ? read : left);
    if (given) EXPECT_EQ(*given, Stated(names)) << seed;
  }
  EXPECT_GE(read, kTables * 4 / 5);
  EXPECT_GT(left, 0) << "texts";
}

TEST_F(IndexPagesTest, LeaveToStatementsWhatAWriteAheadLogHolds) {
  MakeMany(100);
  const auto writer = Connection::Open(path_, OpenMode::ReadWrite);
  writer->BeginRecording();
  writer->Execute("UPDATE logData SET Date = 1 WHERE ID = 100");
  EXPECT_EQ(Read(), std::nullopt);
  writer->Finalise();
  EXPECT_EQ(Read()->front(), 100);
}

TEST_F(IndexPagesTest, KeepWritersOutOnlyWhileTheyRead) {
  MakeMany(10);
  const auto reader = Connection::Open(path_, OpenMode::ReadOnly);
  const auto writer = Connection::Open(path_, OpenMode::ReadWrite);
  writer->Execute("PRAGMA busy_timeout=1");
  Keys keys;
  struct Left {};
  const auto leave = [&] {
    EXPECT_THROW(writer->Execute("DELETE FROM logData"), RuntimeError);
    throw Left{};
  };
  EXPECT_THROW(KeysFromIndex(*reader, "logData", {"Date", "Time"}, keys, leave), Left);
  writer->Execute("DELETE FROM logData WHERE ID > 2");
  keys.clear();
  EXPECT_TRUE(KeysFromIndex(*reader, "logData", {"Date", "Time"}, keys, [] {}));
  EXPECT_EQ(keys, Stated("Date, Time"));
}

TEST_F(IndexPagesTest, ComeToAnEndWherePagesLeadBackToEachOther) {
  MakeMany(2000, 512);
  const std::size_t root = Root(), at = (root - 1) * 512;
  const std::string whole = Bytes();
  ASSERT_EQ(whole[at], 2) << "the root has pages below it";
  const auto leadBack = [&](std::size_t place) {
    std::string bytes = whole;
    for (int i = 0; i < 4; ++i) bytes[place + static_cast<std::size_t>(i)] = static_cast<char>(root >> (24 - 8 * i));
    Write(bytes);
    EXPECT_EQ(Read(), std::nullopt) << place;
  };
  leadBack(at + 8);
  const auto cell = [&](std::size_t i) {
    const auto byte = [&](std::size_t place) { return static_cast<unsigned char>(whole[at + place]); };
    return at + byte(12 + 2 * i) * 256U + byte(13 + 2 * i);
  };
  leadBack(cell(0));
  leadBack(cell(1));
}

TEST_F(IndexPagesTest, StandThousandsOfDamagedFiles) {
  MakeMany(400, 512);
  const std::string whole = Bytes();
  std::mt19937 random(15);
  int read = 0, refused = 0;
  for (int round = 0; round < 2000; ++round) {
    std::string bytes = whole;
    for (int flips = round % 5; flips >= 0; --flips)
      // Heads of pages tell more than their ends.
      bytes[512 + random() % ((bytes.size() - 512) / 512) * 512 + random() % (round % 2 == 0 ? 512 : 24)] =
          static_cast<char>(random());
    if (round % 10 == 0) bytes.resize(512 + random() % (bytes.size() - 512));
    Write(bytes);
    try {
      const auto keys = Read();
      ++(keys ? read : refused);
      if (keys) EXPECT_LT(keys->size(), 20'000U);
    } catch (const RuntimeError&) {
      ++refused;  // the schema is damaged
    }
  }
  EXPECT_GT(read, 100) << "damage of the table, and in free bytes";
  EXPECT_GT(refused, 200);
}

}  // namespace
}  // namespace velk
