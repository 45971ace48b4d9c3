#include "exchange/jet_log.h"

#include <cmath>
#include <cstdlib>

#include "base/dates.h"
#include "exchange/exchange_fixture.h"
#include "exchange/export_source.h"
#include "exchange/foreign_tables.h"
#include "exchange/import_data.h"
#include "exchange/old_jet_log.h"
#include "log/log_reader.h"
#include "log/open_log.h"
#include "log/playback_file.h"
#include "platform/database/jet_copy.h"
#include "platform/files/file_errors.h"
#include "support/file_size_limit.h"

namespace velk {
namespace {

using Rows = std::vector<std::string>;

class JetLog : public test::ExchangeFixture {
 protected:
  JetLog() { setenv("XDG_CACHE_HOME", cache.Path().c_str(), 1); }
  ~JetLog() override { unsetenv("XDG_CACHE_HOME"); }

  std::string Unpack(const std::string& name, const std::string& as = "old.mdb") const {
    const std::string file = folder.File(as);
    const std::string from = std::string(VELK_SOURCE_DIR) + "/tests/data/jet/" + name + ".gz";
    EXPECT_EQ(std::system(("gunzip -c '" + from + "' > '" + file + "'").c_str()), 0);
    return file;
  }
  void Prepare(const std::string& file) const { PrepareLog(file, tools, platform); }
  Rows Copies() const {
    Rows names;
    for (const auto& entry : std::filesystem::directory_iterator(cache.Path() / "VELK"))
      names.push_back(entry.path().filename().string());
    return names;
  }

