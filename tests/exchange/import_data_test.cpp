#include "exchange/import_data.h"

#include <cmath>
#include <cstdlib>

#include "base/dates.h"
#include "exchange/exchange_fixture.h"
#include "exchange/foreign_tables.h"

namespace velk {
namespace {

using Names = std::vector<std::string>;

/// A day of the tests, and a second of it.
constexpr double kDay = 46000;

class ImportedData : public test::ExchangeFixture {
 protected:
  std::string Unpack(const std::string& name) const {
    const std::string file = folder.File(name);
    const std::string from = std::string(VELK_SOURCE_DIR) + "/tests/data/jet/" + name + ".gz";
    EXPECT_EQ(std::system(("gunzip -c '" + from + "' > '" + file + "'").c_str()), 0);
    return file;
  }
  std::vector<ForeignTable> Tables(const std::string& file) const { return ReadForeignTables(file, tools, {}); }

  void Follow(const std::string& file, const std::string& table, const std::string& date, const std::string& time,
              const Names& fields) {
    LiveImport live{true, file, table, date, time, {}};
    for (const std::string& name : fields) live.Fields.push_back(LiveField{.Name = name});
    data.Initialize(live, tools);
  }
  /// All rows of a run.
  std::vector<ForeignRow> ReadAll(ForeignRead& read) const {
    std::vector<ForeignRow> rows;
    while (read.Read(rows)) {
    }
    return rows;
  }
  std::vector<ForeignRow> RowsAt(double day, int second) {
    const auto read = data.ReadData({day, second});
    auto rows = ReadAll(*read);
    later = read->LaterDay();
    return rows;
  }
  /// Seconds of the day and first values of rows, as "3600=1.5".
  static Names Told(const std::vector<ForeignRow>& rows) {
    Names told;
    for (const ForeignRow& row : rows)
      told.push_back(std::to_string(StartAt(row.time).second) + "=" + std::to_string(static_cast<int>(row.values[0])));
    return told;
  }
  static std::string Second(int second) { return std::to_string(second) + "/86400.0"; }

  JetTools tools{VELK_JET_READER};
  ImportData data;
  std::optional<double> later;
};

TEST_F(ImportedData, NeedsFileTableDateAndTime) {
  const LiveImport whole{true, "a", "b", "c", "d", {}};
  data.Initialize(whole, tools);
  for (auto text : {&LiveImport::DBaseName, &LiveImport::TableName, &LiveImport::DateField, &LiveImport::TimeField}) {
    LiveImport live = whole;
    (live.*text).clear();
    EXPECT_EQ(ErrorOf([&] { data.Initialize(live, tools); }, kInvalidParameters), "Invalid parameters are supplied");
  }
}

TEST_F(ImportedData, GivesTheRowsOfADayFromASecondOn) {
  MakeDatabase(path,
               "CREATE TABLE r (d DATE, t DATE, a DOUBLE, b DOUBLE);"
               "INSERT INTO r VALUES (46000, " +
                   Second(10) + ", 1, 7), (46000, " + Second(11) + ", 2, NULL), (46000, " + Second(12) +
                   ", 3, 'x'), (45999, " + Second(13) + ", 4, 0)");
  Follow(path, "r", "d", "t", {"b", "a"});
  const auto rows = RowsAt(kDay, 11);
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0].time, kDay + TimeOfDay(0, 0, 11));
  EXPECT_TRUE(std::isnan(rows[0].values[0]));
  EXPECT_EQ(rows[0].values[1], 2);
  EXPECT_TRUE(std::isnan(rows[1].values[0])) << "a text is no value";
  EXPECT_EQ(later, std::nullopt);
}

TEST_F(ImportedData, TellsTheNextDayThatHasRows) {
  MakeDatabase(path,
               "CREATE TABLE r (d DATE, t DATE, a DOUBLE);"
               "INSERT INTO r VALUES (46003, 0.5, 3), (46001, 0.25, 2), (46000, 0.5, 1)");
  Follow(path, "r", "d", "t", {"a"});
  EXPECT_EQ(Told(RowsAt(kDay, 0)), (Names{"43200=1"}));
  EXPECT_EQ(later, kDay + 1);
  EXPECT_EQ(Told(RowsAt(kDay + 1, 0)), (Names{"21600=2"}));
  EXPECT_EQ(later, kDay + 3);
}

TEST_F(ImportedData, CutsTimesToTheSecondWhateverWayTheyWereComputed) {
  MakeDatabase(path,
               "CREATE TABLE r (d DATE, t DATE, a DOUBLE);"
               "INSERT INTO r VALUES (46000, 10.999/86400, 1), (46000, 0.416724537037037, 2),"
               "(46000.416724537037, 46000.416724537037, 3)");
  Follow(path, "r", "d", "t", {"a"});
  EXPECT_EQ(Told(RowsAt(kDay, 0)), (Names{"10=1", "36005=2", "36005=3"}));
}

