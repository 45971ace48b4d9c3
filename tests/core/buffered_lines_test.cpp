// Lines that an instrument has buffered.

#include <gtest/gtest.h>

#include "base/dates.h"
#include "core/polled.h"
#include "instruments/table/protocols.h"

namespace velk {
namespace {

using test::Polled;

TEST_F(Polled, RunsASampleForEachBufferedLineUnderItsOwnTime) {
  Use(protocol::Intermittent, ",", "\n");
  rig.acquisition.mnuAcquireConnect_Click();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  EXPECT_EQ(rig.plainPort.openings.back().handshake, Handshake::XonXoff);
  rig.plainPort.Receive(
      "12-Mar-2026 06:07:30,1,2,3\n"
      "no date,7,8,9\n"
      "12-Mar-2026 06:07:31,4,5,6\n");
  ASSERT_EQ(graph2.plots.size(), 2u);
  const double first = DateSerial(2026, 3, 12) + TimeOfDay(6, 7, 30);
  EXPECT_EQ(rig.session.StartTime, DateSerial(2026, 3, 12) + TimeOfDay(6, 7, 0));
  EXPECT_EQ(graph2.plots[0].time, first);
  EXPECT_EQ(rig.view.panels[4], "12-Mar-2026 06:07:31");
  rig.acquisition.mnuAcquireStop_Click();
  const auto rows = rig.Rows(rig.Path("job.mdb"));
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0].date, DateSerial(2026, 3, 12));
  EXPECT_EQ(rows[0].time, TimeOfDay(6, 7, 30));
  EXPECT_EQ(rows[1].c, 6.0);
}

TEST_F(Polled, TheFirstAcceptedLineOfAJobBeginsTheTimeAxisAtItsMinute) {
  Use(protocol::Intermittent, ",", "\n");
  ConnectAndStart();
  const double started = rig.session.StartTime;
  rig.plainPort.Receive("no date,1,2,3\n");
  EXPECT_EQ(rig.session.StartTime, started);
  rig.plainPort.Receive("no date,1,2,3\n12-Mar-2026 06:07:31,4,5,6\n");
  const double minute = DateSerial(2026, 3, 12) + TimeOfDay(6, 7, 0);
  EXPECT_EQ(rig.session.StartTime, minute);
  ASSERT_EQ(graph2.blocks.size(), 1u);
  EXPECT_EQ(graph2.blocks[0].first, minute);
}

TEST_F(Polled, ALaterBurstGoesOnFromTheLineBefore) {
  Use(protocol::Intermittent, ",", "\n");
  ConnectAndStart();
  rig.plainPort.Receive("12-Mar-2026 06:07:30,1,2,3\n12-Mar-2026 06:07:31,4,5,6\n");
  rig.plainPort.Receive("12-Mar-2026 06:09:42,7,8,9\n");
  const double minute = DateSerial(2026, 3, 12) + TimeOfDay(6, 7, 0);
  EXPECT_EQ(rig.session.StartTime, minute);
  ASSERT_EQ(graph2.plots.size(), 3u);
  EXPECT_EQ(graph2.plots[2].previousTime, DateSerial(2026, 3, 12) + TimeOfDay(6, 7, 31));
  ASSERT_EQ(graph2.blocks.size(), 2u);
  EXPECT_NEAR(graph2.blocks[1].first, minute + TimeOfDay(0, 2, 0), 1e-9) << "120 samples of a second behind the first";
}

TEST_F(Polled, SingleLinesOfALaterPageTurnIt) {
  Use(protocol::Intermittent, ",", "\n");
  ConnectAndStart();
  rig.session.CurrentFile = rig.Path("named.mdb");  // no question at the page change
  test::FakeGraphWindow& graph1 = rig.graphs.windows[1];
  rig.plainPort.Receive("12-Mar-2026 06:07:30,1,2,3\n");
  EXPECT_EQ(rig.session.PageCount, 0);
  graph1.origin = rig.session.StartTime + TimeOfDay(0, 2, 0);
  rig.plainPort.Receive("12-Mar-2026 06:10:30,1,2,3\n");
  EXPECT_EQ(rig.session.PageCount, 1);
  rig.plainPort.Receive("12-Mar-2026 06:11:30,1,2,3\n");
  EXPECT_EQ(rig.session.PageCount, 1) << "it is a line of the same page";
  EXPECT_EQ(rig.session.LastPageTime, graph1.origin);
}

