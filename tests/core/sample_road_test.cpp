#include "core/sample_road.h"

#include <gtest/gtest.h>

#include "base/dates.h"
#include "core/rig.h"

namespace velk {
namespace {

using test::Rig;

constexpr double kSecond = 1.0 / 86400;

/// Days apart by less than a tenth of a millisecond.
#define EXPECT_SAME_TIME(a, b) EXPECT_NEAR(a, b, 1e-9)

class Road : public testing::Test {
 protected:
  Rig rig;
  test::FakeGraphWindow& graph1 = rig.graphs.windows[1];
  test::FakeGraphWindow& graph2 = rig.graphs.windows[2];
};

TEST_F(Road, DrawsASignificantSampleOnTheGraphOfEachParameter) {
  rig.ConnectAndStart();
  rig.Sample(10, 20, 30);
  ASSERT_EQ(graph1.plots.size(), 2u);
  ASSERT_EQ(graph2.plots.size(), 1u);
  EXPECT_EQ(graph1.labels[1], 10.0f);
  EXPECT_EQ(graph1.labels[2], 20.0f);
  EXPECT_EQ(graph2.labels[3], 30.0f);
  EXPECT_EQ(graph2.plots[0].value, 30.0f);
  EXPECT_EQ(graph2.plots[0].max, 100.0);
  EXPECT_EQ(rig.view.panels[4], FormatDate(rig.clock.Now(), "hh:mm:ss"));
}

TEST_F(Road, DrawsTheFirstPointOfTheProcessWithoutLengthAndLaterOnesFromTheLast) {
  rig.ConnectAndStart();
  rig.Sample(10, 20, 30);
  const double first = rig.session.SampleTime;
  EXPECT_EQ(graph2.plots[0].previousTime, first);
  EXPECT_EQ(graph2.plots[0].time, first);
  EXPECT_EQ(graph2.plots[0].previousValue, 30.0f);
  rig.Sample(11, 21, 31);
  EXPECT_EQ(graph2.plots[1].previousTime, first);
  EXPECT_EQ(graph2.plots[1].previousValue, 30.0f);
  EXPECT_EQ(graph2.plots[1].value, 31.0f);
}

TEST_F(Road, DrawsFromTheOldValueAtASecondStartOfTheSameProcess) {
  rig.ConnectAndStart();
  rig.Sample(10, 20, 30);
  rig.acquisition.mnuAcquireStop_Click();
  rig.ConnectAndStart();
  rig.Sample(50, 60, 70);
  EXPECT_EQ(graph2.plots.back().previousValue, 30.0f);
  EXPECT_EQ(graph2.plots.back().value, 70.0f);
  EXPECT_SAME_TIME(graph2.plots.back().previousTime, rig.session.StartTime);
}

TEST_F(Road, EndsAnInsignificantSampleBeforeItIsDrawn) {
  rig.ConnectAndStart();
  rig.Sample(10, 20, 30);
  const double plotted = rig.session.Times.LastPlotTime;
  const double blockEnd = rig.session.Times.GraphEndTime;
  rig.clock.Advance(400);                      // less than half a sampling interval
  rig.road.ProcessLine(rig.Line(29, 39, 49));  // moved by 19 of 100
  EXPECT_EQ(graph2.plots.size(), 1u);
  EXPECT_EQ(rig.session.Times.LastPlotTime, plotted);
  EXPECT_EQ(rig.session.Times.GraphEndTime, blockEnd);
  EXPECT_EQ(rig.session.CurrentValue[1], 29.0f) << "the value itself is taken";
  EXPECT_EQ(rig.session.PreviousValue[1], 10.0f);

  rig.clock.Advance(50);
  rig.road.ProcessLine(rig.Line(30, 39, 49));  // now one of them by 20
  EXPECT_EQ(graph2.plots.size(), 2u);
}

TEST_F(Road, LeavesInvisibleParametersOutOfTheSignificance) {
  rig.session.Parameters[1].GraphVisible = false;
  rig.ConnectAndStart();
  rig.Sample(10, 20, 30);
  rig.clock.Advance(100);
  rig.road.ProcessLine(rig.Line(90, 20, 30));
  EXPECT_EQ(graph2.plots.size(), 1u);
  EXPECT_TRUE(graph1.labels.count(1) == 0);
}

TEST_F(Road, HoldsTheLastValuesOverARejectedLineWhenTheTimeHasCome) {
  rig.ConnectAndStart();
  rig.Sample(10, 20, 30);
  rig.clock.Advance(1000);
  rig.road.ProcessLine("garbage\r\n");
  ASSERT_EQ(graph2.plots.size(), 2u);
  EXPECT_EQ(graph2.plots[1].value, 30.0f);
  EXPECT_EQ(graph2.plots[1].time, rig.session.SampleTime);
}

TEST_F(Road, DrawsAndLogsNothingUntilALineWasAcceptedSinceConnect) {
  rig.Connect();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  rig.clock.Advance(5000);
  rig.road.ProcessLine("25:00:00 1 2 3\r\n");
  EXPECT_TRUE(graph2.plots.empty());
  rig.Sample(1, 2, 3);
  EXPECT_TRUE(graph2.plots.empty()) << "its length differs from the line before";
  rig.Sample(1, 2, 3);
  EXPECT_EQ(graph2.plots.size(), 1u);
  rig.acquisition.mnuAcquireStop_Click();
  EXPECT_EQ(rig.Rows(rig.Path("job.mdb")).size(), 1u);
}

TEST_F(Road, RejectsALineWithAFieldBeyondThe32BitRange) {
  rig.ConnectAndStart();
  rig.Sample(10, 20, 30);
  rig.clock.Advance(1000);
  rig.road.ProcessLine(FormatDate(rig.clock.Now(), "hh:mm:ss") + " 00099.000 00001e+39 00099.000\r\n");
  EXPECT_EQ(graph2.plots.back().value, 30.0f);
  EXPECT_EQ(rig.session.CurrentValue[1], 10.0f);
}

TEST_F(Road, RejectsALineOfAnOwnUnitInWhichADamagedByteMakesAnotherNumber) {
  using namespace std::string_literals;
  rig.ConnectAndStart();
  rig.Sample(10, 20, 30);
  for (const std::string& field : {"0000\x07.000"s, "0012E.007"s, "0012,.000"s, "0012\0.000"s, "000012E07"s}) {
    rig.clock.Advance(1000);
    rig.road.ProcessLine(FormatDate(rig.clock.Now(), "hh:mm:ss") + " " + field + " 00020.000 00030.000\r\n");
    EXPECT_EQ(rig.session.CurrentValue[1], 10.0f) << field;
    EXPECT_EQ(rig.session.Data.lastReason.English(), "a value is no decimal number") << field;
  }
  EXPECT_EQ(rig.session.Data.rejected, 5);
  rig.Sample(40, 50, 60);
  EXPECT_EQ(rig.session.CurrentValue[1], 40.0f);
}

TEST_F(Road, CountsRejectedLinesSinceConnectAndTellsSinceWhenValuesAreHeld) {
  rig.ConnectAndStart();
  EXPECT_EQ(rig.session.Data.rejected, 0);
  rig.road.ProcessLine("garbage\r\n");
  EXPECT_EQ(rig.session.Data.rejected, 1);
  EXPECT_EQ(rig.session.Data.heldSince, 0.0) << "no values were there to hold";
  EXPECT_EQ(rig.session.Data.lastReason.English(), "the line fails its protocol's check");
  rig.Sample(10, 20, 30);  // its length differs from the line before
  rig.Sample(10, 20, 30);
  EXPECT_EQ(rig.session.Data.rejected, 2);
  rig.clock.Advance(1000);
  const double held = rig.clock.Now();
  for (int line = 0; line < 3; ++line) {
    rig.road.ProcessLine("garbage\r\n");
    EXPECT_SAME_TIME(rig.session.Data.heldSince, held);
    rig.clock.Advance(1000);
  }
  EXPECT_EQ(rig.session.Data.rejected, 5);
  rig.Sample(10, 20, 30);
  rig.Sample(10, 20, 30);
  EXPECT_EQ(rig.session.Data.heldSince, 0.0);
  rig.acquisition.mnuAcquireStop_Click();
  rig.Connect();
  EXPECT_EQ(rig.session.Data.rejected, 0);
}

TEST_F(Road, UpdatesTheBlockWithTheFirstCurveOfEachGraph) {
  rig.ConnectAndStart();
  const double start = rig.session.StartTime;
  rig.Sample(10, 20, 30);
  const double block = rig.session.SamplingRate * 120;
  ASSERT_EQ(graph1.blocks.size(), 1u);
  ASSERT_EQ(graph2.blocks.size(), 1u);
  EXPECT_EQ(graph1.blocks[0], std::make_pair(start, start + block));
  EXPECT_EQ(rig.session.Times.GraphEndTime, start + block);
  EXPECT_TRUE(graph1.scrolls.empty()) << "the scroll bar follows a recording only";
  rig.Sample(11, 21, 31);
  EXPECT_EQ(graph1.blocks.size(), 1u);
}

TEST_F(Road, MovesTheScrollBarWhileRecording) {
  rig.Connect();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  rig.Sample(10, 20, 30);
  ASSERT_EQ(graph1.scrolls.size(), 1u);
  EXPECT_EQ(graph1.scrolls[0], rig.session.StartTime + rig.session.SamplingRate * 120);
}

TEST_F(Road, ReadsThePageStartFromTheFirstOpenGraph) {
  rig.ConnectAndStart();
  graph1.origin = rig.session.StartTime + 60 * kSecond;
  graph2.origin = rig.session.StartTime + 90 * kSecond;
  rig.session.CurrentFile = rig.Path("named.mdb");  // no question at the page change
  rig.Sample(10, 20, 30);
  EXPECT_EQ(rig.session.Times.GraphPageTime, graph1.origin);
  rig.session.GraphForms[1] = nullptr;
  rig.Sample(10, 20, 30);
  EXPECT_EQ(rig.session.Times.GraphPageTime, graph2.origin);
  graph2.origin = 0;
  rig.Sample(10, 20, 30);
  EXPECT_NE(rig.session.Times.GraphPageTime, 0.0) << "0 is no page start";
}

TEST_F(Road, SkipsAClosedGraphWindow) {
  rig.ConnectAndStart();
  rig.session.GraphForms[1] = nullptr;
  rig.Sample(10, 20, 30);
  EXPECT_TRUE(graph1.plots.empty());
  EXPECT_EQ(graph2.plots.size(), 1u);
  EXPECT_EQ(rig.session.PreviousValue[1], 10.0f);
}

TEST_F(Road, YieldsBeforeAndAfterTheSample) {
  rig.ConnectAndStart();
  const int before = rig.clock.yields;
  rig.Sample(10, 20, 30);
  EXPECT_EQ(rig.clock.yields - before, 2);
}

TEST_F(Road, HasTheScreenFollowAheadOfItsLastYieldWhichPaintsIt) {
  rig.ConnectAndStart();
  std::vector<int> shownByYield;
  rig.clock.onYield = [&] { shownByYield.push_back(rig.view.dueShown); };
  const int before = rig.view.dueShown;
  rig.Sample(10, 20, 30);
  rig.clock.onYield = nullptr;
  EXPECT_EQ(shownByYield, (std::vector<int>{before, before + 1}));
}

// --- The guard ---

TEST_F(Road, SwallowsTwentyEightEventsAndLetsTheTwentyNinthOverrun) {
  rig.ConnectAndStart();
  rig.Sample(10, 20, 30);
  rig.session.SampleBusy = true;
  for (int event = 1; event <= 28; ++event) {
    rig.Sample(10, 20, 30);
    EXPECT_EQ(graph2.plots.size(), 1u) << event;
    EXPECT_EQ(rig.session.SampleSkips, event);
  }
  rig.Sample(10, 20, 30);
  EXPECT_EQ(graph2.plots.size(), 2u);
  EXPECT_EQ(rig.session.SampleSkips, 0);
  EXPECT_FALSE(rig.session.SampleBusy);
}

TEST_F(Road, SwallowsLinesWhileTheQuestionForAFileStands) {
  rig.ConnectAndStart();
  rig.Sample(10, 20, 30);
  graph1.origin = rig.session.StartTime + 120 * kSecond;
  rig.dialogs.Expect("File name not supplied, save the data now?", Answer::No, [this] {
    for (int event = 1; event <= 28; ++event) rig.Sample(10, 20, 30);
    EXPECT_EQ(graph2.plots.size(), 2u);
    rig.Sample(10, 20, 30);
    EXPECT_EQ(graph2.plots.size(), 3u) << "and the question does not come a second time";
  });
  rig.Sample(10, 20, 30);
}

TEST_F(Road, AsksForAFileOnlyOnceAtATimeHoweverManyPagesPass) {
  rig.ConnectAndStart();
  rig.Sample(10, 20, 30);
  graph1.origin = rig.session.StartTime + 120 * kSecond;
  rig.dialogs.Expect("File name not supplied, save the data now?", Answer::No, [this] {
    for (int page = 0; page < 3; ++page) {
      graph1.origin += 120 * kSecond;
      for (int event = 0; event < 40; ++event) rig.Sample(10, 20, 30);
    }
    EXPECT_EQ(rig.dialogs.shown.size(), 1u);
  });
  rig.Sample(10, 20, 30);
  EXPECT_EQ(rig.session.PageCount, 4);
}

TEST_F(Road, GivesARejectedLineOnlyTheTestOfTime) {
  rig.session.SensitivityCriterion = 0;  // each accepted line is significant
  rig.ConnectAndStart();
  rig.Sample(10, 20, 30);
  rig.clock.Advance(10);
  rig.road.ProcessLine("garbage\r\n");
  EXPECT_EQ(graph2.plots.size(), 1u);
  rig.session.Parameters[1].max = rig.session.Parameters[1].min;
  rig.road.ProcessLine("garbage again\r\n");
  EXPECT_TRUE(rig.dialogs.shown.empty());
}

TEST_F(Road, GoesOnWhenTheClockIsSetBack) {
  rig.ConnectAndStart();
  rig.Sample(10, 20, 30);
  rig.clock.SetNow(rig.clock.Now() - 1.0 / 24);
  rig.Sample(10, 20, 30);
  rig.Sample(10, 20, 30);
  EXPECT_EQ(graph2.plots.size(), 3u);
}

// --- Recording ---

TEST_F(Road, AppendsARowForEverySignificantSample) {
  rig.Connect();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  rig.Sample(10, 20, 30);
  const double now = rig.clock.Now();
  rig.clock.Advance(100);
  rig.road.ProcessLine(rig.Line(10, 20, 30));
  rig.Sample(11, 21, 31);
  rig.acquisition.mnuAcquireStop_Click();
  const auto rows = rig.Rows(rig.Path("job.mdb"));
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0].a, 10.0);
  EXPECT_EQ(rows[0].c, 30.0);
  EXPECT_EQ(rows[0].date, DatePart(now));
  EXPECT_EQ(rows[0].time, TimePart(CDate(FormatDate(now, "hh:mm:ss"))));
  EXPECT_EQ(rows[1].b, 21.0);
}