  test::TemporaryFolder cache;
  JetTools tools{VELK_JET_READER};
};

TEST_F(JetLog, OpensForPlaybackWithItsValues) {
  const std::string file = Unpack("log_1000.mdb");
  ASSERT_TRUE(IsJetFile(file));
  Prepare(file);
  PlaybackFile played = OpenForPlayback(file, test::English());
  ASSERT_EQ(played.parameters.channels.size(), 18U);
  EXPECT_TRUE(played.parameters.hasGraphSettings);
  EXPECT_EQ(played.parameters.channels[3].name, "Давление в затрубье");
  EXPECT_EQ(played.parameters.channels[5].name, "Расход, л/с");
  EXPECT_EQ(played.parameters.channels[15].name, "Глубина \"A\"");
  EXPECT_EQ(played.reader->Count(), 1000);
  const auto row = played.reader->ByKey(2);
  ASSERT_TRUE(row);
  EXPECT_EQ(FormatDate(row->time, "dd-mmm-yyyy hh:nn:ss"), "28-Feb-2024 22:00:01");
  EXPECT_EQ(row->values[0], 0.1);
  EXPECT_EQ(row->values[17], 1.0 / 3);
  EXPECT_TRUE(std::isnan(played.reader->ByKey(501)->values[4])) << "it is missing there";
}

TEST_F(JetLog, HasTimesWithOurBits) {
  const std::string file = Unpack("log_1000.mdb");
  Prepare(file);
  EXPECT_EQ(Query(file, "SELECT count(*) FROM logData WHERE Date = CDate('28-Feb-2024') AND Time >= CDate('22:00:01')"),
            (Rows{"999"}));
}

TEST_F(JetLog, KeepsLongComments) {
  const std::string file = Unpack("log_1000.mdb");
  Prepare(file);
  EXPECT_EQ(Query(file, "SELECT max(length(Comments)), count(*) FROM SummaryReport"), (Rows{"9800|7"}));
}

TEST_F(JetLog, HasTheRowsThatAnotherProgramAppended) {
  const std::string file = Unpack("appended_60.mdb");
  Prepare(file);
  EXPECT_EQ(Query(file, "SELECT count(*), max(ID) FROM logData"), (Rows{"260|260"}));
}

TEST_F(JetLog, IsReadOnceUntilItChanges) {
  const std::string file = Unpack("log_1000.mdb");
  Prepare(file);
  ASSERT_EQ(Copies().size(), 1U);
  const std::string first = Copies().front();
  tools.program = "/bin/false";
  Prepare(file);
  tools.program = VELK_JET_READER;
  std::filesystem::last_write_time(file, std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
  EXPECT_THROW(LogReader{file}, RuntimeError) << "it has changed since it was chosen";
  Prepare(file);
  ASSERT_EQ(Copies().size(), 1U) << "the old copy is gone";
  EXPECT_NE(Copies().front(), first);
  EXPECT_EQ(LogReader(file).Count(), 1000);
}

TEST_F(JetLog, RefusesEveryChangeWithTheReason) {
  const std::string file = Unpack("log_1000.mdb");
  Prepare(file);
  const std::string reason =
      ErrorOf([&] { Connection::Open(file, OpenMode::ReadWrite); }, ErrorNumber::PermissionDenied);
  EXPECT_NE(reason.find("it can be read, not changed"), std::string::npos);
  EXPECT_NE(reason.find(file), std::string::npos);
  const OpenLog open(session, platform, log);
  ErrorOf([&] { open.Edit(file, [](const auto&) {}); }, ErrorNumber::PermissionDenied);
}

TEST_F(JetLog, IsNotCompatibleWithARecording) {
  const std::string file = Unpack("log_1000.mdb");
  Prepare(file);
  NameChannels({"Pressure"});
  EXPECT_FALSE(files.IsCompatibleLog(file));
  EXPECT_FALSE(files.IsCompatibleLog(Unpack("appended_60.mdb", "unread.mdb"))) << "nobody has read it yet";
}

TEST_F(JetLog, IsExported) {
  const std::string file = Unpack("log_1000.mdb");
  Prepare(file);
  EXPECT_EQ(ExportSource(file, ExportMode::LogToCsv).Fields().size(), 21U);
}

TEST_F(JetLog, TellsTheFileThatHoldsNoLog) {
  const std::string file = Unpack("foreign.mdb");
  EXPECT_NE(ErrorOf([&] { Prepare(file); }, ErrorNumber::NoSuchTable).find(file), std::string::npos);
  EXPECT_EQ(Copies(), Rows{});
}

TEST_F(JetLog, TellsTheFileWhoseLogHasNoTimes) {
  test::Jet3File other;
  other.AddTable("logData", {{"ID", test::Jet3File::LongInt}, {"A", test::Jet3File::Double}}, {{std::int64_t{1}, 1.5}});
  const std::string file = Write("old.mdb", other.Bytes());
  EXPECT_NE(ErrorOf([&] { Prepare(file); }, ErrorNumber::NotADatabase).find(file), std::string::npos);
  EXPECT_EQ(Copies(), Rows{});
}

TEST_F(JetLog, TellsTheFileWhereItsReaderDies) {
  const std::string file = Unpack("log_1000.mdb");
  tools.program = "/bin/false";
  EXPECT_NE(ErrorOf([&] { Prepare(file); }, ErrorNumber::NotADatabase).find(file), std::string::npos);
  tools.program = "/none/velk_jet_reader";
  ErrorOf([&] { Prepare(file); }, ErrorNumber::PathNotFound);
  EXPECT_EQ(Copies(), Rows{});
}

TEST_F(JetLog, LeavesNothingBehindWhereItIsCancelled) {
  const std::string file = Unpack("log_1000.mdb");
  const std::string copy = folder.File("copy.mdb");
  dialogs.cancelProgress = true;
  LongTask task = Task();
  clock.Advance(400);
  EXPECT_THROW(CopyJetLog(file, copy, tools, task), TaskCancelled);
  EXPECT_EQ(FilesInFolder(), (Rows{"old.mdb"}));
}

TEST_F(JetLog, IsLookedForWithoutTheLocksOfALogBeingLost) {
  MakeDatabase(path, "CREATE TABLE t (a)");
  const auto writing = Connection::Open(path, OpenMode::ReadWrite);
  Transaction transaction(*writing);
  EXPECT_FALSE(IsJetFile(path));
  Connection::Open(path, OpenMode::ReadOnly);
  const std::string other = "sqlite3 '" + path + "' 'BEGIN IMMEDIATE' 2>/dev/null";
  EXPECT_NE(std::system(other.c_str()), 0) << "another program may not write meanwhile";
}

TEST_F(JetLog, IsToldByItsFirstBytesAlone) {
  EXPECT_FALSE(IsJetFile(Write("a.mdb", "SQLite format 3")));
  EXPECT_FALSE(IsJetFile(Write("b.mdb", std::string("\0\1\0\0Standard Jet", 16)))) << "too short";
  EXPECT_TRUE(IsJetFile(Write("c.mdb", std::string("\0\1\0\0Standard Jet DB\0", 20))));
  EXPECT_TRUE(IsJetFile(Write("d.mdb", std::string("\0\1\0\0Standard ACE DB\0", 20))));
  EXPECT_FALSE(IsJetFile(folder.File("none.mdb")));
  EXPECT_TRUE(IsJet3File(Write("e.mdb", std::string("\0\1\0\0Standard Jet DB\0\0", 21))));
  EXPECT_FALSE(IsJet3File(Write("f.mdb", std::string("\0\1\0\0Standard Jet DB\0\1", 21))));
  EXPECT_FALSE(IsJet3File(Write("g.mdb", "SQLite format 3")));
}

TEST_F(JetLog, LeavesNothingBehindOnAFullDisk) {
  const std::string file = Unpack("log_1000.mdb");
  {
    const test::FileSizeLimit limit(60'000);
    ErrorOf([&] { Prepare(file); }, ErrorNumber::DiskFull);
  }
  EXPECT_EQ(Copies(), Rows{});
  Prepare(file);
  EXPECT_EQ(LogReader(file).Count(), 1000);
}

// --- Version 3, whose texts don't tell their code page ---

/// A log with texts of Windows-1251.
class OldJetLog : public JetLog {
 protected:
  std::string NameOfFirstChannel() const {
    return OpenForPlayback(file, test::English()).parameters.channels.at(0).name;
  }

  const std::string file = Write("old.mdb", test::OldJetLogBytes());
};

TEST_F(OldJetLog, OpensWithItsValues) {
  tools.charset = "CP1251";
  Prepare(file);
  PlaybackFile played = OpenForPlayback(file, test::English());
  ASSERT_EQ(played.parameters.channels.size(), 2U);
  EXPECT_EQ(played.parameters.channels[0].name, "Глубина");
  EXPECT_EQ(played.parameters.channels[0].units, "м");
  EXPECT_EQ(played.parameters.channels[0].min, -5);
  EXPECT_EQ(played.parameters.channels[0].max, 250.5);
  EXPECT_EQ(played.parameters.channels[0].format, "#0.0");
  EXPECT_EQ(played.parameters.channels[0].color, 255);
  EXPECT_EQ(played.parameters.channels[0].FormIndex, 2);
  EXPECT_EQ(played.reader->Count(), 100);
  const auto row = played.reader->ByKey(42);
  ASSERT_TRUE(row);
  EXPECT_EQ(FormatDate(row->time, "dd-mmm-yyyy hh:nn:ss"), "28-Feb-1998 23:00:42");
  EXPECT_EQ(row->values, (std::vector<double>{0.1 * 42, 1.0 / 3}));
  EXPECT_TRUE(std::isnan(played.reader->ByKey(7)->values[1])) << "it is missing there";
  EXPECT_EQ(Query(file, "SELECT Comments, length(Note) FROM SummaryReport"),
            (Rows{"Пакер " + std::string(600, 'c') + " № 7|250"}));
}

TEST_F(OldJetLog, HasTextsByTheCodePageThatIsAskedFor) {
  Prepare(file);
  EXPECT_EQ(NameOfFirstChannel(), "Ãëóáèíà") << "Windows-1252";
}

TEST_F(OldJetLog, IsReadAnewInASessionOfAnotherLanguage) {
  Prepare(file);
  tools.charset = "CP1251";
  Prepare(file);
  EXPECT_EQ(NameOfFirstChannel(), "Глубина");
  EXPECT_EQ(Copies().size(), 1U);
  tools.program = "/bin/false";
  Prepare(file);
  EXPECT_EQ(NameOfFirstChannel(), "Глубина") << "and kept from then on";
}

TEST_F(JetLog, IsKeptInASessionOfAnotherLanguageWhereItsTextsAreUnicode) {
  const std::string file = Unpack("log_1000.mdb");
  Prepare(file);
  tools = {"/bin/false", "CP1251"};
  Prepare(file);
  EXPECT_EQ(LogReader(file).Count(), 1000);
}

TEST_F(OldJetLog, IsFollowedByItsNames) {
  tools.charset = "CP1251";
  const auto tables = ReadForeignTables(file, tools, {});
  EXPECT_EQ(GetTablesName(tables), (Rows{"logData", "GraphSettings", "SummaryReport"}));
  const auto fields = GetFieldsName(tables, "logData");
  ASSERT_EQ(fields.size(), 5U);
  EXPECT_EQ(fields[3].Name, "Глубина");
  ImportData data;
  data.Initialize({true, file, "logData", "Date", "Time", {fields[3]}}, tools);
  const auto read = data.ReadData({DateSerial(1998, 2, 28), 23 * 3600 + 58});
  std::vector<ForeignRow> rows;
  while (read->Read(rows)) {
  }
  ASSERT_EQ(rows.size(), 2U) << "seconds 58 and 59; the others are of the minute before them";
  EXPECT_EQ(rows[0].values, (std::vector<double>{0.1 * 58}));
}

}  // namespace
}  // namespace velk