TEST_F(Polled, ATimeAxisBeginsAnewWhereTheUnitsTimeRunsBackwards) {
  Use(protocol::Intermittent, ",", "\n");
  ConnectAndStart();
  rig.plainPort.Receive("12-Mar-2026 06:07:30,1,2,3\n12-Mar-2026 06:07:31,1,2,3\n");
  rig.plainPort.Receive("12-Mar-2026 05:07:32,4,5,6\n12-Mar-2026 05:08:33,4,5,6\n");
  const double minute = DateSerial(2026, 3, 12) + TimeOfDay(5, 7, 0);
  EXPECT_EQ(rig.session.StartTime, minute);
  ASSERT_EQ(graph2.plots.size(), 4u);
  EXPECT_EQ(graph2.plots[2].previousTime, minute);
  EXPECT_EQ(graph2.plots[3].previousTime, DateSerial(2026, 3, 12) + TimeOfDay(5, 7, 32));
}

TEST_F(Polled, APauseDoesNotBeginTheTimeAxisAnewButTheNextJobDoes) {
  Use(protocol::Intermittent, ",", "\n");
  ConnectAndStart();
  rig.plainPort.Receive("12-Mar-2026 06:07:30,1,2,3\n");
  const double minute = rig.session.StartTime;
  rig.acquisition.mnuAcquireStart_Click();
  ASSERT_EQ(rig.session.CurrentStatus.english, "Acquiring Paused");
  rig.acquisition.mnuAcquireStart_Click();
  rig.plainPort.Receive("12-Mar-2026 06:20:30,1,2,3\n");
  EXPECT_EQ(rig.session.StartTime, minute);
  rig.acquisition.mnuAcquireStop_Click();
  ConnectAndStart();
  rig.plainPort.Receive("12-Mar-2026 06:30:30,1,2,3\n");
  EXPECT_EQ(rig.session.StartTime, DateSerial(2026, 3, 12) + TimeOfDay(6, 30, 0));
}

TEST_F(Polled, BufferedLinesThatAreRejectedAreCounted) {
  Use(protocol::Intermittent, ",", "\n");
  ConnectAndStart();
  rig.plainPort.Receive("31.02.2026 06:07:30,1,2,3\n");
  EXPECT_EQ(rig.session.Data.lastReason.English(), "the line does not begin with a date");
  rig.plainPort.Receive("12.03.2026 06:07:30,1,2\n");
  EXPECT_EQ(rig.session.Data.lastReason.English(), "the line ends ahead of its last value");
  rig.plainPort.Receive("12.03.2026 06:07:30,1,2,1e39\n");
  EXPECT_EQ(rig.session.Data.lastReason.English(), "a value is beyond the 32-bit range");
  EXPECT_EQ(rig.session.Data.rejected, 3);
  EXPECT_EQ(rig.session.Data.heldSince, 0.0) << "a line without a time of its own makes no row";
}

TEST_F(Polled, ComputesChannelsOfBufferedLinesAndLeavesLinkedOnesAlone) {
  Use(protocol::Intermittent, ",", "\n");
  rig.session.NumberOfFormulae = 2;
  for (const char* formula : {"{channel 1}+{channel 3}", "Linked Parameter"}) {
    rig.session.Formula.push_back(formula);
    Parameter computed;
    computed.name = formula;
    computed.max = 100;
    computed.FormIndex = 2;
    computed.GraphVisible = true;
    rig.session.AdditionalParameters.push_back(computed);
  }
  ConnectAndStart();
  rig.session.CurrentValue[5] = 55;
  rig.plainPort.Receive("12-Mar-2026 06:07:30,1,2,3\n12-Mar-2026 06:07:31,4,5,6\n");
  EXPECT_EQ(rig.session.CurrentValue[4], 10.0f);
  EXPECT_EQ(rig.session.CurrentValue[5], 55.0f) << "a linked channel is filled elsewhere";
}