TEST_F(Road, CallsWhoFollowsItsValuesAheadOfItsRow) {
  rig.Connect();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  std::vector<std::pair<std::int64_t, double>> seen;
  rig.road.onValues = [&] {
    const LogRow* const last = rig.recorder.LastRow();
    seen.emplace_back(last ? last->key : 0, last ? last->values[0] : 0);
  };
  rig.Sample(10, 20, 30);
  rig.Sample(11, 21, 31);
  rig.clock.Advance(1000);
  rig.road.ProcessLine("garbage\r\n");
  rig.Sample(12, 22, 32);
  rig.Sample(13, 23, 33);
  // A rejected line brings no values, though it has its row: the third, and the fourth of the one that is as long as
  // none.
  EXPECT_EQ(seen, (std::vector<std::pair<std::int64_t, double>>{{0, 0}, {1, 10}, {4, 11}}));
}

TEST_F(Road, NamesTheFileByThePageCountAndKeepsTheLog) {
  rig.Connect();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  rig.Sample(10, 20, 30);
  graph1.origin = rig.session.StartTime + 120 * kSecond;
  rig.Sample(11, 20, 30);
  EXPECT_EQ(rig.session.CurrentFile, rig.Path("job.001"));
  EXPECT_EQ(rig.session.LogFileInUse, rig.Path("job.mdb"));
  EXPECT_EQ(rig.view.panels[2], "Current File: " + rig.Path("job.001"));
  EXPECT_EQ(rig.session.LastPageTime, graph1.origin);
  rig.Sample(12, 20, 30);
  EXPECT_EQ(rig.session.PageCount, 1) << "a page is counted once";
  graph1.origin += 120 * kSecond;
  rig.Sample(13, 20, 30);
  EXPECT_EQ(rig.session.CurrentFile, rig.Path("job.002"));
  rig.acquisition.mnuAcquireStop_Click();
  EXPECT_EQ(rig.Rows(rig.Path("job.mdb")).size(), 4u);
}

