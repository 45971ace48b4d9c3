#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <fstream>

#include "base/dates.h"
#include "base/errors.h"
#include "platform/database/catalog.h"
#include "platform/database/command.h"
#include "platform/database/connection.h"
#include "platform/database/recordset.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

class Database : public testing::Test {
 protected:
  std::shared_ptr<Connection> Make(const std::string& sql) {
    auto connection = Connection::Open(path, OpenMode::CreateNew);
    connection->Execute(sql);
    return connection;
  }
  static std::string One(Connection& connection, const std::string& sql) {
    Command command(connection, sql);
    return command.Next() ? command.Text(0) : "no row";
  }
  static ErrorNumber NumberOf(const std::function<void()>& statement) {
    try {
      statement();
    } catch (const RuntimeError& error) {
      return error.Number();
    }
    ADD_FAILURE() << "no error";
    return ErrorNumber::InvalidArgument;
  }

  test::TemporaryFolder folder;
  std::string path = folder.File("data.mdb");
};

using DatabaseConnection = Database;
using DatabaseCommand = Database;
using DatabaseCatalog = Database;
using DatabaseRecordset = Database;

TEST_F(DatabaseConnection, CreatesOnlyWhatIsNotThere) {
  Make("CREATE TABLE t (a)");
  EXPECT_EQ(NumberOf([&] { Connection::Open(path, OpenMode::CreateNew); }), ErrorNumber::FileAlreadyExists);
  EXPECT_EQ(NumberOf([&] { Connection::Open(folder.File("no"), OpenMode::ReadWrite); }), ErrorNumber::FileNotFound);
  EXPECT_EQ(NumberOf([&] { Connection::Open(folder.File("no/x"), OpenMode::ReadOnly); }), ErrorNumber::PathNotFound);
  EXPECT_FALSE(std::filesystem::exists(folder.File("no")));
}

TEST_F(DatabaseConnection, ReadsCDateAsADateTime) {
  const auto connection = Make("CREATE TABLE t (a)");
  EXPECT_EQ(One(*connection, "SELECT CDate('14/03/2026')"), "46095.0");
  EXPECT_EQ(One(*connection, "SELECT CDate('12:00:00')"), "0.5");
  EXPECT_EQ(One(*connection, "SELECT CDate('14-Mar-2026 06:00:00')"), "46095.25");
  EXPECT_EQ(One(*connection, "SELECT CDate(46095.5)"), "46095.5");
  EXPECT_EQ(One(*connection, "SELECT CDate(NULL) IS NULL"), "1");
  EXPECT_THROW(One(*connection, "SELECT CDate('yesterday')"), RuntimeError);
}

TEST_F(DatabaseConnection, DoesNotLetAStrangersFileAct) {
  Make(
      "CREATE TABLE t (a); CREATE TABLE spy (a);"
      "CREATE TRIGGER tell AFTER INSERT ON t BEGIN INSERT INTO spy VALUES (new.a); END");
  const auto connection = Connection::Open(path, OpenMode::ReadWrite);
  connection->Execute("INSERT INTO t VALUES (1)");
  EXPECT_EQ(One(*connection, "SELECT count(*) FROM spy"), "0");
  connection->Execute("PRAGMA writable_schema=ON");
  EXPECT_THROW(connection->Execute("UPDATE sqlite_schema SET sql='x'"), RuntimeError);
  EXPECT_THROW(One(*connection, "SELECT \"no such column\" FROM t"), RuntimeError);
}

TEST_F(DatabaseConnection, NamesTheFileInItsErrors) {
  const auto connection = Make("CREATE TABLE t (a)");
  try {
    connection->Execute("SELECT * FROM missing");
    FAIL();
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), ErrorNumber::NoSuchTable);
    EXPECT_NE(std::string(error.what()).find(path), std::string::npos) << error.what();
  }
}