TEST_F(Polled, AnUnpluggedBufferingInstrumentIsToldAndReadAgainWhenItIsBack) {
  Use(protocol::Intermittent, ",", "\n");
  ConnectAndStart();
  rig.plainPort.Receive("12-Mar-2026 06:07:30,1,2,3\n12-Mar-2026 06:");
  ASSERT_EQ(graph2.plots.size(), 1u);
  rig.plainPort.HangUp();
  rig.plainPort.Vanish();
  rig.dialogs.Expect("there is no such serial device", Answer::Ok);
  rig.clock.Advance(8000);
  rig.plainPort.ComeBack();
  rig.clock.Advance(2000);
  ASSERT_TRUE(rig.plainPort.open);
  EXPECT_EQ(rig.plainPort.openings.back().handshake, Handshake::XonXoff);
  rig.plainPort.Receive("07:31,4,5,6\n12-Mar-2026 06:08:30,7,8,9\n");
  EXPECT_EQ(graph2.plots.size(), 2u) << "the line that was cut is dropped, the next one is taken";
  EXPECT_EQ(rig.session.CurrentValue[3], 9.0f);
}

TEST_F(Polled, AFaultOfABufferedLineIsToldWithTheNameOfItsProcedure) {
  Use(protocol::Intermittent, ",", "\n");
  rig.session.Parameters[2].Gain = 1e300;
  ConnectAndStart();
  rig.dialogs.Expect(" - IntermittentDataAnalysis", Answer::Cancel);
  rig.plainPort.Receive("12-Mar-2026 06:07:30,1,2,3\n");
  EXPECT_TRUE(graph2.plots.empty());
}

TEST_F(Polled, LinesThatComeWhileABoxStandsAreTakenWhenItIsLeft) {
  Use(protocol::Intermittent, ",", "\n");
  rig.session.Parameters[2].Gain = 1e300;
  ConnectAndStart();
  rig.dialogs.Expect(" - IntermittentDataAnalysis", Answer::Retry, [this] {
    rig.plainPort.Receive("12-Mar-2026 06:07:32,7,8,9\n");
    EXPECT_EQ(rig.plainPort.waiting, "") << "a port that nobody reads loses what comes";
    rig.session.Parameters[2].Gain = 1;
  });
  rig.plainPort.Receive("12-Mar-2026 06:07:30,1,2,3\n12-Mar-2026 06:07:31,4,5,6\n");
  ASSERT_EQ(graph2.plots.size(), 3u);
  EXPECT_EQ(rig.session.CurrentValue[3], 9.0f);
}

TEST_F(Polled, ABufferingInstrumentThatReturnsWhileABoxStandsOnALineIsReadOnBehindIt) {
  Use(protocol::Intermittent, ",", "\n");
  rig.session.Parameters[2].Gain = 1e300;
  ConnectAndStart();
  rig.dialogs.Expect(" - IntermittentDataAnalysis", Answer::Retry, [this] {
    rig.plainPort.Receive("12-Mar-2026 06:07:31,1,2,3\n12-Mar-2026 06:0");
    rig.plainPort.HangUp();
    rig.clock.Advance(5000);
    ASSERT_TRUE(rig.plainPort.open) << "a box may stand for the night";
    rig.plainPort.Receive("7:32,9,9,9\n12-Mar-2026 06:07:33,7,8,9\n");
    rig.session.Parameters[2].Gain = 1;
  });
  rig.plainPort.Receive("12-Mar-2026 06:07:30,1,2,3\n");
  EXPECT_EQ(graph2.plots.size(), 3u) << "the line that was cut is dropped, what came whole on either side of it is not";
  EXPECT_EQ(rig.session.CurrentValue[3], 9.0f);
}

TEST_F(Polled, ADeviceThatVanishesAgainAfterDataIsToldAgain) {
  Use(protocol::Intermittent, ",", "\n");
  ConnectAndStart();
  for (int i = 1; i <= 2; ++i) {
    rig.plainPort.Receive("12-Mar-2026 06:07:30,1,2,3\n");
    rig.dialogs.Expect("there is no such serial device", Answer::Ok);
    rig.plainPort.Vanish();
    rig.plainPort.HangUp();
    rig.clock.Advance(3000);
    rig.plainPort.ComeBack();
    rig.clock.Advance(1500);
  }
  rig.plainPort.Vanish();
  rig.plainPort.HangUp();
  rig.clock.Advance(3000);
  EXPECT_EQ(rig.dialogs.shown.size(), 2u) << "without data in between it is the same failure";
}

TEST_F(Polled, DropsBufferedLinesOutsideOfAJob) {
  Use(protocol::Intermittent, ",", "\n");
  rig.acquisition.mnuAcquireConnect_Click();
  rig.plainPort.Receive("12-Mar-2026 06:07:30,1,2,3\n");
  EXPECT_TRUE(graph2.plots.empty());
}

}  // namespace
}  // namespace velk