TEST_F(Road, BringsASampleOntoThePageBehindAGapAndCountsThePagesOfTheGap) {
  rig.Connect();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  rig.Sample(10, 20, 30);
  const std::size_t blocks = graph1.blocks.size();
  rig.clock.Advance(3'600'000);
  rig.Sample(11, 20, 30);
  EXPECT_LE(graph1.blocks.size(), blocks + 7) << "those that can stand on the page";
  EXPECT_GT(rig.session.Times.GraphEndTime, rig.session.SampleTime);
  EXPECT_LE(rig.session.Times.GraphEndTime, rig.session.SampleTime + 121 * kSecond);
  // 30 blocks of two minutes, a page with each but the first; the last six are drawn by a window that has no page.
  EXPECT_GE(rig.session.PageCount, 22);
  EXPECT_LE(rig.session.PageCount, 30);
  EXPECT_TRUE(rig.dialogs.shown.empty());
}

TEST_F(Road, ReplacesTheWholeSuffixOfAFileOfAThousandPages) {
  rig.Connect();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  rig.Sample(10, 20, 30);
  const auto nameOnNextPage = [&] {
    graph1.origin += 120 * kSecond;
    rig.Sample(11, 20, 30);
    return rig.session.CurrentFile;
  };
  graph1.origin = rig.session.StartTime;
  rig.session.PageCount = 998;
  EXPECT_EQ(nameOnNextPage(), rig.Path("job.999"));
  EXPECT_EQ(nameOnNextPage(), rig.Path("job.1000"));
  EXPECT_EQ(nameOnNextPage(), rig.Path("job.1001"));
  rig.session.PageCount = 32'766;
  rig.session.CurrentFile = rig.Path("job.32766");
  EXPECT_EQ(nameOnNextPage(), rig.Path("job.32767"));
  EXPECT_EQ(nameOnNextPage(), rig.Path("job.32767"))
      << "45 days of pages of 2 minutes: the count stands, the job goes on";
}

