// Logs on disks without a free byte. Those that are mounted for the purpose need a root who may mount.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>

#include <fstream>

#include "log/log_fixture.h"
#include "log/open_log.h"
#include "support/file_size_limit.h"
#include "support/small_disk.h"

namespace velk {
namespace {

using Rows = std::vector<std::string>;

constexpr int kFull = 61;  ///< how a child ends that was told of a full disk

std::string BytesOf(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// How a program ends that does the work: a page of memory without a block on the disk would end it by a signal. What
/// it is told is left in `told`.
int EndOf(const std::function<void()>& work, std::string* told = nullptr) {
  int ends[2] = {};
  EXPECT_EQ(pipe(ends), 0);
  const pid_t child = fork();
  if (child == 0) {
    int code = 0;
    try {
      work();
    } catch (const RuntimeError& error) {
      const std::string text = error.what();
      code = error.Number() == ErrorNumber::DiskFull && write(ends[1], text.data(), text.size()) > 0 ? kFull : 1;
    }
    _exit(code);
  }
  close(ends[1]);
  char text[1024];
  const ssize_t size = read(ends[0], text, sizeof text);
  if (told != nullptr && size > 0) told->assign(text, static_cast<std::size_t>(size));
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

class LogOnFullDisk : public test::LogFixture {
 protected:
  void SetUp() override { NameChannels({"Pressure"}); }

  /// A log of three rows that a killed program leaves.
  void LeaveUnfinished(const std::string& file) {
    log.CreateLogFile(file);
    EndOf([&] {
      const auto connection = Connection::Open(file, OpenMode::ReadWrite);
      connection->BeginRecording();
      for (int i = 0; i < 3; ++i) connection->Execute("INSERT INTO logData (Date, Time, Pressure) VALUES (1, 0.5, 7)");
      raise(SIGKILL);
    });
  }
  static Rows Count(const std::string& file) { return Query(file, "SELECT count(*) FROM logData"); }
};

TEST_F(LogOnFullDisk, AnEntryIntoTheReportOfAnUnfinishedLogNeedsThatRoomToo) {
  LeaveUnfinished(path);
  session.LogFileInUse = path;
  const OpenLog open(session, platform, log);
  std::string told;
  EXPECT_EQ(EndOf(
                [&] {
                  const test::FileSizeLimit limit(8000);
                  open.EnterSummaryField(path, 1, "Comments", 5.0);
                },
                &told),
            kFull);
  // The entry itself would find the disk full, too, with other words.
  EXPECT_TRUE(told.ends_with(" KB more are needed")) << told;
}

TEST_F(LogOnFullDisk, AnUnfinishedLogTellsHowMuchRoomItsIndexLacks) {
  LeaveUnfinished(path);
  const std::string before = BytesOf(path);
  const std::string rows = BytesOf(path + "-wal");
  std::string told;
  EXPECT_EQ(EndOf(
                [&] {
                  const test::FileSizeLimit limit(8000);
                  Connection::Open(path, OpenMode::ReadOnly);
                },
                &told),
            kFull);
  // An index of 32 KiB and 64 KiB to go on with; how much of it a limit leaves free nobody can tell.
  EXPECT_EQ(told, "The disk has no room to open [" + path + "]: 96 KB more are needed");
  EXPECT_EQ(BytesOf(path), before);
  EXPECT_EQ(BytesOf(path + "-wal"), rows);
  EXPECT_EQ(FilesInFolder(), (Rows{"run.mdb", "run.mdb-shm", "run.mdb-wal"}));
  EXPECT_EQ(Count(path), (Rows{"3"}));
}

TEST_F(LogOnFullDisk, ALogThatIsBeingRecordedIsReadWithoutRoom) {
  StartLog(path);
  AppendLogRow();
  EXPECT_EQ(EndOf([&] {
              const test::FileSizeLimit limit(8000);
              Connection::Open(path, OpenMode::ReadOnly);
            }),
            0);
}

/// By the kind of disk.
class LogOnSmallDisk : public LogOnFullDisk, public testing::WithParamInterface<std::string> {};

TEST_P(LogOnSmallDisk, IsNotOpenedWithoutRoomForItsIndexAndIsAllThereOnceThereIs) {
  for (const bool indexIsLeft : {true, false}) {
    const test::SmallDisk disk(GetParam());
    const std::string file = disk.File("run.mdb");
    LeaveUnfinished(file);
    if (!indexIsLeft) std::filesystem::remove(file + "-shm");
    disk.Fill();
    const std::string before = BytesOf(file);
    const std::string rows = BytesOf(file + "-wal");
    for (const auto mode : {OpenMode::ReadOnly, OpenMode::ReadWrite}) {
      std::string told;
      EXPECT_EQ(EndOf([&] { Connection::Open(file, mode); }, &told), kFull);
      EXPECT_TRUE(told.ends_with(" KB more are needed")) << told;
    }
    EXPECT_EQ(BytesOf(file), before);
    EXPECT_EQ(BytesOf(file + "-wal"), rows);
    disk.Empty();
    EXPECT_EQ(Count(file), (Rows{"3"}));
  }
}

TEST_P(LogOnSmallDisk, IsNotRecordedToWithoutRoomForItsIndex) {
  const test::SmallDisk disk(GetParam());
  const std::string file = disk.File("run.mdb");
  log.CreateLogFile(file);
  disk.Fill();
  const std::string before = BytesOf(file);
  EXPECT_EQ(EndOf([&] { Connection::Open(file, OpenMode::ReadWrite)->BeginRecording(); }), kFull);
  EXPECT_EQ(BytesOf(file), before);
  disk.Empty();
  log.ConnectLogFile(file);
  log.OpenLogRecordset();
  AppendLogRow();
  log.Finalise();
  EXPECT_EQ(Count(file), (Rows{"1"}));
}

Rows DisksOfThisMachine() {
  Rows kinds;
  for (const char* kind : {"tmpfs", "ext4"})
    if (geteuid() == 0 && test::SmallDisk(kind).IsMounted()) kinds.emplace_back(kind);
  return kinds;
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(LogOnSmallDisk);
INSTANTIATE_TEST_SUITE_P(Mounted, LogOnSmallDisk, testing::ValuesIn(DisksOfThisMachine()),
                         [](const auto& kind) { return kind.param; });

}  // namespace
}  // namespace velk