TEST_F(DatabaseConnection, KnowsItsFileByEveryName) {
  const auto connection = Make("CREATE TABLE t (a)");
  std::filesystem::create_hard_link(path, folder.File("second"));
  Connection::Open(folder.File("third"), OpenMode::CreateNew);
  EXPECT_TRUE(connection->IsSameFile(path));
  EXPECT_TRUE(connection->IsSameFile(folder.File("second")));
  EXPECT_TRUE(connection->IsSameFile(folder.File("./data.mdb")));
  EXPECT_FALSE(connection->IsSameFile(folder.File("third")));
  EXPECT_FALSE(connection->IsSameFile(folder.File("none")));
  std::filesystem::rename(path, folder.File("moved"));
  std::ofstream(path).flush();
  EXPECT_FALSE(connection->IsSameFile(path)) << "another file has the name now";
  EXPECT_EQ(NumberOf([&] { connection->CheckInPlace(); }), ErrorNumber::FileNotFound);
}

TEST_F(DatabaseConnection, ReadOnlyWritesNothing) {
  Make("CREATE TABLE t (a)");
  const auto connection = Connection::Open(path, OpenMode::ReadOnly);
  EXPECT_EQ(NumberOf([&] { connection->Execute("INSERT INTO t VALUES (1)"); }), ErrorNumber::PermissionDenied);
}

TEST_F(DatabaseConnection, RecordsInAFlushedWriteAheadLog) {
  const auto connection = Make("CREATE TABLE t (a)");
  connection->BeginRecording();
  EXPECT_EQ(One(*connection, "PRAGMA journal_mode"), "wal");
  EXPECT_EQ(One(*connection, "PRAGMA synchronous"), "2");
  connection->Finalise();
  EXPECT_EQ(One(*connection, "PRAGMA journal_mode"), "delete");
}