TEST_F(Road, AsksForAFileOnceAPageAndBeginsToRecordOnYes) {
  rig.ConnectAndStart();
  rig.Sample(10, 20, 30);
  graph1.origin = rig.session.StartTime + 120 * kSecond;
  rig.dialogs.Expect("File name not supplied, save the data now?", Answer::No);
  rig.Sample(10, 20, 30);
  EXPECT_EQ(rig.session.CurrentFile, "");
  EXPECT_EQ(rig.dialogs.shown.back().buttons, Buttons::YesNo);
  rig.Sample(10, 20, 30);

  graph1.origin += 120 * kSecond;
  rig.dialogs.Expect("File name not supplied, save the data now?", Answer::Yes);
  rig.dialogs.ExpectSaveFile(rig.Path("late.mdb"));
  rig.Sample(10, 20, 30);
  EXPECT_TRUE(rig.session.RecordToDB);
  EXPECT_EQ(rig.view.images["RecordToDB"], image::RecordOn);
  EXPECT_EQ(rig.session.LogFileInUse, rig.Path("late.mdb"));
  EXPECT_TRUE(rig.view.menuEnabled["mnuViewSummaryReport"]);
  rig.Sample(40, 50, 60);
  rig.acquisition.mnuAcquireStop_Click();
  const auto rows = rig.Rows(rig.Path("late.mdb"));
  ASSERT_EQ(rows.size(), 1u) << "the sample that asked was past its row";
  EXPECT_EQ(rows[0].a, 40.0);
}

