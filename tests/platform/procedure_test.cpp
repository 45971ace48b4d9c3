#include "platform/dialogs/procedure.h"

#include <gtest/gtest.h>

#include "base/errors.h"
#include "support/scripted_dialogs.h"

namespace velk {
namespace {

[[noreturn]] void RaiseOverflow() {
  throw RuntimeError(ErrorNumber::Overflow);
}

class Procedure : public testing::Test {
 protected:
  Gate gate;
  test::ScriptedDialogs dialogs{gate};
  Report report{dialogs, "mnuFileExit_Click"};
};

TEST_F(Procedure, RunsItsStatementsInOrderWithoutABox) {
  std::string order;
  const bool done = RunProcedure(report, [&](auto run) {
    run([&] { order += 'a'; });
    const int value = run([] { return 7; });
    order += std::to_string(value);
  });
  EXPECT_TRUE(done);
  EXPECT_EQ(order, "a7");
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(Procedure, ShowsTheErrorTextAndItsNameWithRetryAndCancel) {
  dialogs.Expect("Overflow - mnuFileExit_Click", Answer::Cancel);
  report.title = "Acquiring data ... error";
  EXPECT_FALSE(RunProcedure(report, [](auto run) { run(RaiseOverflow); }));
  ASSERT_EQ(dialogs.shown.size(), 1U);
  EXPECT_EQ(dialogs.shown[0].text, "Overflow - mnuFileExit_Click");
  EXPECT_EQ(dialogs.shown[0].title, "Acquiring data ... error");
  EXPECT_EQ(dialogs.shown[0].buttons, Buttons::RetryCancel);
}

TEST_F(Procedure, RetryRunsTheFailedStatementAgainAndNoOther) {
  dialogs.Expect("Overflow", Answer::Retry);
  dialogs.Expect("Overflow", Answer::Retry);
  int first = 0, failing = 0, last = 0;
  const bool done = RunProcedure(report, [&](auto run) {
    run([&] { ++first; });
    const int value = run([&] {
      if (++failing < 3) RaiseOverflow();
      return failing;
    });
    EXPECT_EQ(value, 3);
    ++last;
  });
  EXPECT_TRUE(done);
  EXPECT_EQ(first, 1);
  EXPECT_EQ(failing, 3);
  EXPECT_EQ(last, 1);
}

TEST_F(Procedure, CancelLeavesIt) {
  dialogs.Expect("Overflow", Answer::Cancel);
  int later = 0;
  EXPECT_FALSE(RunProcedure(report, [&](auto run) {
    run(RaiseOverflow);
    ++later;
  }));
  EXPECT_EQ(later, 0);
}

TEST_F(Procedure, DestroysItsLocalsWhenItIsLeft) {
  dialogs.Expect("Overflow", Answer::Cancel);
  const auto local = std::make_shared<int>(1);
  RunProcedure(report, [copy = local](auto run) {
    const auto another = copy;
    run(RaiseOverflow);
  });
  EXPECT_EQ(local.use_count(), 1);
}

TEST_F(Procedure, ShowsAnErrorFromOutsideAMarkedStatementWithoutRetry) {
  dialogs.Expect("Overflow - mnuFileExit_Click", Answer::Ok);
  EXPECT_FALSE(RunProcedure(report, [](auto) { RaiseOverflow(); }));
  ASSERT_EQ(dialogs.shown.size(), 1U);
  EXPECT_EQ(dialogs.shown[0].buttons, Buttons::Ok);
}

TEST_F(Procedure, ALaterFailureOfTheSameProcedureLeavesItWithoutASecondBox) {
  int laterRuns = 0;
  dialogs.Expect("Overflow", Answer::Cancel, [&] {
    for (int i = 0; i < 400; ++i) {
      EXPECT_FALSE(RunProcedure(report, [&](auto run) {
        ++laterRuns;
        run(RaiseOverflow);
      }));
    }
    EXPECT_FALSE(RunProcedure(report, [](auto) { RaiseOverflow(); }));
  });
  RunProcedure(report, [](auto run) { run(RaiseOverflow); });
  EXPECT_EQ(laterRuns, 400);
  EXPECT_EQ(dialogs.shown.size(), 1U);
}

TEST_F(Procedure, GoesOnWithoutFailureWhileItsOwnBoxStands) {
  dialogs.Expect("Overflow", Answer::Cancel, [&] { EXPECT_TRUE(RunProcedure(report, [](auto run) { run([] {}); })); });
  RunProcedure(report, [](auto run) { run(RaiseOverflow); });
}

TEST_F(Procedure, ShowsItsBoxAgainOnceTheFirstIsGone) {
  dialogs.Expect("Overflow", Answer::Cancel);
  dialogs.Expect("Overflow", Answer::Cancel);
  RunProcedure(report, [](auto run) { run(RaiseOverflow); });
  RunProcedure(report, [](auto run) { run(RaiseOverflow); });
  EXPECT_EQ(dialogs.shown.size(), 2U);
}

TEST_F(Procedure, AnotherProcedureHasABoxOfItsOwnMeanwhile) {
  const Report other{dialogs, "Timer2_Timer"};
  dialogs.Expect(" - mnuFileExit_Click", Answer::Cancel,
                 [&] { RunProcedure(other, [](auto run) { run([] { throw std::runtime_error("no line"); }); }); });
  dialogs.Expect("no line - Timer2_Timer", Answer::Cancel);
  RunProcedure(report, [](auto run) { run(RaiseOverflow); });
}

TEST_F(Procedure, AnInnerProcedureThatIsLeftDoesNotLeaveTheOuterOne) {
  const Report inner{dialogs, "Connect"};
  dialogs.Expect(" - Connect", Answer::Cancel);
  bool reached = false;
  EXPECT_TRUE(RunProcedure(report, [&](auto run) {
    const bool done = run([&] { return RunProcedure(inner, [](auto runInner) { runInner(RaiseOverflow); }); });
    EXPECT_FALSE(done);
    reached = true;
  }));
  EXPECT_TRUE(reached);
}

TEST_F(Procedure, OpensTheGateWhileItsBoxStands) {
  const GateState sample(gate, GateState::Shut);
  dialogs.Expect("Overflow", Answer::Cancel, [&] { EXPECT_TRUE(gate.IsOpen()); });
  RunProcedure(report, [](auto run) { run(RaiseOverflow); });
  EXPECT_FALSE(gate.IsOpen());
}

TEST_F(Procedure, IsLeftWithoutABoxAtTheEndOfTheProgram) {
  dialogs.SetEnding();
  EXPECT_FALSE(RunProcedure(report, [](auto run) { run(RaiseOverflow); }));
  EXPECT_FALSE(RunProcedure(report, [](auto) { RaiseOverflow(); }));
  EXPECT_TRUE(dialogs.shown.empty());
}

class Boxes : public testing::Test {
 protected:
  Gate gate;
  test::ScriptedDialogs dialogs{gate};
};

TEST_F(Boxes, AnswerByThemselvesAtTheEndOfTheProgram) {
  dialogs.SetEnding();
  EXPECT_EQ(dialogs.Message({"?", "", Buttons::Ok}), Answer::Ok);
  EXPECT_EQ(dialogs.Message({"?", "", Buttons::YesNo}), Answer::No);
  EXPECT_EQ(dialogs.Message({"?", "", Buttons::RetryCancel}), Answer::Cancel);
  EXPECT_EQ(dialogs.Input("Name?", ""), std::nullopt);
  EXPECT_EQ(dialogs.SaveFile({}), std::nullopt);
  bool shown = false;
  dialogs.Modal([&] { shown = true; });
  EXPECT_FALSE(shown);
}

TEST_F(Boxes, OfEveryKindOpenTheGate) {
  int openings = 0;
  gate.onOpened = [&] { ++openings; };
  const GateState sample(gate, GateState::Shut);
  dialogs.Expect("Sure?", Answer::Yes);
  dialogs.ExpectInput("Name?", "Job 7");
  dialogs.ExpectSaveFile("/tmp/job.mdb");
  EXPECT_EQ(dialogs.Message({"Sure?", "", Buttons::YesNo}), Answer::Yes);
  EXPECT_EQ(dialogs.Input("Name?", "Job"), "Job 7");
  EXPECT_EQ(dialogs.SaveFile({}), "/tmp/job.mdb");
  dialogs.Modal([&] { EXPECT_TRUE(gate.IsOpen()); });
  EXPECT_EQ(openings, 4);
  EXPECT_FALSE(gate.IsOpen());
}

}  // namespace
}  // namespace velk
