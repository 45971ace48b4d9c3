#include "platform/dialogs/long_task.h"

#include <gtest/gtest.h>

#include "support/fake_clock.h"
#include "support/scripted_dialogs.h"

namespace velk {
namespace {

class LongTaskTest : public testing::Test {
 protected:
  /// A millisecond a step, so many of so many.
  void Steps(LongTask& task, int from, int to, int of) {
    for (int i = from; i < to; ++i) {
      clock.Advance(1);
      task.Step(i, of);
    }
  }

  Gate gate;
  test::FakeClock clock{gate};
  test::ScriptedDialogs dialogs{gate};
};

TEST_F(LongTaskTest, ShowsNothingWhereItIsDoneWithin300Milliseconds) {
  {
    LongTask task(dialogs, clock, "Importing");
    Steps(task, 0, 299, 299);
  }
  ASSERT_EQ(dialogs.progress.size(), 1U);
  EXPECT_FALSE(dialogs.progress[0].appeared);
  EXPECT_TRUE(dialogs.progress[0].gone);
}

TEST_F(LongTaskTest, ShowsWhatIsDoneAndHowFarItIsFromThenOn) {
  LongTask task(dialogs, clock, "Importing");
  task.Doing("job.csv");
  Steps(task, 0, 1000, 2000);
  const auto& shown = dialogs.progress.at(0);
  EXPECT_EQ(shown.title, "Importing");
  ASSERT_TRUE(shown.appeared);
  ASSERT_FALSE(shown.steps.empty());
  EXPECT_EQ(shown.steps[0].first, "job.csv");
  EXPECT_NEAR(shown.steps[0].second, 0.15, 0.01) << "300 of 2000 steps";
  EXPECT_GT(shown.steps.back().second, 0.4);
  EXPECT_LE(shown.steps.size(), 8U) << "700 ms, and no eye follows faster than ten times a second";
}

TEST_F(LongTaskTest, SaysThatNobodyKnowsHowFarItIs) {
  LongTask task(dialogs, clock, "Importing");
  Steps(task, 0, 400, 0);
  EXPECT_LT(dialogs.progress.at(0).steps.at(0).second, 0);
}

TEST_F(LongTaskTest, LetsEventsRunEveryFewMilliseconds) {
  LongTask task(dialogs, clock, "Importing");
  for (int i = 0; i < 1000; ++i) task.Step(i, 1000);
  EXPECT_EQ(clock.yields, 0) << "no time has passed";
  Steps(task, 0, 100, 100);
  EXPECT_GE(clock.yields, 10);
  EXPECT_LE(clock.yields, 50);
}

TEST_F(LongTaskTest, LeavesItsProcedureSoonAfterCancel) {
  int done = 0;
  const bool finished = RunProcedure({dialogs, "mnuFileImportCSV_Click"}, [&](const Statements& run) {
    run([&] {
      LongTask task(dialogs, clock, "Importing");
      Steps(task, 0, 400, 2000);
      dialogs.cancelProgress = true;
      for (; done < 1000; ++done) Steps(task, 400 + done, 401 + done, 2000);
    });
  });
  EXPECT_FALSE(finished) << "and no box: the operator knows";
  EXPECT_LT(done, 10);
  EXPECT_TRUE(dialogs.progress.at(0).gone);
  EXPECT_EQ(dialogs.LongTasks(), 0);
}

TEST_F(LongTaskTest, IsCancelledAtTheEndOfTheProgram) {
  LongTask task(dialogs, clock, "Importing");
  Steps(task, 0, 100, 2000);
  dialogs.SetEnding();
  EXPECT_THROW(Steps(task, 100, 110, 2000), TaskCancelled);
  LongTask later(dialogs, clock, "Exporting");
  EXPECT_THROW(Steps(later, 0, 10, 10), TaskCancelled);
  EXPECT_EQ(dialogs.progress.size(), 1U) << "no second box";
}

TEST_F(LongTaskTest, CountsAsABoxThatStandsAndLetsSamplesGoOn) {
  const GateState sample(gate, GateState::Shut);
  {
    LongTask task(dialogs, clock, "Importing");
    EXPECT_TRUE(gate.IsOpen());
    EXPECT_EQ(dialogs.Standing(), 1);
    EXPECT_EQ(dialogs.LongTasks(), 1);
  }
  EXPECT_FALSE(gate.IsOpen());
  EXPECT_EQ(dialogs.Standing(), 0);
}

TEST_F(LongTaskTest, RunsWhatMustNotWaitForTheOperatorFirst) {
  bool ran = false;
  dialogs.beforeBox = [&] { ran = true; };
  const LongTask task(dialogs, clock, "Importing");
  EXPECT_TRUE(ran);
}

}  // namespace
}  // namespace velk