TEST_F(ImportedData, ReadsTimesThatAreTexts) {
  MakeDatabase(path,
               "CREATE TABLE r (d DATE, t TIME, a DOUBLE);"
               "INSERT INTO r VALUES ('2025-12-09', '10:00:05', 1), ('never', '10:00:06', 2), (NULL, NULL, 3)");
  Follow(path, "r", "d", "t", {"a"});
  EXPECT_EQ(Told(RowsAt(DateSerial(2025, 12, 9), 0)), (Names{"36005=1"}));
}

TEST_F(ImportedData, GivesRowsInTheOrderInWhichTheyAreStored) {
  MakeDatabase(path,
               "CREATE TABLE r (d DATE, t DATE, a DOUBLE); CREATE INDEX i ON r (d, t);"
               "INSERT INTO r VALUES (46000, 0.5, 1), (46000, 0.25, 2), (46000, 0.75, 3)");
  Follow(path, "r", "d", "t", {"a"});
  EXPECT_EQ(Told(RowsAt(kDay, 0)), (Names{"43200=1", "21600=2", "64800=3"}));
}

TEST_F(ImportedData, ReadsTablesWithoutKeysAndViewsToo) {
  MakeDatabase(path,
               "CREATE TABLE w (a DOUBLE PRIMARY KEY, d DATE, t DATE) WITHOUT ROWID;"
               "INSERT INTO w VALUES (1, 46000, 0.25), (2, 46000, 0.5); CREATE VIEW v AS SELECT * FROM w;");
  for (const char* table : {"w", "v"}) {
    Follow(path, table, "d", "t", {"a"});
    EXPECT_EQ(Told(RowsAt(kDay, 30'000)), (Names{"43200=2"})) << table;
  }
}

TEST_F(ImportedData, ReadsALongTableInPieces) {
  MakeDatabase(path,
               "CREATE TABLE r (d DATE, t DATE, a DOUBLE);"
               "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 199999)"
               "INSERT INTO r SELECT 46000, (i % 86400) / 86400.0, i FROM n");
  Follow(path, "r", "d", "t", {"a"});
  const auto read = data.ReadAll();
  std::vector<ForeignRow> rows;
  int pieces = 1;
  while (read->Read(rows)) ++pieces;
  EXPECT_GT(pieces, 1);
  ASSERT_EQ(rows.size(), 200'000U);
  for (std::size_t i = 0; i < rows.size(); ++i) ASSERT_EQ(rows[i].values[0], static_cast<double>(i));
}

TEST_F(ImportedData, LeavesTheDatabaseAloneBetweenPieces) {
  MakeDatabase(path,
               "CREATE TABLE r (d DATE, t DATE, a DOUBLE);"
               "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 199999)"
               "INSERT INTO r SELECT 46000, 0.5, i FROM n");
  Follow(path, "r", "d", "t", {"a"});
  const auto read = data.ReadAll();
  std::vector<ForeignRow> rows;
  ASSERT_TRUE(read->Read(rows));
  const std::string other = "sqlite3 '" + path + "' 'INSERT INTO r VALUES (46000, 0.75, -1)'";
  EXPECT_EQ(std::system(other.c_str()), 0) << "its writer gets the lock";
  while (read->Read(rows)) {
  }
  EXPECT_EQ(rows.back().values[0], -1) << "and its row is seen";
}

TEST_F(ImportedData, TriesOnWhereItsWriterHoldsTheDatabase) {
  MakeDatabase(path, "CREATE TABLE r (d DATE, t DATE, a DOUBLE); INSERT INTO r VALUES (46000, 0.5, 1)");
  Follow(path, "r", "d", "t", {"a"});
  std::vector<ForeignRow> rows;
  const auto read = data.ReadAll();
  {
    const auto writer = Connection::Open(path, OpenMode::ReadWrite);
    writer->Execute("BEGIN EXCLUSIVE");
    for (int i = 0; i < 10; ++i) EXPECT_TRUE(read->Read(rows));
    EXPECT_TRUE(rows.empty());
    const auto given = data.ReadAll();
    ErrorOf(
        [&] {
          for (int i = 0; i < 1000; ++i) given->Read(rows);
        },
        ErrorNumber::DatabaseLocked);
    writer->Execute("COMMIT");
  }
  while (read->Read(rows)) {
  }
  EXPECT_EQ(Told(rows), (Names{"43200=1"}));
}

TEST_F(ImportedData, TellsWhatIsMissing) {
  MakeDatabase(path, "CREATE TABLE r (d DATE, t DATE, a DOUBLE)");
  Follow(path, "gone", "d", "t", {"a"});
  std::vector<ForeignRow> rows;
  const std::string told = ErrorOf([&] { data.ReadAll()->Read(rows); }, ErrorNumber::NoSuchTable);
  EXPECT_NE(told.find(path), std::string::npos);
  EXPECT_NE(told.find("gone"), std::string::npos);
  Follow(folder.File("none.mdb"), "r", "d", "t", {"a"});
  ErrorOf([&] { data.ReadAll()->Read(rows); }, ErrorNumber::FileNotFound);
  Follow(Write("text.mdb", "not a database, whatever its name says"), "r", "d", "t", {"a"});
  ErrorOf([&] { data.ReadAll()->Read(rows); }, ErrorNumber::NotADatabase);
}

// --- The Jet format ---

TEST_F(ImportedData, ReadsADayOfAJetTable) {
  Follow(Unpack("log_1000.mdb"), "logData", "Date", "Time", {"ID"});
  // Rows a second apart, the first at 22:00:00 of 28 February 2024.
  const double day = DateSerial(2024, 2, 28);
  const auto rows = RowsAt(day, 22 * 3600 + 990);
  ASSERT_EQ(rows.size(), 10U);
  EXPECT_EQ(rows[0].time, day + TimeOfDay(22, 16, 30));
  EXPECT_EQ(rows[0].values[0], 991);
  EXPECT_EQ(RowsAt(day - 1, 0).size(), 0U);
  EXPECT_EQ(later, day);
}

TEST_F(ImportedData, ReadsAllOfAJetTable) {
  Follow(Unpack("appended_60.mdb"), "logData", "Date", "Time", {"ID"});
  const auto read = data.ReadAll();
  const auto rows = ReadAll(*read);
  ASSERT_EQ(rows.size(), 260U);
  EXPECT_EQ(rows.back().values[0], 260);
}

TEST_F(ImportedData, TellsWhereTheReaderOfTheJetFormatDies) {
  tools.program = "/bin/false";
  Follow(Unpack("log_1000.mdb"), "logData", "Date", "Time", {"ID"});
  std::vector<ForeignRow> rows;
  ErrorOf(
      [&] {
        const auto read = data.ReadData({0, 0});
        while (read->Read(rows)) {
        }
      },
      ErrorNumber::NotADatabase);
}

// --- What there is to choose from ---

TEST_F(ImportedData, OffersTablesThatAreNotTheEnginesOwn) {
  const std::vector<ForeignTable> tables = {{"MSysObjects", {}}, {"msysNotes", {}}, {"Readings", {}}, {"MSys", {}}};
  EXPECT_EQ(GetTablesName(tables), (Names{"msysNotes", "Readings"}));
  const Names names = GetTablesName(Tables(Unpack("foreign.mdb")));
  EXPECT_GT(names.size(), 5U);
  for (const std::string& name : names) EXPECT_NE(name.substr(0, 4), "MSys");
}

TEST_F(ImportedData, OffersFieldsThatAreNumbersOrTimes) {
  MakeDatabase(path,
               "CREATE TABLE r (d DATE, t TIME, s TIMESTAMP, i INTEGER, h SMALLINT, l BIGINT, y TINYINT, f REAL,"
               "g DOUBLE, x TEXT, c VARCHAR(50), m LONGTEXT, b BLOB, n NUMERIC(9,2), o BOOLEAN, u)");
  Names told;
  for (const LiveField& field : GetFieldsName(Tables(path), "r"))
    told.push_back(field.Name + " " + std::to_string(field.Type));
  EXPECT_EQ(told, (Names{"d 7", "t 134", "s 135", "i 3", "h 2", "l 20", "y 16", "f 5", "g 5"}));
  EXPECT_TRUE(GetFieldsName(Tables(path), "none").empty());
}

TEST_F(ImportedData, KnowsTheTypesOfTheJetFormat) {
  const auto fields = GetFieldsName(Tables(Unpack("log_1000.mdb")), "logData");
  ASSERT_EQ(fields.size(), 21U);
  EXPECT_EQ(fields[0].Type, 3);
  EXPECT_EQ(fields[1].Type, 7);
  EXPECT_EQ(fields[2].Type, 7);
  EXPECT_EQ(fields[3].Type, 5);
}

TEST_F(ImportedData, TakesATypeForDateOrForTime) {
  for (const int type : {2, 3, 4, 5, 7, 16, 20, 133, 134, 135, 137}) EXPECT_TRUE(IsOffered(type)) << type;
  for (const int type : {0, 6, 11, 17, 128, 131, 202, 203}) EXPECT_FALSE(IsOffered(type)) << type;
  for (const int type : {7, 133, 135}) EXPECT_TRUE(CanBeDate(type)) << type;
  for (const int type : {7, 134, 135}) EXPECT_TRUE(CanBeTime(type)) << type;
  EXPECT_FALSE(CanBeTime(133));
  EXPECT_FALSE(CanBeDate(134));
  EXPECT_FALSE(CanBeDate(5));
}

}  // namespace
}  // namespace velk
