#include "log/log_check.h"

#include <gtest/gtest.h>

#include <fstream>

#include "log/log_fixture.h"
#include "log/log_schema.h"
#include "log/record_file.h"
#include "model/status.h"
#include "model/texts.h"
#include "support/recording_view.h"

namespace velk {
namespace {

constexpr std::uintmax_t kPageBytes = 4096;

/// Time goes on by so many milliseconds whenever it is looked at.
class RunningClock : public test::FakeClock {
 public:
  RunningClock(Gate& gate, std::int64_t step) : FakeClock(gate), step_(step) {}
  std::int64_t Ticks() const override { return ticks_ += step_; }

 private:
  const std::int64_t step_;
  mutable std::int64_t ticks_ = 0;
};

class LogCheck : public test::LogFixture {
 protected:
  void SetUp() override {
    NameChannels({"Pressure"});
    ChangeCurrentStatus(session, view, text::StatusReady);
  }

  /// A log with so many rows, each with a text that fills `filling` bytes.
  void MakeLog(int rows, int filling = 0) {
    CreateLog(path);
    const auto connection = Connection::Open(path, OpenMode::ReadWrite);
    connection->Execute("ALTER TABLE logData ADD COLUMN Filling TEXT");
    connection->Execute("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
                        std::to_string(rows) +
                        ") INSERT INTO logData (Date, Time, Pressure, Filling) "
                        "SELECT 46095, i / 86400.0, i, hex(zeroblob(" +
                        std::to_string(filling / 2) + ")) FROM n");
  }
  /// Writes over a page in the middle of the rows.
  void Damage() const {
    const auto middle = std::filesystem::file_size(path) / 2 / kPageBytes * kPageBytes;
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(static_cast<std::streamoff>(middle));
    file << std::string(kPageBytes, '\xa5');
  }
  /// Takes the last row of a page out of the page's count: nobody who reads the rows alone notices.
  void LoseARow() const {
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    constexpr char kLeafOfATable = 0x0d;
    char head[5] = {};
    for (auto page = std::filesystem::file_size(path) / 2 / kPageBytes; head[0] != kLeafOfATable; ++page) {
      file.seekg(static_cast<std::streamoff>(page * kPageBytes));
      file.read(head, sizeof head);
    }
    // The number of rows stands in bytes 3 and 4, the highest digit first.
    file.seekp(-1, std::ios::cur);
    file.put(static_cast<char>(head[4] - 1));
  }
  bool IsWhole() {
    return IsWholeLog(path,
                      [this](double done, double of) { (of == 0 ? countingSteps : steps) += done <= of ? 1 : 0; });
  }
  bool Append() {
    questions.choice = FileChoice::Append;
    return mnuFileRecord_Click(session, platform, view, files);
  }

  test::RecordingView view;
  int steps = 0;
  int countingSteps = 0;
};

TEST_F(LogCheck, KnowsASmallLogThatIsWholeFromADamagedOne) {
  MakeLog(5000);
  EXPECT_TRUE(IsWhole());
  Damage();
  EXPECT_FALSE(IsWhole());
}

TEST_F(LogCheck, ReadsALargeLogStepByStep) {
  MakeLog(9000, 2000);
  ASSERT_GT(std::filesystem::file_size(path), 16u << 20);
  EXPECT_TRUE(IsWhole());
  EXPECT_EQ(steps, 9000);
  EXPECT_EQ(countingSteps, 3) << "4096 rows at a time";
  Damage();
  EXPECT_FALSE(IsWhole());
}

TEST_F(LogCheck, TellsHowFarItIsInALargeLogWithoutAnIndexToo) {
  MakeLog(9000, 2000);
  Connection::Open(path, OpenMode::ReadWrite)->Execute(std::string("DROP INDEX ") + kLogDataTimes);
  EXPECT_TRUE(IsWhole());
  EXPECT_EQ(steps, 9000);
  EXPECT_EQ(countingSteps, 0);
}

TEST_F(LogCheck, MissesARowOfALargeLogThatOnlyTheIndexStillKnows) {
  MakeLog(9000, 2000);
  LoseARow();
  EXPECT_EQ(Query(path, "SELECT count(*) FROM logData NOT INDEXED"), (std::vector<std::string>{"8999"}));
  EXPECT_FALSE(IsWhole());
}

TEST_F(LogCheck, LooksAtAnUnfinishedLogWithoutTouchingIt) {
  StartLog(path);
  AppendLogRow();
  EXPECT_TRUE(IsWhole());
  AppendLogRow();
  log.Finalise();
  EXPECT_EQ(Query(path, "SELECT count(*) FROM logData"), (std::vector<std::string>{"2"}));
}

TEST_F(LogCheck, OffersANewFileForADamagedOne) {
  MakeLog(5000);
  Damage();
  dialogs.ExpectSaveFile(path);
  dialogs.Expect("The log [" + path + "] is damaged", Answer::Yes);
  EXPECT_TRUE(Append());
  EXPECT_EQ(session.CurrentFile, folder.File("run#1.mdb"));
}

TEST_F(LogCheck, ChoosesNothingWhereTheNewFileIsDeclined) {
  MakeLog(5000);
  Damage();
  dialogs.ExpectSaveFile(path);
  dialogs.Expect("The log [" + path + "] is damaged", Answer::No);
  EXPECT_FALSE(Append());
  EXPECT_EQ(session.CurrentFile, "");
}

TEST_F(LogCheck, IsSkippedByTheOperator) {
  MakeLog(9000, 2000);
  Damage();
  dialogs.cancelProgress = true;
  dialogs.ExpectSaveFile(path);
  RunningClock running{gate, 10};
  const Platform slow{running, gate, dialogs, settings, test::English()};
  JobFiles asking{session, slow, questions, graphs};
  questions.choice = FileChoice::Append;
  EXPECT_TRUE(mnuFileRecord_Click(session, slow, view, asking));
  EXPECT_EQ(session.CurrentFile, path);
  ASSERT_EQ(dialogs.progress.size(), 1u);
  EXPECT_EQ(dialogs.progress[0].title, "Checking the log");
}

TEST_F(LogCheck, FindsTheRowsOfAJobOrMissesThem) {
  MakeLog(300, 2000);
  log.ConnectLogFile(path);
  log.OpenLogRecordset();
  for (int i = 0; i < 3; ++i) AppendLogRow();
  JobRows job = log.RowsOfJob();
  EXPECT_EQ(job.path, path);
  EXPECT_EQ(job.after, 300);
  EXPECT_EQ(job.count, 3);
  log.Finalise();
  EXPECT_EQ(log.RowsOfJob().count, 0);
  EXPECT_TRUE(CanReadBack(job, clock));
  job.count = 4;
  EXPECT_FALSE(CanReadBack(job, clock));
  job = {path, 0, 303};
  Damage();
  EXPECT_FALSE(CanReadBack(job, clock));
}

TEST_F(LogCheck, OfAJobEndsAfterASecond) {
  MakeLog(5000, 2000);
  Damage();
  EXPECT_FALSE(CanReadBack({path, 0, 5000}, clock));
  RunningClock running{gate, 500};
  EXPECT_TRUE(CanReadBack({path, 0, 5000}, running)) << "the damage lies behind what a second's reading shows";
}

}  // namespace
}  // namespace velk
