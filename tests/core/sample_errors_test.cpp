#include "core/sample_errors.h"

#include <gtest/gtest.h>

#include "core/rig.h"

namespace velk {
namespace {

struct SampleFaults : testing::Test {
  test::Rig rig;
};

TEST_F(SampleFaults, AnErrorThatWasCancelledComesAgainForItsChannelAfterTenSecondsAndRowsGoOn) {
  rig.Connect();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  rig.session.Parameters[2].max = rig.session.Parameters[2].min;  // a scale without length
  rig.dialogs.Expect("Division by zero", Answer::Cancel);
  rig.Sample(1, 2, 3);
  EXPECT_EQ(rig.session.Data.failure.English(), "Division by zero (Channel 2)");
  for (int second = 1; second <= 9; ++second) rig.Sample(1, 2, 3);
  EXPECT_EQ(rig.dialogs.shown.size(), 1U);
  EXPECT_EQ(rig.session.Data.rows, 10) << "a row each sample";
  rig.dialogs.Expect("Division by zero", Answer::Cancel);
  rig.Sample(1, 2, 3);
  EXPECT_EQ(rig.dialogs.shown.size(), 2U) << "ten seconds are over";
  rig.session.Parameters[2].max = 100;
  rig.Sample(1, 2, 3);
  EXPECT_EQ(rig.session.Data.failure.English(), "");
}

TEST_F(SampleFaults, TheSameErrorOfAnotherChannelHasItsOwnBox) {
  rig.ConnectAndStart();
  rig.session.Parameters[2].max = rig.session.Parameters[2].min;
  rig.dialogs.Expect("Division by zero", Answer::Cancel);
  rig.Sample(1, 2, 3);
  rig.session.Parameters[2].max = 100;
  rig.session.Parameters[3].max = rig.session.Parameters[3].min;
  rig.dialogs.Expect("Division by zero", Answer::Cancel);
  rig.Sample(1, 2, 3);
  EXPECT_EQ(rig.session.Data.failure.English(), "Division by zero (Channel 3)");
}

TEST_F(SampleFaults, NamesAFaultThatHasEndedNoMoreWhenTheScreenFollows) {
  rig.ConnectAndStart();
  rig.session.Data.failure = "Division by zero";
  std::string atLastYield;
  rig.clock.onYield = [&] { atLastYield = rig.session.Data.failure.English(); };
  rig.Sample(10, 20, 30);
  rig.clock.onYield = nullptr;
  EXPECT_EQ(atLastYield, "");
}

TEST_F(SampleFaults, NamesAFaultNoMoreBehindASampleThatItsSourceLeaves) {
  rig.ConnectAndStart();
  rig.session.Data.failure = "Division by zero";
  rig.road.Sample(rig.road.ReportOf("Timer1_Timer"), [](const Statements&) { return Values::Left; });
  EXPECT_EQ(rig.session.Data.failure.English(), "");
}

TEST_F(SampleFaults, NamesTheFaultThatHasEndedASample) {
  rig.ConnectAndStart();
  const Report report = rig.road.ReportOf("Timer1_Timer");
  const auto fail = [] { throw RuntimeError(ErrorNumber::DivisionByZero); };
  rig.dialogs.Expect("Division by zero", Answer::Cancel);
  rig.road.Sample(report, [&](const Statements& run) {
    run(fail);
    return Values::Taken;
  });
  EXPECT_EQ(rig.session.Data.failure.English(), "Division by zero");
  rig.session.Data.failure = {};
  rig.road.Sample(report, [&](const Statements& run) {
    run(fail);
    return Values::Taken;
  });
  EXPECT_EQ(rig.session.Data.failure.English(), "Division by zero") << "while its box stays away";
  rig.session.Data.failure = {};
  rig.dialogs.Expect("Type mismatch", Answer::Ok);
  rig.road.Sample(report, [](const Statements&) -> Values { throw RuntimeError(ErrorNumber::TypeMismatch); });
  EXPECT_EQ(rig.session.Data.failure.English(), "Type mismatch") << "outside a statement";
}

}  // namespace
}  // namespace velk
