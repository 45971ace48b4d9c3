#include <gtest/gtest.h>

#include <fstream>

#include "log/begin_recording.h"
#include "log/log_fixture.h"
#include "support/failing_vfs.h"
#include "support/file_size_limit.h"
#include "support/locking_program.h"
#include "support/unprivileged.h"

namespace velk {
namespace {

using Rows = std::vector<std::string>;
namespace fs = std::filesystem;

constexpr uid_t kNobody = 65534;

std::string Content(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

class LogFaults : public test::LogFixture {
 protected:
  void SetUp() override { NameChannels({"Pressure", "Rate"}); }

  void AppendRow(float value) {
    session.CurrentValue[1] = value;
    AppendLogRow();
  }
  Rows Pressures(const std::string& file) { return Query(file, "SELECT Pressure FROM logData ORDER BY ID"); }

  /// What a machine that lost its power leaves: the file and its write-ahead log.
  std::string CopyAsAfterAKill() {
    const fs::path copies = folder.Path() / "copies";
    fs::remove_all(copies);
    fs::create_directory(copies);
    for (const char* suffix : {"", "-wal"})
      if (fs::exists(path + suffix)) fs::copy_file(path + suffix, copies / ("run.mdb" + std::string(suffix)));
    return (copies / "run.mdb").string();
  }
};

TEST_F(LogFaults, EveryRowIsOnTheDiskBeforeTheNextOne) {
  StartLog(path);
  for (int i = 1; i <= 5; ++i) {
    AppendRow(static_cast<float>(i));
    EXPECT_EQ(Pressures(CopyAsAfterAKill()).size(), static_cast<std::size_t>(i));
  }
}

TEST_F(LogFaults, ALogThatWasLeftByAKillIsAppendedToAndFinalised) {
  StartLog(path);
  AppendRow(1);
  const std::string copy = CopyAsAfterAKill();
  EXPECT_TRUE(files.IsCompatibleLog(copy));
  EXPECT_EQ(Pressures(copy), (Rows{"1.0"}));
  log.ConnectLogFile(copy);
  log.OpenLogRecordset();
  AppendRow(2);
  log.Finalise();
  EXPECT_FALSE(fs::exists(copy + "-wal"));
  EXPECT_EQ(Pressures(copy), (Rows{"1.0", "2.0"}));
}

TEST_F(LogFaults, FinaliseLeavesOneFileWithoutAWriteAheadLog) {
  StartLog(path);
  AppendRow(1);
  EXPECT_EQ(Query(path, "PRAGMA journal_mode"), (Rows{"wal"}));
  log.Finalise();
  EXPECT_FALSE(log.IsConnected());
  EXPECT_FALSE(log.RecordsetIsOpen());
  EXPECT_EQ(FilesInFolder(), (Rows{"run.mdb"}));
  EXPECT_EQ(Query(path, "PRAGMA journal_mode"), (Rows{"delete"}));
  EXPECT_EQ(Query(path, "PRAGMA integrity_check"), (Rows{"ok"}));
  EXPECT_EQ(Content(path).substr(18, 2), std::string("\x01\x01")) << "the header still asks for a write-ahead log";
}

TEST_F(LogFaults, FinaliseIsSafeWithoutALogAndTwice) {
  log.Finalise();
  StartLog(path);
  log.Finalise();
  log.Finalise();
  EXPECT_EQ(FilesInFolder(), (Rows{"run.mdb"}));
}

TEST_F(LogFaults, FinaliseCanBeTriedAgainWhenAnotherProgramReadsTheFile) {
  StartLog(path);
  AppendRow(1);
  {
    const auto other = Connection::Open(path, OpenMode::ReadOnly);
    Command reading(*other, "SELECT * FROM logData");
    ASSERT_TRUE(reading.Next());
    const std::string text = ErrorOf([&] { log.Finalise(); }, ErrorNumber::DatabaseLocked);
    EXPECT_NE(text.find(path), std::string::npos) << text;
    EXPECT_TRUE(log.IsConnected());
  }
  log.Finalise();
  EXPECT_EQ(FilesInFolder(), (Rows{"run.mdb"}));
  EXPECT_EQ(Pressures(path), (Rows{"1.0"}));
}

TEST_F(LogFaults, AProgramThatEndsWithoutStopStillFinalises) {
  {
    LogWriter other{session, platform};
    other.CreateLogFile(path);
    other.ConnectLogFile(path);
    other.OpenLogRecordset();
    other.AppendLogRow(PresentRow(session, clock.Now()));
  }
  EXPECT_EQ(FilesInFolder(), (Rows{"run.mdb"}));
}

TEST_F(LogFaults, TheNextFileFinalisesTheOneBefore) {
  StartLog(path);
  AppendRow(1);
  const std::string next = folder.File("next.mdb");
  StartLog(next);
  AppendRow(2);
  EXPECT_FALSE(fs::exists(path + "-wal"));
  EXPECT_EQ(Pressures(path), (Rows{"1.0"}));
  EXPECT_EQ(Pressures(CopyAsAfterAKill()), (Rows{"1.0"}));
  log.Finalise();
  EXPECT_EQ(Pressures(next), (Rows{"2.0"}));
}

TEST_F(LogFaults, ALogThatAnotherProgramRecordsToIsLeftToItAndCanBeRead) {
  StartLog(path);
  AppendRow(1);
  log.Finalise();
  {
    const test::LockingProgram other(path);
    const std::string before = Content(path);
    const std::string text = ErrorOf([&] { log.ConnectLogFile(path); }, ErrorNumber::FileAlreadyOpen);
    EXPECT_NE(text.find("[" + path + "] is being recorded by another VELK"), std::string::npos) << text;
    EXPECT_NE(text.find("process " + other.Process()), std::string::npos) << text;
    EXPECT_FALSE(log.IsConnected());
    EXPECT_EQ(Pressures(path), (Rows{"1.0"}));
    EXPECT_EQ(Content(path), before);
  }
  // It was killed: the lock has ended with it.
  log.ConnectLogFile(path);
  log.OpenLogRecordset();
  AppendRow(2);
  log.Finalise();
  EXPECT_EQ(Pressures(path), (Rows{"1.0", "2.0"}));
  EXPECT_EQ(FilesInFolder(), (Rows{"run.mdb"}));
}

TEST_F(LogFaults, ASecondWriterOfThisProgramIsRefusedToo) {
  StartLog(path);
  fs::create_symlink(path, folder.File("link.mdb"));
  LogWriter second{session, platform};
  ErrorOf([&] { second.ConnectLogFile(folder.File("link.mdb")); }, ErrorNumber::FileAlreadyOpen);
  AppendRow(1);
  log.Finalise();
  second.ConnectLogFile(path);
  second.Finalise();
  EXPECT_EQ(Pressures(path), (Rows{"1.0"}));
}

TEST_F(LogFaults, ALogThatWasReplacedUnderItsNameIsRecordedToAgain) {
  StartLog(path);
  fs::rename(path, folder.File("moved.mdb"));
  for (const char* suffix : {"-wal", "-shm"}) fs::remove(path + suffix);
  LogWriter(session, platform).CreateLogFile(path);
  log.ConnectLogFile(path);
  const auto holder = FileLock::HolderOf(path);
  ASSERT_TRUE(holder);
  EXPECT_TRUE(holder->IsThisProgram());
  log.OpenLogRecordset();
  AppendRow(1);
  log.Finalise();
  EXPECT_EQ(Pressures(path), (Rows{"1.0"}));
  EXPECT_FALSE(FileLock::HolderOf(path));
}

TEST_F(LogFaults, ConnectingAgainToTheOpenLogKeepsTheConnection) {
  StartLog(path);
  fs::create_symlink(path, folder.File("link.mdb"));
  log.ConnectLogFile(folder.File("link.mdb"));
  EXPECT_TRUE(log.RecordsetIsOpen());
  AppendRow(1);
  log.Finalise();
  EXPECT_EQ(Pressures(path), (Rows{"1.0"}));
}

TEST_F(LogFaults, AFullDiskCostsNothingAcknowledgedAndRecordingGoesOn) {
  StartLog(path);
  Rows acknowledged;
  while (acknowledged.empty() || fs::file_size(path + "-wal") < fs::file_size(path)) {
    AppendRow(static_cast<float>(acknowledged.size()));
    acknowledged.push_back(std::to_string(acknowledged.size()) + ".0");
  }
  std::string copy;
  {
    const test::FileSizeLimit limit(fs::file_size(path + "-wal") + 100);
    for (int i = 0; i < 3; ++i) {
      const std::string text = ErrorOf([&] { AppendRow(99); }, ErrorNumber::DiskFull);
      EXPECT_NE(text.find(path), std::string::npos) << text;
    }
    copy = CopyAsAfterAKill();
  }
  EXPECT_EQ(Pressures(copy), acknowledged);
  AppendRow(1000);
  acknowledged.push_back("1000.0");
  EXPECT_EQ(Pressures(CopyAsAfterAKill()), acknowledged);
  log.Finalise();
  EXPECT_EQ(Pressures(path), acknowledged);
}

TEST_F(LogFaults, AFullDiskLeavesNoHalfFile) {
  const test::FileSizeLimit limit(2000);
  ErrorOf([&] { CreateLog(path); }, ErrorNumber::DiskFull);
  EXPECT_EQ(FilesInFolder(), Rows{});
}

TEST_F(LogFaults, AFailingDiskAtAnyCallLeavesNoHalfFile) {
  test::FailingVfs disk;
  int call = 0;
  for (bool clean = false; !clean; ++call) {
    ASSERT_LT(call, 2000);
    const std::string file = folder.File("new.mdb");
    disk.FailAt(call + 1, call % 2 == 0);
    try {
      CreateLog(file);
      clean = !disk.HasFailed();
      disk.Heal();
    } catch (const RuntimeError& error) {
      disk.Heal();
      EXPECT_TRUE(disk.HasFailed()) << error.what();
      EXPECT_EQ(FilesInFolder(), Rows{}) << "call " << call;
      CreateLog(file);
    }
    EXPECT_EQ(FilesInFolder(), (Rows{"new.mdb"})) << "call " << call;
    EXPECT_EQ(Query(file, "SELECT count(*) FROM GraphSettings"), (Rows{"2"}));
    EXPECT_EQ(Query(file, "PRAGMA integrity_check"), (Rows{"ok"}));
    fs::remove(file);
  }
  EXPECT_GT(call, 10);
}

TEST_F(LogFaults, AFailingDiskAtAnyCallOfARowCostsNoOtherRow) {
  test::FailingVfs disk;
  for (const auto kind : {test::FailingVfs::Kind::Full, test::FailingVfs::Kind::IoError}) {
    for (const bool lasting : {false, true}) {
      int call = 0;
      for (bool clean = false; !clean; ++call) {
        ASSERT_LT(call, 2000);
        StartLog(path);
        AppendRow(1);
        disk.FailAt(call + 1, lasting, kind);
        bool acknowledged = true;
        try {
          AppendRow(2);
        } catch (const RuntimeError& error) {
          acknowledged = false;
          EXPECT_NE(std::string(error.what()).find(path), std::string::npos) << error.what();
        }
        clean = !disk.HasFailed();
        disk.Heal();
        const Rows before = Pressures(CopyAsAfterAKill());
        ASSERT_GE(before.size(), acknowledged ? 2u : 1u) << "call " << call;
        AppendRow(3);
        log.Finalise();
        EXPECT_EQ(Pressures(path), acknowledged ? (Rows{"1.0", "2.0", "3.0"}) : (Rows{"1.0", "3.0"}))
            << "call " << call;
        EXPECT_EQ(Query(path, "PRAGMA integrity_check"), (Rows{"ok"}));
        fs::remove(path);
      }
      EXPECT_GT(call, 2);
    }
  }
}

TEST_F(LogFaults, AFailingDiskAtAnyCallOfFinaliseCostsNoRow) {
  test::FailingVfs disk;
  int call = 0;
  for (bool clean = false; !clean; ++call) {
    ASSERT_LT(call, 2000);
    StartLog(path);
    AppendRow(1);
    AppendRow(2);
    disk.FailAt(call + 1, call % 2 == 0);
    try {
      log.Finalise();
      clean = !disk.HasFailed();
      disk.Heal();
    } catch (const RuntimeError&) {
      disk.Heal();
      EXPECT_EQ(Pressures(CopyAsAfterAKill()), (Rows{"1.0", "2.0"})) << "call " << call;
      EXPECT_TRUE(log.IsConnected());
      log.Finalise();
    }
    EXPECT_EQ(Pressures(path), (Rows{"1.0", "2.0"})) << "call " << call;
    fs::remove_all(folder.Path() / "copies");
    EXPECT_EQ(FilesInFolder(), (Rows{"run.mdb"})) << "call " << call;
    fs::remove(path);
  }
  EXPECT_GT(call, 5);
}

TEST_F(LogFaults, AFileSystemWithoutSharedMemoryIsRecordedToAllTheSame) {
  const test::VfsWithoutSharedMemory network;
  StartLog(path);
  AppendRow(1);
  EXPECT_FALSE(fs::exists(path + "-wal"));
  EXPECT_EQ(Pressures(CopyAsAfterAKill()), (Rows{"1.0"}));
  log.Finalise();
  fs::remove_all(folder.Path() / "copies");
  EXPECT_EQ(FilesInFolder(), (Rows{"run.mdb"}));
}

TEST_F(LogFaults, AMissingFolderIsNamed) {
  const std::string lost = folder.File("missing/run.mdb");
  const std::string text = ErrorOf([&] { CreateLog(lost); }, ErrorNumber::PathNotFound);
  EXPECT_NE(text.find(lost), std::string::npos) << text;
  ErrorOf([&] { log.ConnectLogFile(lost); }, ErrorNumber::PathNotFound);
  ErrorOf([&] { log.ConnectLogFile(folder.File("none.mdb")); }, ErrorNumber::FileNotFound);
  EXPECT_FALSE(log.IsConnected());
  EXPECT_TRUE(questions.inclusions.empty());
}

TEST_F(LogFaults, AReadOnlyFolderIsNamedAndStaysEmpty) {
  fs::permissions(folder.Path(), fs::perms(0555));
  const test::Unprivileged nobody;
  const std::string text = ErrorOf([&] { CreateLog(path); }, ErrorNumber::PermissionDenied);
  EXPECT_NE(text.find(path), std::string::npos) << text;
  EXPECT_EQ(FilesInFolder(), Rows{});
}

TEST_F(LogFaults, AFileInAReadOnlyFolderIsNotRecordedTo) {
  CreateLog(path);
  fs::permissions(path, fs::perms(0666));
  fs::permissions(folder.Path(), fs::perms(0555));
  const test::Unprivileged nobody;
  ErrorOf([&] { log.ConnectLogFile(path); }, ErrorNumber::PermissionDenied);
  EXPECT_FALSE(log.IsConnected());
}

TEST_F(LogFaults, AReadOnlyFileIsNotRecordedToAndCanBeLookedAt) {
  CreateLog(path);
  const std::string before = Content(path);
  fs::permissions(folder.Path(), fs::perms(0777));
  fs::permissions(path, fs::perms(0444));
  const test::Unprivileged nobody;
  const std::string text = ErrorOf([&] { log.ConnectLogFile(path); }, ErrorNumber::PermissionDenied);
  EXPECT_NE(text.find(path), std::string::npos) << text;
  EXPECT_TRUE(files.IsCompatibleLog(path));
  EXPECT_EQ(Content(path), before);
}

TEST_F(LogFaults, AFileThatIsNoDatabaseIsLeftAsItIs) {
  const std::string before =
      "Some text that is\nno database at all, in a file with the right extension." + std::string(200, ' ');
  std::ofstream(path) << before;
  const std::string text = ErrorOf([&] { log.ConnectLogFile(path); }, ErrorNumber::NotADatabase);
  EXPECT_NE(text.find(path), std::string::npos) << text;
  ErrorOf([&] { files.IsCompatibleLog(path); }, ErrorNumber::NotADatabase);
  ErrorOf([&] { CreateLog(path); }, ErrorNumber::FileAlreadyExists);
  EXPECT_EQ(Content(path), before);
  EXPECT_EQ(FilesInFolder(), (Rows{"run.mdb"}));
}

TEST_F(LogFaults, AnotherProgramsDatabaseIsLeftAsItIs) {
  MakeDatabase(path, "CREATE TABLE music (title TEXT); INSERT INTO music VALUES ('x')");
  const std::string before = Content(path);
  EXPECT_FALSE(files.IsCompatibleLog(path));
  EXPECT_FALSE(files.HasSameColumnOrder(path));
  const std::string text = ErrorOf([&] { log.ConnectLogFile(path); }, ErrorNumber::NoSuchTable);
  EXPECT_NE(text.find(path), std::string::npos) << text;
  EXPECT_NE(text.find("logData"), std::string::npos) << text;
  EXPECT_EQ(Content(path), before);
  EXPECT_EQ(FilesInFolder(), (Rows{"run.mdb"}));
}

TEST_F(LogFaults, AnEmptyFileIsNoLog) {
  std::ofstream(path).flush();
  EXPECT_FALSE(files.IsCompatibleLog(path));
  ErrorOf([&] { log.ConnectLogFile(path); }, ErrorNumber::NoSuchTable);
  EXPECT_EQ(fs::file_size(path), 0u);
}

TEST_F(LogFaults, AFolderOrADeviceIsNoLog) {
  ErrorOf([&] { log.ConnectLogFile(folder.Path().string()); }, ErrorNumber::BadFileName);
  ErrorOf([&] { log.ConnectLogFile("/dev/zero"); }, ErrorNumber::BadFileName);
  ErrorOf([&] { log.ConnectLogFile(""); }, ErrorNumber::BadFileName);
}

TEST_F(LogFaults, ADamagedLogRaises) {
  CreateLog(path);
  {
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(100);
    file << std::string(3000, '\xff');
  }
  const std::string text = ErrorOf([&] { log.ConnectLogFile(path); }, ErrorNumber::Database);
  EXPECT_NE(text.find(path), std::string::npos) << text;
  EXPECT_FALSE(log.IsConnected());
}

TEST_F(LogFaults, CreatingNeverTouchesWhatIsThere) {
  StartLog(path);
  AppendRow(1);
  log.Finalise();
  const std::string before = Content(path);
  ErrorOf([&] { CreateLog(path); }, ErrorNumber::FileAlreadyExists);
  EXPECT_EQ(Content(path), before);
}

TEST_F(LogFaults, AFileThatComesWhileTheQuestionStandsIsNotTouched) {
  questions.include = [this](SummaryInclusion&) { std::ofstream(path) << "mine"; };
  ErrorOf([&] { CreateLog(path); }, ErrorNumber::FileAlreadyExists);
  EXPECT_EQ(Content(path), "mine");
  EXPECT_EQ(FilesInFolder(), (Rows{"run.mdb"}));
}

TEST_F(LogFaults, TheJournalOfAnotherFileIsNotPlayedIntoANewOne) {
  std::ofstream(path + "-wal") << "rows of a file that was removed";
  const std::string text = ErrorOf([&] { CreateLog(path); }, ErrorNumber::FileAlreadyExists);
  EXPECT_NE(text.find(path + "-wal"), std::string::npos) << text;
  EXPECT_EQ(FilesInFolder(), (Rows{"run.mdb-wal"}));
}

TEST_F(LogFaults, AFolderThatCannotBeFlushedIsToldOnce) {
  // Who may not read a folder can't open it to flush it.
  constexpr auto kWriteAndSearch = static_cast<fs::perms>(0333);
  fs::permissions(folder.Path(), kWriteAndSearch);
  const test::Unprivileged nobody;
  dialogs.Expect(
      "The disk does not confirm the new file's name: a power cut within the next minute can take the file "
      "with it. The folder: " +
          folder.Path().string(),
      Answer::Ok);
  CreateLog(path);
  EXPECT_EQ(access(path.c_str(), F_OK), 0) << "it is whole all the same";
  CreateLog(folder.File("second.mdb"));
}

/// Who may make files here and remove none but his own; which needs a root who makes the others.
class LogAmongFilesOfOthers : public LogFaults, public testing::WithParamInterface<const char*> {};

TEST_P(LogAmongFilesOfOthers, IsWholeAndToldWhereAFileBesideItCannotBeRemoved) {
  StartLog(path);
  AppendRow(1);
  constexpr auto kEverybody = static_cast<fs::perms>(0777);
  for (const char* suffix : {"", "-wal", "-shm", "-lock"}) {
    fs::permissions(path + suffix, kEverybody);
    if (*suffix != 0 && std::string(suffix) != GetParam())
      ASSERT_EQ(chown((path + suffix).c_str(), kNobody, kNobody), 0);
  }
  fs::permissions(folder.Path(), kEverybody | fs::perms::sticky_bit);
  {
    const test::Unprivileged nobody;
    dialogs.Expect(
        "The recording is whole. What belonged to it while it ran could not be removed, and holds nothing: " + path +
            GetParam(),
        Answer::Ok);
    log.Finalise();
  }
  EXPECT_FALSE(log.IsConnected());
  EXPECT_EQ(FilesInFolder(), (Rows{"run.mdb", "run.mdb" + std::string(GetParam())}));
  EXPECT_EQ(Pressures(path), (Rows{"1.0"}));
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(LogAmongFilesOfOthers);
INSTANTIATE_TEST_SUITE_P(Stays, LogAmongFilesOfOthers,
                         testing::ValuesIn(geteuid() == 0 ? std::vector<const char*>{"-wal", "-shm", "-lock"}
                                                          : std::vector<const char*>{}),
                         [](const auto& file) { return std::string(file.param).substr(1); });

TEST_F(LogFaults, APartThatAKilledProgramLeftDoesNotStandInTheWay) {
  std::ofstream(path + ".part1") << "half";
  CreateLog(path);
  EXPECT_EQ(FilesInFolder(), (Rows{"run.mdb", "run.mdb.part1"}));
}

TEST_F(LogFaults, RowsOfAFileThatWasRemovedAreNotAcknowledged) {
  StartLog(path);
  AppendRow(1);
  fs::rename(path, folder.File("moved.mdb"));
  const std::string text = ErrorOf([&] { AppendRow(2); }, ErrorNumber::FileNotFound);
  EXPECT_NE(text.find(path), std::string::npos) << text;
  fs::rename(folder.File("moved.mdb"), path);
  AppendRow(3);
  log.Finalise();
  EXPECT_EQ(Pressures(path), (Rows{"1.0", "3.0"}));
}

TEST_F(LogFaults, BeginRecordingMakesTheFileOnceAndCanBeRepeated) {
  BeginRecording(session, files, log, path);
  EXPECT_EQ(session.LogFileInUse, path);
  EXPECT_TRUE(log.IsConnected());
  log.OpenLogRecordset();
  AppendRow(1);
  log.Finalise();
  BeginRecording(session, files, log, path);
  log.OpenLogRecordset();
  AppendRow(2);
  log.Finalise();
  EXPECT_EQ(questions.inclusions.size(), 1u);
  EXPECT_EQ(Query(path, "SELECT ID, Pressure FROM logData"), (Rows{"1|1.0", "2|2.0"}));
  EXPECT_EQ(Query(path, "SELECT count(*) FROM GraphSettings"), (Rows{"2"}));
}

TEST_F(LogFaults, ARecordingThatCannotBeginLeavesTheSessionAsItWas) {
  session.LogFileInUse = "before";
  ErrorOf([&] { BeginRecording(session, files, log, folder.File("missing/run.mdb")); }, ErrorNumber::PathNotFound);
  EXPECT_EQ(session.LogFileInUse, "before");
}

}  // namespace
}  // namespace velk