TEST_F(DatabaseConnection, RecordingHoldsFewOfItsPagesInMemory) {
  const auto connection = Make("CREATE TABLE t (a)");
  connection->BeginRecording();
  for (int row = 0; row < 500; ++row) connection->Execute("INSERT INTO t VALUES (randomblob(4000))");
  int bytes = 0, highest = 0;
  sqlite3_db_status(connection->Handle(), SQLITE_DBSTATUS_CACHE_USED, &bytes, &highest, 0);
  EXPECT_LT(bytes, 500'000) << "of 2 MB that were written";
}

TEST_F(DatabaseConnection, ATransactionLargerThanThatIsAllOrNothing) {
  const auto connection = Make("CREATE TABLE t (a)");
  connection->BeginRecording();
  const auto write = [&] {
    for (int row = 0; row < 1000; ++row) connection->Execute("INSERT INTO t VALUES (zeroblob(4000))");
    connection->Execute("UPDATE t SET a = a || 'x'");
  };
  const auto readers = [&] { return One(*Connection::Open(path, OpenMode::ReadOnly), "SELECT count(*) FROM t"); };
  {
    Transaction transaction(*connection);
    write();
    EXPECT_EQ(readers(), "0");
  }
  EXPECT_EQ(One(*connection, "SELECT count(*) FROM t"), "0");
  {
    Transaction transaction(*connection);
    write();
    transaction.Commit();
  }
  EXPECT_EQ(readers(), "1000");
  connection->Finalise();
  EXPECT_EQ(One(*connection, "PRAGMA integrity_check"), "ok");
  EXPECT_EQ(readers(), "1000");
}

TEST_F(DatabaseConnection, ClosingLeavesTheWriteAheadLogAsItIs) {
  {
    const auto connection = Make("CREATE TABLE t (a)");
    connection->BeginRecording();
    connection->Execute("INSERT INTO t VALUES (1)");
  }
  const auto size = std::filesystem::file_size(path + "-wal");
  EXPECT_GT(size, 0u);
  EXPECT_EQ(One(*Connection::Open(path, OpenMode::ReadOnly), "SELECT count(*) FROM t"), "1");
  EXPECT_EQ(std::filesystem::file_size(path + "-wal"), size);
}

TEST_F(DatabaseConnection, TransactionsAreTakenBackUnlessCommitted) {
  const auto connection = Make("CREATE TABLE t (a)");
  {
    Transaction transaction(*connection);
    connection->Execute("INSERT INTO t VALUES (1)");
  }
  EXPECT_EQ(One(*connection, "SELECT count(*) FROM t"), "0");
  {
    Transaction transaction(*connection);
    connection->Execute("INSERT INTO t VALUES (1)");
    transaction.Commit();
  }
  EXPECT_EQ(One(*connection, "SELECT count(*) FROM t"), "1");
}

TEST_F(DatabaseCommand, BindsValuesOfEveryTypeAndReadsThemBack) {
  const auto connection = Make("CREATE TABLE t (a, b, c, d)");
  const std::string text("'); DROP TABLE t; --\0Ж", 23);
  Command(*connection, "INSERT INTO t VALUES (?, ?, ?, ?)")
      .Bind(1, std::int64_t{1} << 60)
      .Bind(2, 0.1)
      .Bind(3, text)
      .Bind(4, std::monostate{})
      .Execute();
  Command read(*connection, "SELECT * FROM t");
  ASSERT_TRUE(read.Next());
  EXPECT_EQ(read.Field(0), FieldValue(std::int64_t{1} << 60));
  EXPECT_EQ(read.Field(1), FieldValue(0.1));
  EXPECT_EQ(read.Field(2), FieldValue(text));
  EXPECT_EQ(read.Field(3), FieldValue(std::monostate{}));
  EXPECT_FALSE(read.Next());
}

TEST_F(DatabaseCommand, CanBeRunAgainAfterAFailure) {
  const auto connection = Make("CREATE TABLE t (a UNIQUE)");
  Command insert(*connection, "INSERT INTO t VALUES (?)");
  insert.Bind(1, std::int64_t{1}).Execute();
  EXPECT_EQ(NumberOf([&] { insert.Execute(); }), ErrorNumber::Database);
  insert.Bind(1, std::int64_t{2}).Execute();
  EXPECT_EQ(One(*connection, "SELECT count(*) FROM t"), "2");
}

TEST_F(DatabaseCatalog, CreatesWhatItFinds) {
  const auto connection = Make("CREATE TABLE other (a)");
  const Catalog catalog(*connection);
  Catalog(*connection)
      .Append({"Log \"x\"",
               {{"ID", column_type::kInteger}, {"a;b", column_type::kText50}, {"№", column_type::kDouble}},
               "ID"});
  const auto table = catalog.Find("LOG \"X\"");
  ASSERT_TRUE(table);
  EXPECT_EQ(table->name, "Log \"x\"");
  EXPECT_EQ(table->identity, "ID");
  ASSERT_EQ(table->columns.size(), 3u);
  EXPECT_EQ(table->columns[1].name, "a;b");
  EXPECT_EQ(table->columns[1].type, "VARCHAR(50)");
  EXPECT_EQ(table->columns[2].name, "№");
  EXPECT_FALSE(catalog.Find("missing"));
  EXPECT_FALSE(catalog.Find("sqlite_schema"));
}

TEST_F(DatabaseCatalog, NumbersRowsByThemselvesWithoutATableBeside) {
  const auto connection = Make("CREATE TABLE other (a)");
  Catalog(*connection).Append({"t", {{"ID", column_type::kInteger}, {"a", column_type::kDouble}}, "ID"});
  connection->Execute("INSERT INTO t (ID, a) VALUES (41, 1)");
  connection->Execute("INSERT INTO t (a) VALUES (2)");
  Command last(*connection, "SELECT max(ID) FROM t");
  ASSERT_TRUE(last.Next());
  EXPECT_EQ(last.Integer(0), 42);
  EXPECT_FALSE(Catalog(*connection).Find("sqlite_sequence")) << "each row would be written to it too";
}

TEST_F(DatabaseCatalog, RefusesATableTwiceAndColumnsThatAreTheSame) {
  const auto connection = Make("CREATE TABLE t (a)");
  EXPECT_THROW(Catalog(*connection).Append({"T", {{"a", column_type::kDouble}}}), RuntimeError);
  EXPECT_THROW(Catalog(*connection).Append({"u", {{"a", column_type::kDouble}, {"A", column_type::kDouble}}}),
               RuntimeError);
  EXPECT_TRUE(SameName("Rate", "rATE"));
  EXPECT_FALSE(SameName("Ж", "ж"));
}

TEST_F(DatabaseRecordset, MovesThroughTheRowsInOrderOfTheirKeys) {
  Recordset rows(Make("CREATE TABLE t (k INTEGER PRIMARY KEY, v); INSERT INTO t VALUES (9,'c'),(2,'a'),(5,'b')"), "T");
  EXPECT_EQ(rows.FieldCount(), 2);
  EXPECT_EQ(rows.FieldName(1), "v");
  EXPECT_EQ(rows.FieldIndex("V"), 1);
  EXPECT_EQ(rows.FieldIndex("x"), -1);
  EXPECT_TRUE(rows.EndOfFile());
  EXPECT_EQ(rows.Count(), 3);
  std::string seen;
  for (rows.MoveFirst(); !rows.EndOfFile(); rows.MoveNext())
    seen += std::to_string(rows.Position()) + std::get<std::string>(rows.Field(1));
  EXPECT_EQ(seen, "1a2b3c");
  EXPECT_EQ(rows.Position(), 0);
  EXPECT_EQ(NumberOf([&] { rows.MoveNext(); }), ErrorNumber::NoCurrentRecord);
  EXPECT_EQ(NumberOf([&] { rows.Field(0); }), ErrorNumber::NoCurrentRecord);
  rows.MoveLast();
  EXPECT_EQ(rows.Field(0), FieldValue(std::int64_t{9}));
  EXPECT_EQ(NumberOf([&] { rows.Field(2); }), ErrorNumber::SubscriptOutOfRange);
  rows.MoveTo(4);
  EXPECT_TRUE(rows.EndOfFile());
  rows.MoveTo(0);
  EXPECT_TRUE(rows.EndOfFile());
}

TEST_F(DatabaseRecordset, AddsRowsWithAndWithoutHavingRead) {
  Recordset rows(Make("CREATE TABLE t (ID INTEGER, a, CONSTRAINT PrimaryKey PRIMARY KEY (ID AUTOINCREMENT))"), "t");
  for (int i = 1; i <= 3; ++i) {
    if (i == 3) {
      EXPECT_EQ(rows.Count(), 2);
    }
    rows.AddNew();
    rows.SetField(1, std::int64_t{i * 10});
    rows.Update();
  }
  EXPECT_EQ(rows.Count(), 3);
  rows.MoveLast();
  EXPECT_EQ(rows.Field(0), FieldValue(std::int64_t{3}));
  EXPECT_EQ(rows.Field(1), FieldValue(std::int64_t{30}));
}

TEST_F(DatabaseRecordset, StartsEachNewRowEmpty) {
  const auto connection = Make("CREATE TABLE t (a, b)");
  Recordset rows(connection, "t");
  rows.AddNew();
  rows.SetField(0, 1.0);
  rows.SetField(1, 2.0);
  rows.Update();
  rows.AddNew();
  rows.SetField(1, 3.0);
  rows.Update();
  EXPECT_EQ(One(*connection, "SELECT count(*) FROM t WHERE a IS NULL AND b = 3"), "1");
}

TEST_F(DatabaseRecordset, ChangesThePresentRow) {
  const auto connection = Make("CREATE TABLE t (a, b); INSERT INTO t VALUES (1,2),(3,4)");
  Recordset rows(connection, "t");
  EXPECT_EQ(NumberOf([&] { rows.SetField(0, 1.0); }), ErrorNumber::NoCurrentRecord);
  rows.MoveTo(2);
  rows.SetField(1, std::string("x"));
  rows.Update();
  EXPECT_EQ(rows.Field(1), FieldValue(std::string("x")));
  rows.SetField(0, std::string("dropped"));
  rows.MoveFirst();
  rows.Update();
  EXPECT_EQ(One(*connection, "SELECT group_concat(a || '-' || b) FROM t"), "1-2,3-x");
}

TEST_F(DatabaseRecordset, FindsTheKeyWhereColumnsHaveItsNames) {
  const auto connection = Make("CREATE TABLE t (rowid, _rowid_, v); INSERT INTO t VALUES (7,8,'x')");
  Recordset rows(connection, "t");
  rows.MoveFirst();
  EXPECT_EQ(rows.Field(2), FieldValue(std::string("x")));
  connection->Execute("CREATE TABLE u (rowid, _rowid_, oid)");
  EXPECT_THROW(Recordset(connection, "u"), RuntimeError);
  EXPECT_EQ(NumberOf([&] { Recordset(connection, "none"); }), ErrorNumber::NoSuchTable);
}

TEST_F(DatabaseRecordset, TellsOfARowThatIsGone) {
  const auto connection = Make("CREATE TABLE t (a); INSERT INTO t VALUES (1)");
  Recordset rows(connection, "t");
  rows.MoveFirst();
  connection->Execute("DELETE FROM t");
  EXPECT_EQ(NumberOf([&] { rows.Field(0); }), ErrorNumber::NoCurrentRecord);
}

struct MoveCase {
  const char* moves;  ///< F first, L last, N next, P previous, 2 to the second, D delete, R requery, A add a row
  std::int64_t position;
  bool beginning, end;
  std::int64_t count;
  std::vector<std::int64_t> left;
};

TEST_F(DatabaseRecordset, KnowsWhereItStandsRightBehindEachMove) {
  const MoveCase cases[] = {
      {"", 0, true, true, 3, {10, 20, 30}},
      {"F", 1, false, false, 3, {10, 20, 30}},
      {"L", 3, false, false, 3, {10, 20, 30}},
      {"FP", 0, true, false, 3, {10, 20, 30}},
      {"FPN", 1, false, false, 3, {10, 20, 30}},
      {"LN", 0, false, true, 3, {10, 20, 30}},
      {"LNP", 3, false, false, 3, {10, 20, 30}},
      {"2P", 1, false, false, 3, {10, 20, 30}},
      {"2D", 0, false, false, 2, {10, 30}},
      {"2DN", 2, false, false, 2, {10, 30}},
      {"2DP", 1, false, false, 2, {10, 30}},
      {"LDN", 0, false, true, 2, {10, 20}},
      {"LDNP", 2, false, false, 2, {10, 20}},
      {"FDP", 0, true, false, 2, {20, 30}},
      {"FDN", 1, false, false, 2, {20, 30}},
      {"FDNDND", 0, false, false, 0, {}},
      {"FDNDNDN", 0, true, true, 0, {}},
      {"LNA", 0, false, true, 4, {10, 20, 30, 40}},
      {"LNAP", 4, false, false, 4, {10, 20, 30, 40}},
      {"2R", 0, true, true, 3, {10, 20, 30}},
      {"2A", 2, false, false, 4, {10, 20, 30, 40}},
  };
  for (const MoveCase& each : cases) {
    std::filesystem::remove(path);
    Recordset rows(Make("CREATE TABLE t (v); INSERT INTO t VALUES (10),(20),(30)"), "t");
    for (const char* move = each.moves; *move != '\0'; ++move) {
      if (*move == 'F') rows.MoveFirst();
      if (*move == 'L') rows.MoveLast();
      if (*move == 'N') rows.MoveNext();
      if (*move == 'P') rows.MovePrevious();
      if (*move == '2') rows.MoveTo(2);
      if (*move == 'D') rows.Delete();
      if (*move == 'R') rows.Requery();
      if (*move != 'A') continue;
      rows.AddNew();
      rows.SetField(0, std::int64_t{40});
      rows.Update();
    }
    EXPECT_EQ(rows.Position(), each.position) << each.moves;
    EXPECT_EQ(rows.BeginningOfFile(), each.beginning) << each.moves;
    EXPECT_EQ(rows.EndOfFile(), each.end) << each.moves;
    EXPECT_EQ(rows.Count(), each.count) << each.moves;
    std::vector<std::int64_t> left;
    for (rows.MoveFirst(); !rows.EndOfFile(); rows.MoveNext()) left.push_back(std::get<std::int64_t>(rows.Field(0)));
    EXPECT_EQ(left, each.left) << each.moves;
  }
}

TEST_F(DatabaseRecordset, RaisesWhereThereIsNoRowToStepToOrToDelete) {
  Recordset rows(Make("CREATE TABLE t (v); INSERT INTO t VALUES (10)"), "t");
  EXPECT_EQ(NumberOf([&] { rows.MovePrevious(); }), ErrorNumber::NoCurrentRecord);
  EXPECT_EQ(NumberOf([&] { rows.Delete(); }), ErrorNumber::NoCurrentRecord);
  rows.MoveFirst();
  rows.MovePrevious();
  EXPECT_EQ(NumberOf([&] { rows.MovePrevious(); }), ErrorNumber::NoCurrentRecord);
  rows.MoveNext();
  rows.Delete();
  EXPECT_EQ(NumberOf([&] { rows.Field(0); }), ErrorNumber::NoCurrentRecord);
  EXPECT_EQ(NumberOf([&] { rows.Delete(); }), ErrorNumber::NoCurrentRecord);
}

TEST_F(DatabaseRecordset, TakesTheRowsOfAQueryInItsOrder) {
  const auto connection = Make("CREATE TABLE t (a, b); INSERT INTO t VALUES (1,'x'),(3,'y'),(2,'y'),(3,'x'),(0,'x')");
  Recordset rows(connection, "t", {"a >= ? AND b <> ?", "a DESC", {std::int64_t{1}, std::string("z")}});
  const auto all = [&] {
    std::string seen;
    for (rows.MoveFirst(); !rows.EndOfFile(); rows.MoveNext())
      seen += std::to_string(std::get<std::int64_t>(rows.Field(0))) + std::get<std::string>(rows.Field(1));
    return seen;
  };
  EXPECT_EQ(all(), "3y3x2y1x");
  connection->Execute("INSERT INTO t VALUES (9, 'w')");
  EXPECT_EQ(rows.Count(), 4);
  rows.Requery();
  EXPECT_EQ(all(), "9w3y3x2y1x");
  rows.Requery({"b = ?", "", {std::string("x")}});
  EXPECT_EQ(all(), "1x3x0x");
  EXPECT_THROW(Recordset(connection, "t", {"nothing = 1"}).Count(), RuntimeError);
}

TEST_F(DatabaseCatalog, FindsAnIndexByItsColumns) {
  const auto connection = Make("CREATE TABLE t (a, b, c); CREATE INDEX part ON t (a, c) WHERE c > 1");
  Catalog catalog(*connection);
  EXPECT_EQ(catalog.IndexOver("t", {"a", "b"}), "");
  catalog.AppendIndex("i\"1", "t", {"a", "b"});
  EXPECT_EQ(catalog.IndexOver("t", {"A", "B"}), "i\"1");
  EXPECT_EQ(catalog.IndexOver("t", {"a"}), "i\"1");
  EXPECT_EQ(catalog.IndexOver("t", {"a", "c"}), "");
  connection->Execute(
      "CREATE INDEX down ON t (b DESC, c); CREATE INDEX cased ON t (b COLLATE NOCASE, c);"
      "CREATE INDEX last ON t (c, a DESC)");
  EXPECT_EQ(catalog.IndexOver("t", {"c"}), "last") << "a column that stands behind one that goes down is no first one";
  EXPECT_EQ(catalog.IndexOver("t", {"c", "a"}), "");
}

}  // namespace
}  // namespace velk