TEST_F(Road, LeavesRecordingOffWhenNoNameIsGivenToTheQuestion) {
  rig.ConnectAndStart();
  graph1.origin = rig.session.StartTime + 120 * kSecond;
  rig.dialogs.Expect("File name not supplied, save the data now?", Answer::Yes);
  rig.dialogs.ExpectSaveFile(std::nullopt);
  rig.Sample(10, 20, 30);
  EXPECT_FALSE(rig.session.RecordToDB);
  EXPECT_EQ(rig.view.images["RecordToDB"], image::RecordOff);
}

TEST_F(Road, TurnsRecordingOffWhenItStoodOnWithoutAFile) {
  rig.ConnectAndStart();
  rig.session.RecordToDB = false;
  rig.view.images["RecordToDB"] = image::RecordOn;
  graph1.origin = rig.session.StartTime + 120 * kSecond;
  rig.dialogs.Expect("File name not supplied, save the data now?", Answer::Yes);
  rig.Sample(10, 20, 30);
  EXPECT_FALSE(rig.session.RecordToDB);
  EXPECT_FALSE(rig.log.RecordsetIsOpen());
}

// --- Failures ---

TEST_F(Road, ShowsTheBoxOfTheSampleForAnEmptyScale) {
  rig.ConnectAndStart();
  rig.session.Parameters[2].max = rig.session.Parameters[2].min;
  rig.dialogs.Expect("Division by zero - ProcessLine", Answer::Cancel);
  rig.Sample(10, 20, 30);
  EXPECT_EQ(rig.dialogs.shown.back().title, "Acquiring data ... error");
  EXPECT_EQ(rig.dialogs.shown.back().buttons, Buttons::RetryCancel);
  EXPECT_TRUE(graph2.plots.empty()) << "Cancel leaves the sample";
  EXPECT_FALSE(rig.session.SampleBusy);
}

