#include "platform/database/table_pages.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cmath>
#include <filesystem>
#include <limits>
#include <random>

#include "base/errors.h"
#include "platform/pages_fixture.h"

namespace velk {
namespace {

using Rows = std::vector<std::pair<std::int64_t, std::vector<double>>>;

/// NaN is equal to NaN here.
std::string Told(const Rows& rows) {
  std::string told;
  for (const auto& [key, fields] : rows) {
    told += std::to_string(key);
    for (const double field : fields) told += std::isnan(field) ? " -" : " " + std::to_string(field);
    told += "\n";
  }
  return told;
}

class TablePagesTest : public test::PagesFixture {
 protected:
  /// Rows 1 to `count` of (ID, Date, Time, A, B), whose values take up all sizes.
  void MakeMany(int count, int pageSize = 4096) {
    Make(
        "CREATE TABLE logData (ID INTEGER PRIMARY KEY, Date DATE, Time DATE, A DOUBLE, B);"
        "WITH RECURSIVE n(i) AS (VALUES (1) UNION ALL SELECT i + 1 FROM n WHERE i < " +
            std::to_string(count) +
            ") INSERT INTO logData SELECT i, 46095 + i / 100, i / 1000.0, i / 7.0 - 20,"
            "CASE i % 9 WHEN 0 THEN NULL WHEN 1 THEN 'text' WHEN 2 THEN x'00FF' WHEN 3 THEN -i * 1000000000000"
            " WHEN 4 THEN -i % 128 WHEN 5 THEN 1 - i % 2 WHEN 6 THEN -8388608 + i WHEN 7 THEN 140737488355327 - i"
            " ELSE -300 - i END FROM n",
        pageSize);
  }
  /// What the pages give; nothing where they leave it to statements.
  std::optional<Rows> Read(std::int64_t first, std::int64_t last, const std::vector<std::string>& columns,
                           std::size_t numbers = 0) {
    const auto connection = Connection::Open(path_, OpenMode::ReadOnly);
    TablePages pages(*connection, "logData", columns, numbers);
    Rows rows;
    const bool isRead = pages.Read(first, last, [&](std::int64_t key, std::span<const double> fields) {
      rows.emplace_back(key, std::vector<double>(fields.begin(), fields.end()));
    });
    return isRead ? std::optional(rows) : std::nullopt;
  }
  Rows Stated(std::int64_t first, std::int64_t last, const std::string& columns, int count) {
    const auto connection = Connection::Open(path_, OpenMode::ReadOnly);
    Command command(*connection,
                    "SELECT rowid, " + columns + " FROM logData WHERE rowid BETWEEN ? AND ? ORDER BY rowid");
    command.Bind(1, first).Bind(2, last);
    Rows rows;
    while (command.Next()) {
      rows.emplace_back(command.Integer(0), std::vector<double>());
      for (int i = 1; i <= count; ++i) rows.back().second.push_back(command.Number(i));
    }
    return rows;
  }
};

TEST_F(TablePagesTest, GiveTheNumbersThatStatementsGive) {
  for (const int pageSize : {512, 4096, 65536}) {
    MakeMany(3000, pageSize);
    for (const auto& [first, last] :
         {std::pair<std::int64_t, std::int64_t>{1, 3000}, {-5, 1}, {777, 1234}, {2999, 9000}})
      EXPECT_EQ(Told(*Read(first, last, {"Time", "b", "A"})), Told(Stated(first, last, "Time, B, A", 3)))
          << pageSize << ": " << first;
    EXPECT_EQ(Told(*Read(4000, 5000, {"A"})), "");
  }
}

TEST_F(TablePagesTest, FollowKeysThatAreFarApartAndThoseThatAreGone) {
  MakeMany(2000, 512);
  Connection::Open(path_, OpenMode::ReadWrite)
      ->Execute(
          "DELETE FROM logData WHERE ID BETWEEN 300 AND 900; INSERT INTO logData VALUES"
          "(-9000000000000000000, 1, 0, 2, 3), (9000000000000000000, 4, 0, 5, 6)");
  const std::int64_t far = 9'100'000'000'000'000'000;
  EXPECT_EQ(Told(*Read(-far, far, {"A", "B"})), Told(Stated(-far, far, "A, B", 2)));
  EXPECT_EQ(Told(*Read(299, 901, {"A"})), Told(Stated(299, 901, "A", 1)));
}

TEST_F(TablePagesTest, AreThereForAnEmptyTable) {
  Make("CREATE TABLE logData (ID INTEGER PRIMARY KEY, A)");
  EXPECT_EQ(Told(*Read(1, 100, {"A"})), "");
}

TEST_F(TablePagesTest, LeaveToStatementsWhatIsOutOfTheOrdinary) {
  const std::string some = "; INSERT INTO logData VALUES (1, 2), (3, 4)";
  for (const std::string& sql :
       {"CREATE TABLE logData (ID INTEGER PRIMARY KEY, A, B AS (A + 1)); INSERT INTO logData VALUES (1, 2)" +
            std::string(),
        "CREATE TABLE logData (ID INTEGER PRIMARY KEY, A) WITHOUT ROWID" + some,
        "CREATE TABLE logData (ID INTEGER PRIMARY KEY, B)" + some,
        "CREATE TABLE logData (A INTEGER PRIMARY KEY, B)" + some,
        "CREATE TABLE logData (ID INTEGER PRIMARY KEY DESC, A)" + some,
        "CREATE TABLE logData (ID INTEGER PRIMARY KEY, B)" + some + "; ALTER TABLE logData ADD COLUMN A DEFAULT 7",
        "CREATE TABLE logData (ID INTEGER PRIMARY KEY, A); INSERT INTO logData VALUES (1, zeroblob(9000))" +
            std::string(),
        "CREATE TABLE logData (ID INTEGER PRIMARY KEY, A)" + some + "; PRAGMA journal_mode=WAL",
        "CREATE TABLE t (ID INTEGER PRIMARY KEY, A); CREATE VIEW logData AS SELECT * FROM t" + std::string()}) {
    Make(sql);
    EXPECT_FALSE(Read(1, 10, {"A"})) << sql;
  }
  Make("CREATE TABLE logData (ID INTEGER PRIMARY KEY, A, B); INSERT INTO logData VALUES (1, '14-Mar-2026', 'text')");
  EXPECT_FALSE(Read(1, 10, {"A", "B"}, 1));
  EXPECT_EQ(Told(*Read(1, 10, {"B"}, 0)), "1 -\n");
}

/// A value of any kind and size, as it stands in a statement.
std::string RandomValue(std::mt19937& random) {
  const auto bits = static_cast<std::int64_t>(std::uint64_t{random()} << 32 | random());
  switch (random() % 12) {
    case 0:
      return "NULL";
    case 1:
      return std::to_string(random() % 2);
    case 2:
      return "x'" + std::string(random() % 20 * 2, 'A') + "'";
    case 3:
      return "'" + std::string(random() % 100, 't') + "'";
    case 4:
      return random() % 20 == 0 ? "zeroblob(" + std::to_string(random() % 3000) + ")" : "-0.0";
    case 5:
      return "1e" + std::to_string(static_cast<int>(random() % 600) - 300);
    case 6:
      return std::to_string(random() % 1000) + ".0";
    case 7:
    case 8:
      return std::to_string(static_cast<double>(bits) / 1e12);
    default:
      return std::to_string(std::max(bits, -std::numeric_limits<std::int64_t>::max()) >> random() % 63);
  }
}

TEST_F(TablePagesTest, GiveWhatStatementsGiveOfRandomTables) {
  constexpr int kTables = 60;
  int read = 0;
  for (unsigned seed = 1; seed <= kTables; ++seed) {
    std::mt19937 random(seed);
    std::filesystem::remove(path_);
    const int columns = 1 + static_cast<int>(random() % 70);
    const auto connection = Connection::Open(path_, OpenMode::CreateNew);
    int reserved = seed % 4 == 0 ? 8 : 0;
    ASSERT_EQ(sqlite3_file_control(connection->Handle(), "main", SQLITE_FCNTL_RESERVE_BYTES, &reserved), SQLITE_OK);
    std::string sql = "PRAGMA page_size=" + std::to_string(512 << random() % 8) + ";BEGIN;CREATE TABLE logData (";
    for (int i = 0; i < columns; ++i) {
      const char* types[] = {"", " DOUBLE", " INTEGER", " TEXT", " NUMERIC"};
      sql += "c" + std::to_string(i) + types[random() % 5] + ", ";
    }
    sql += "ID INTEGER PRIMARY KEY);";
    const auto rows = 1 + random() % 300;
    for (unsigned row = 0; row < rows; ++row) {
      sql += "INSERT OR IGNORE INTO logData VALUES (";
      for (int i = 0; i < columns; ++i) sql += RandomValue(random) + ",";
      sql += std::to_string(static_cast<int>(random() % 2000) - 1000) + ");";
    }
    sql += "DELETE FROM logData WHERE ID % 5 = 0; UPDATE logData SET c0 = 7 WHERE ID % 7 = 0; COMMIT;";
    if (seed % 10 == 0) sql += "ALTER TABLE logData ADD COLUMN later DEFAULT 3;";
    connection->Execute(sql);
    std::vector<std::string> wanted;
    std::string names;
    for (int i = 0; i < 1 + static_cast<int>(random() % 9); ++i) {
      wanted.push_back(seed % 10 == 0 ? "later" : "c" + std::to_string(random() % static_cast<unsigned>(columns)));
      names += (names.empty() ? "" : ", ") + wanted.back();
    }
    const auto given = Read(-500, 800, wanted);
    if (!given) continue;  // a row that is larger than a page, or a column that was added
    ++read;
    EXPECT_EQ(Told(*given), Told(Stated(-500, 800, names, static_cast<int>(wanted.size())))) << seed;
  }
  EXPECT_GT(read, kTables / 2);
}

TEST_F(TablePagesTest, LeaveToStatementsWhatAWriteAheadLogHolds) {
  MakeMany(10);
  const auto writer = Connection::Open(path_, OpenMode::ReadWrite);
  writer->BeginRecording();
  writer->Execute("UPDATE logData SET A = 1");
  EXPECT_FALSE(Read(1, 10, {"A"}));
  EXPECT_EQ(Stated(1, 10, "A", 1)[4].second[0], 1);
  writer->Finalise();
  EXPECT_EQ((*Read(1, 10, {"A"}))[4].second[0], 1);
}

TEST_F(TablePagesTest, SeeWhatWasWrittenBetweenTwoReads) {
  MakeMany(500, 512);
  const auto reader = Connection::Open(path_, OpenMode::ReadOnly);
  TablePages pages(*reader, "logData", {"A"}, 0);
  Rows rows;
  const auto read = [&] {
    rows.clear();
    return pages.Read(1, 500, [&](std::int64_t key, std::span<const double> fields) {
      rows.emplace_back(key, std::vector<double>(fields.begin(), fields.end()));
    });
  };
  EXPECT_TRUE(read());
  // The table gets another root, and pages of another size.
  Connection::Open(path_, OpenMode::ReadWrite)
      ->Execute("CREATE TABLE other (x); DELETE FROM logData WHERE ID > 400; PRAGMA page_size=1024; VACUUM");
  EXPECT_TRUE(read());
  EXPECT_EQ(Told(rows), Told(Stated(1, 500, "A", 1)));
  EXPECT_EQ(rows.size(), 400U);
}

TEST_F(TablePagesTest, KeepWritersOutOnlyWhileTheyRead) {
  MakeMany(10);
  const auto reader = Connection::Open(path_, OpenMode::ReadOnly);
  const auto writer = Connection::Open(path_, OpenMode::ReadWrite);
  writer->Execute("PRAGMA busy_timeout=1");
  TablePages pages(*reader, "logData", {"A"}, 0);
  int rows = 0;
  EXPECT_TRUE(pages.Read(1, 10, [&](std::int64_t, std::span<const double>) {
    if (rows++ == 0) EXPECT_THROW(writer->Execute("DELETE FROM logData"), RuntimeError);
  }));
  EXPECT_EQ(rows, 10);
  writer->Execute("DELETE FROM logData WHERE ID > 2");
  rows = 0;
  EXPECT_TRUE(pages.Read(1, 10, [&](std::int64_t, std::span<const double>) { ++rows; }));
  EXPECT_EQ(rows, 2);
}

TEST_F(TablePagesTest, StandThousandsOfDamagedFiles) {
  MakeMany(200, 512);
  const std::string whole = Bytes();
  std::mt19937 random(15);
  int read = 0;
  for (int round = 0; round < 1000; ++round) {
    std::string bytes = whole;
    for (int flips = round % 5; flips >= 0; --flips)
      // Heads of pages tell more than their ends.
      bytes[512 + random() % ((bytes.size() - 512) / 512) * 512 + random() % (round % 2 == 0 ? 512 : 24)] =
          static_cast<char>(random());
    if (round % 10 == 0) bytes.resize(512 + random() % (bytes.size() - 512));
    Write(bytes);
    try {
      if (const auto rows = Read(1, 200, {"Date", "Time", "B"})) read += rows->size() <= 100'000;
    } catch (const RuntimeError&) {
      // The schema is damaged.
    }
  }
  EXPECT_GT(read, 50) << "much of the damage is in values";
}

}  // namespace
}  // namespace velk