TEST_F(Road, GoesOnAtTheFailedStatementOnRetry) {
  rig.ConnectAndStart();
  rig.session.SmoothValue[1] = 2;
  rig.session.Parameters[2].max = rig.session.Parameters[2].min;
  rig.dialogs.Expect("Division by zero", Answer::Retry, [this] { rig.session.Parameters[2].max = 100; });
  rig.Sample(10, 20, 30);
  EXPECT_EQ(graph2.plots.size(), 1u);
  EXPECT_EQ(rig.session.CurrentValue[1], 5.0f) << "the averaging ran once";
}

TEST_F(Road, AnErrorBoxCostsNoRowAndLaterSamplesGoOnBehindIt) {
  rig.Connect();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  bool failed = false;
  graph1.onPlot = [&] {
    if (std::exchange(failed, true)) return;
    rig.platform.dialogs.Message({"a box on top of the sample", {}});
  };
  rig.dialogs.Expect("a box on top of the sample", Answer::Ok, [this] {
    EXPECT_FALSE(rig.session.SampleBusy);
    rig.Sample(11, 21, 31);
    rig.Sample(12, 22, 32);
  });
  rig.Sample(10, 20, 30);
  rig.Sample(13, 23, 33);
  rig.acquisition.mnuAcquireStop_Click();
  const auto rows = rig.Rows(rig.Path("job.mdb"));
  ASSERT_EQ(rows.size(), 4u) << "one row a sample, none twice";
  for (int i = 0; i < 4; ++i) EXPECT_EQ(rows[i].a, 10.0 + i);
}

TEST_F(Road, ASampleThatStopsAtAnEmptyScaleStillGetsItsRow) {
  rig.Connect();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  rig.session.Parameters[1].max = rig.session.Parameters[1].min;
  rig.dialogs.Expect("Division by zero - ProcessLine", Answer::Cancel, [this] {
    rig.Sample(11, 21, 31);  // fails too, and shows no second box
    EXPECT_EQ(rig.dialogs.shown.size(), 1u);
  });
  rig.Sample(10, 20, 30);
  rig.session.Parameters[1].max = 100;
  rig.Sample(12, 22, 32);
  rig.acquisition.mnuAcquireStop_Click();
  const auto rows = rig.Rows(rig.Path("job.mdb"));
  ASSERT_EQ(rows.size(), 3u);
  EXPECT_EQ(rows[0].a, 10.0);
  EXPECT_EQ(rows[0].c, 30.0) << "channels behind the one that failed are there";
  EXPECT_EQ(rows[1].a, 11.0);
  EXPECT_EQ(rows[2].a, 12.0);
}

// --- Stop while a sample runs ---

TEST_F(Road, ClosesTheLogWhenStopComesFromWithinTheSample) {
  rig.Connect();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  rig.Sample(10, 20, 30);
  graph1.onPlot = [this] {
    graph1.onPlot = nullptr;
    rig.acquisition.mnuAcquireStop_Click();
    EXPECT_TRUE(rig.log.IsConnected()) << "the running sample still holds it";
  };
  rig.Sample(11, 21, 31);
  EXPECT_FALSE(rig.log.IsConnected());
  EXPECT_EQ(rig.session.CurrentStatus.english, "Ready");
  EXPECT_EQ(rig.Rows(rig.Path("job.mdb")).size(), 1u);
  EXPECT_FALSE(std::filesystem::exists(rig.Path("job.mdb-wal")));
}

TEST_F(Road, IgnoresALineThatComesBehindStop) {
  rig.ConnectAndStart();
  rig.Sample(10, 20, 30);
  rig.acquisition.mnuAcquireStop_Click();
  rig.Sample(11, 21, 31);
  EXPECT_EQ(graph2.plots.size(), 1u);
}

}  // namespace
}  // namespace velk
