#include "graphs/history_page.h"

#include <algorithm>

#include "graphs/chart_comments.h"
#include "graphs/history_fixture.h"

namespace velk::test {

namespace {

/// A page of a job on recordings; the curves have 10000 twips to themselves.
struct PageOfJob : RecordedJob {
  explicit PageOfJob(int curveCount = 1, double height = 3600) : RecordedJob(curveCount), plotHeight(height) {}

  HistoryPage& Page() {
    if (!page)
      page = std::make_unique<HistoryPage>(session, curves, ChartMeasures{plotHeight, 120, 15}, English(),
                                           ChartSurfaces{picture1, pic2, picture3});
    return *page;
  }
  bool Plot(double fromSecond, double toSecond) {
    Page().PlotOldData(open.Reader(), JobStart() + fromSecond * kSecond, JobStart() + toSecond * kSecond);
    while (!Page().IsWhole()) Page().GoOn(open.Reader());
    return Page().ReachesEnd();
  }
  /// Twenty rows a second; each curve has the seconds since the start, of 100.
  void RecordFast(int first, int last) {
    Transaction all(*log.Writing());
    for (int row = first * 20; row <= last * 20; ++row)
      Append(row / 20.0, std::vector<double>(static_cast<std::size_t>(session.NumberOfParameters), row / 20 % 100));
    all.Commit();
  }

  double plotHeight;
  ParameterCurves curves{session, 3};
  SurfaceRecording picture1{11066, 5000}, pic2{10966, plotHeight}, picture3{963, plotHeight};
  std::unique_ptr<HistoryPage> page;
};

Calls CallsWith(const Calls& calls, const std::string& begin) {
  Calls found;
  std::copy_if(calls.begin(), calls.end(), std::back_inserter(found),
               [&](const std::string& call) { return call.starts_with(begin); });
  return found;
}

}  // namespace

// --- The frame ---

TEST(HistoryFrame, HasLabelsTwoMinutesApartTheDateAndTheWholeGrid) {
  PageOfJob job;
  job.session.Times.GraphTimeStep = 10 * kSecond;  // the labels don't ask for it
  job.Page().Picture2_Update2(JobStart() + 60 * kSecond);
  // Between 35 and 3565 lie two labels 1765 apart. "09:33" is 500 wide and 200 high: x = 966 - 100 - 525.
  EXPECT_EQ(job.picture3.calls, (Calls{"cls", "print 341 1700 '09:33' 000000", "print 341 3465 '09:35' 000000",
                                       // 963 - 1.05 x 1100, 35 + 1765 / 2 - 100
                                       "print -192 817.5 '14-Mar-2026' 000000"}));
  ASSERT_EQ(job.pic2.calls.size(), 3U + 9 + 7);
  EXPECT_EQ(job.pic2.calls[0], "cls");
  EXPECT_EQ(job.pic2.calls[1], "line 966 35 966 3600 000000 w1");
  EXPECT_EQ(job.pic2.calls[2], "line 866 1800 966 1800 000000 w1");
  EXPECT_EQ(job.pic2.calls[3], "line 1966 35 1966 3600 C0C0C0 w1");
  EXPECT_EQ(job.pic2.calls[11], "line 9966 35 9966 3600 C0C0C0 w1");
  // Rows 3565 / 6 apart from 35 on, every third black.
  EXPECT_EQ(job.pic2.calls[12], "line 966 35 10966 35 000000 w1");
  EXPECT_EQ(job.pic2.calls[13], "line 966 629.167 10966 629.167 C0C0C0 w1");
  EXPECT_EQ(job.pic2.calls[15], "line 966 1817.5 10966 1817.5 000000 w1");
  EXPECT_EQ(job.pic2.calls[18], "line 966 3600 10966 3600 000000 w1");
}

TEST(HistoryFrame, TellsTheDayOfTheMinuteBehindItsStart) {
  PageOfJob job;
  job.Page().Picture2_Update2(DateSerial(2026, 3, 14) + TimeOfDay(23, 59, 0));
  EXPECT_NE(job.picture3.calls.back().find("15-Mar-2026"), std::string::npos);
}

TEST(HistoryFrame, OfAPageOfFourBlockPairsHasEightLabels) {
  PageOfJob job(1, 14400);
  job.session.Times.BlockPairsPerPage = 4;
  job.Page().Picture2_Update2(JobStart());
  const Calls labels = CallsWith(job.picture3.calls, "print 341");
  ASSERT_EQ(labels.size(), 8U);
  // 14330 / 8 = 1791.25 apart.
  EXPECT_EQ(labels[0], "print 341 1726.25 '09:32' 000000");
  EXPECT_EQ(labels[7], "print 341 14265 '09:46' 000000");
}

TEST(HistoryFrame, OfAPageOfHalfABlockPairHasOneLabelAndThreeRows) {
  PageOfJob job(1, 1800);
  job.session.Times.BlockPairsPerPage = 0.5;
  job.Page().Picture2_Update2(JobStart());
  // The one label stands at the lower edge, 1765; the date half way, 35 + 865 - 100.
  EXPECT_EQ(job.picture3.calls, (Calls{"cls", "print 341 1665 '09:32' 000000", "print -192 800 '14-Mar-2026' 000000"}));
  const Calls lines = CallsWith(job.pic2.calls, "line");
  ASSERT_EQ(lines.size(), 2U + 9 + 4);
  EXPECT_EQ(lines[0], "line 966 35 966 1800 000000 w1");
  EXPECT_EQ(lines[1], "line 866 900 966 900 000000 w1");
  EXPECT_EQ(lines[12], "line 966 623.333 10966 623.333 C0C0C0 w1");  // 1765 / 3 apart
  EXPECT_EQ(lines[14], "line 966 1800 10966 1800 000000 w1");
}

TEST(HistoryFrame, LeavesTheTimesOfTheLiveChart) {
  PageOfJob job;
  job.session.Times.GraphPageTime = JobStart() + 600 * kSecond;
  job.Page().Picture2_Update2(JobStart());
  EXPECT_EQ(job.session.Times.GraphPageTime, JobStart() + 600 * kSecond);
}

// --- Curves ---

TEST(HistoryCurves, RunFromTheFirstRowOfThePageToItsLast) {
  PageOfJob job;
  job.Record(0, 400);
  EXPECT_TRUE(job.Plot(120, 360));
  const Calls lines = CallsWith(job.pic2.calls, "line");
  ASSERT_EQ(lines.size(), 240U);
  // 120 s: value 20 of 100, x = 966 + 10000 x 0.2; y = 0 and 15.
  EXPECT_EQ(lines.front(), "line 2966 0 3066 15 0000FF w2");
  // From 359 s to 360 s, 239 and 240 rows behind the page's start.
  EXPECT_EQ(lines.back(), "line 6866 3585 6966 3600 0000FF w2");
  EXPECT_EQ(job.pic2.calls.size(), lines.size());
}

/// A log holds whole seconds: those from 0 to 240 have 4,820 rows.
TEST(HistoryCurves, OfAFastJobAreDrawnBitByBit) {
  PageOfJob job(2);
  job.RecordFast(0, 300);
  job.Page().PlotOldData(job.open.Reader(), JobStart(), JobStart() + 240 * kSecond);
  constexpr std::size_t kAtOnce = 2 * HistoryPage::kRowsAtOnce;
  EXPECT_EQ(CallsWith(job.pic2.calls, "line").size(), kAtOnce);
  EXPECT_FALSE(job.Page().IsWhole());
  job.open.Reader().Choose({});  // another chart
  job.Page().GoOn(job.open.Reader());
  EXPECT_EQ(CallsWith(job.pic2.calls, "line").size(), 2 * kAtOnce);
  EXPECT_FALSE(job.Page().IsWhole());
  job.Page().GoOn(job.open.Reader());
  EXPECT_EQ(CallsWith(job.pic2.calls, "line").size(), 2 * 4819U);
  EXPECT_TRUE(job.Page().IsWhole());
  EXPECT_TRUE(job.Page().ReachesEnd());
  EXPECT_EQ(job.pic2.calls.back(), "line 4966 3600 4966 3600 0000FF w2");
  job.Page().GoOn(job.open.Reader());
  EXPECT_EQ(CallsWith(job.pic2.calls, "line").size(), 2 * 4819U);
}

TEST(HistoryCurves, OfAPageThatIsLeftEndThere) {
  PageOfJob job;
  job.RecordFast(0, 300);
  job.Page().PlotOldData(job.open.Reader(), JobStart(), JobStart() + 240 * kSecond);
  job.Page().Leave();
  EXPECT_TRUE(job.Page().IsWhole());
  EXPECT_FALSE(job.Page().ReachesEnd());
  job.Page().GoOn(job.open.Reader());
  EXPECT_EQ(CallsWith(job.pic2.calls, "line").size(), std::size_t{HistoryPage::kRowsAtOnce});
}

TEST(HistoryCurves, OfASlowerJobStandAsManyRowsDown) {
  PageOfJob job;
  job.session.Times.GraphTimeStep = 5 * kSecond;
  for (int second = 0; second <= 1800; second += 5) job.Append(second, {50});
  job.Plot(600, 1800);  // 240 rows of 5 s
  const Calls lines = CallsWith(job.pic2.calls, "line");
  ASSERT_EQ(lines.size(), 240U);
  EXPECT_EQ(lines[0], "line 5966 0 5966 15 0000FF w2");
  EXPECT_EQ(lines[239], "line 5966 3585 5966 3600 0000FF w2");
}

TEST(HistoryCurves, OfFasterJobsStandAtTheirSeconds) {
  struct Case {
    double step;       ///< seconds
    const char* next;  ///< 15 twips a step: where the second behind the first one stands
    const char* last;  ///< the tenth
  };
  for (const Case& job : {Case{0.1, "150", "1500"}, Case{0.2, "75", "750"}, Case{1, "15", "150"}, Case{5, "3", "30"}}) {
    PageOfJob page(1, 36000);
    page.session.Times.GraphTimeStep = job.step * kSecond;
    for (const int second : {0, 1, 10}) page.Append(second, {10.0 + second});
    page.Plot(0, 60);
    EXPECT_EQ(page.pic2.calls, (Calls{std::string("line 1966 0 2066 ") + job.next + " 0000FF w2",
                                      std::string("line 2066 ") + job.next + " 2966 " + job.last + " 0000FF w2"}))
        << job.step;
  }
}

TEST(HistoryCurves, OfManyRowsASecondAreSteps) {
  PageOfJob job(1, 36000);
  job.session.Times.GraphTimeStep = 0.2 * kSecond;
  for (const double value : {10.0, 20.0, 30.0}) job.Append(0, {value});
  job.Append(1, {40});
  job.Plot(0, 60);
  EXPECT_EQ(job.pic2.calls,
            (Calls{"line 1966 0 2966 0 0000FF w2", "line 2966 0 3966 0 0000FF w2", "line 3966 0 4966 75 0000FF w2"}));
}

TEST(HistoryCurves, OfAPageOfTwiceTheHeightReachTwiceAsFar) {
  PageOfJob job(1, 7200);
  job.Record(0, 600);
  EXPECT_TRUE(job.Plot(60, 540));
  const Calls lines = CallsWith(job.pic2.calls, "line");
  ASSERT_EQ(lines.size(), 480U);
  EXPECT_EQ(lines.front(), "line 6966 0 7066 15 0000FF w2");
  EXPECT_EQ(lines.back(), "line 4866 7185 4966 7200 0000FF w2");  // 539 and 540 s: 39 and 40 of 100
}

TEST(HistoryCurves, AreMeasuredFromTheMinuteOfTheFirstRowAndNotFromThePage) {
  PageOfJob job;
  job.Append(130, {0});
  job.Append(131, {100});
  job.Plot(60, 300);
  // 09:32:10 is 10 s behind 09:32:00.
  EXPECT_EQ(job.pic2.calls, Calls{"line 966 150 10966 165 0000FF w2"});
  EXPECT_DOUBLE_EQ(job.Page().Chart().TimeOrigin(), JobStart() + 120 * kSecond);
}

TEST(HistoryCurves, LeaveADotBehindAGapOfFifteenSeconds) {
  PageOfJob job;
  job.Append(0, {10});
  job.Append(1, {10});
  job.Append(16, {20});
  job.Append(30, {30});
  job.Plot(0, 240);
  EXPECT_EQ(job.pic2.calls, (Calls{"line 1966 0 1966 15 0000FF w2", "circle 2966 240 3 0000FF w2",
                                   "line 2966 240 3966 450 0000FF w2"}));
}

TEST(HistoryCurves, WrapRoundTheirScale) {
  PageOfJob job;
  job.session.CurrentParameters[1].Wrapping = true;
  job.Append(0, {90});
  job.Append(1, {110});
  job.Plot(0, 240);
  EXPECT_EQ(job.pic2.calls, (Calls{"line 9966 0 11966 15 0000FF w2", "line -34 0 1966 15 0000FF w3",
                                   "line 9966 0 11966 15 0000FF w3"}));
}

TEST(HistoryCurves, HaveTheValuesOfTheRowsAsTheyStandWhileAJobRuns) {
  PageOfJob job;
  job.session.CurrentParameters[1].Gain = 2;
  job.session.CurrentParameters[1].Offset = 5;
  job.Append(0, {10});
  job.Append(1, {10});
  job.Plot(0, 240);
  EXPECT_EQ(job.pic2.calls, Calls{"line 1966 0 1966 15 0000FF w2"});
}

TEST(HistoryCurves, HaveGainAndOffsetOnceMoreInPlayback) {
  PageOfJob job;
  job.session.AcquisitionMode = false;
  job.session.CurrentParameters[1].Gain = 2;
  job.session.CurrentParameters[1].Offset = 5;
  job.Append(0, {10});
  job.Append(1, {10});
  job.Plot(0, 240);
  EXPECT_EQ(job.pic2.calls, Calls{"line 3466 0 3466 15 0000FF w2"});  // 10 x 2 + 5
}

TEST(HistoryCurves, OfAPlayedFileAreFoundByTheNamesOfItsColumns) {
  PageOfJob job(2);
  job.Append(0, {10, 60});
  job.Append(1, {20, 70});
  job.PlayWithColumnsTurned();
  job.Plot(0, 240);
  EXPECT_EQ(job.pic2.calls, (Calls{"line 6966 0 7966 15 0000FF w2", "line 1966 0 2966 15 0000FF w2"}));
}

TEST(HistoryCurves, OfAWindowAreItsOwn) {
  PageOfJob job(3);
  job.session.CurrentParameters[2].FormIndex = 1;
  job.session.CurrentParameters[3].color = 0x00FF00;
  BuildGraphMap(job.session, 3);
  job.Append(0, {10, 20, 30});
  job.Append(1, {10, 20, 30});
  job.Plot(0, 240);
  EXPECT_EQ(job.pic2.calls, (Calls{"line 1966 0 1966 15 0000FF w2", "line 3966 0 3966 15 00FF00 w2"}));
}

TEST(HistoryCurves, OverMidnightEndWithTheDayAndThePageSaysSo) {
  PageOfJob job;
  const double begin = DateSerial(2026, 3, 14) + TimeOfDay(23, 58, 0);
  for (int second = 0; second <= 240; ++second) job.log.AppendLogRow({begin + second * kSecond, {50}});
  job.Page().PlotOldData(job.open.Reader(), begin, begin + 240 * kSecond);
  EXPECT_EQ(CallsWith(job.pic2.calls, "line").size(), 119U);
  EXPECT_EQ(job.pic2.calls[118], "line 5966 1770 5966 1785 0000FF w2");
  EXPECT_EQ(job.pic2.calls.back(), "print 1116 1800 'What comes behind midnight is on the next page.' 70665B");
}

TEST(HistoryCurves, WithoutARowDrawNothing) {
  PageOfJob job;
  EXPECT_FALSE(job.Plot(0, 240));
  job.Record(600, 610);
  EXPECT_FALSE(job.Plot(0, 240));
  EXPECT_TRUE(job.pic2.calls.empty());
}

TEST(HistoryCurves, TellWhetherARowStoodAtTheEnd) {
  PageOfJob job;
  job.Record(0, 239);
  EXPECT_FALSE(job.Plot(0, 240));
  job.Record(240, 240);
  EXPECT_TRUE(job.Plot(0, 240));
}

// --- Computed channels ---

TEST(HistoryFormulas, AreComputedAgainFromEachRow) {
  PageOfJob job;
  job.session.CurrentParameters[1].name = "rate";
  job.Compute("{rate}*2+10");
  job.Append(0, {10});
  job.Append(1, {20});
  job.Plot(0, 240);
  EXPECT_EQ(job.pic2.calls, (Calls{"line 1966 0 2966 15 0000FF w2", "line 3966 0 5966 15 0000FF w2"}));
}

TEST(HistoryFormulas, LeanOnOtherComputedChannels) {
  PageOfJob job;
  job.session.CurrentParameters[1].name = "rate";
  job.Compute("{rate}*2");
  job.session.CurrentParameters[2].name = "double";
  job.session.CurrentParameters[2].FormIndex = 1;
  job.Compute("{double}+1");
  job.session.CurrentParameters[3].FormIndex = 3;
  BuildGraphMap(job.session, 3);
  job.Append(0, {10});
  job.Append(1, {20});
  job.Plot(0, 240);
  EXPECT_EQ(job.pic2.calls.back(), "line 3066 0 5066 15 0000FF w2");  // 21 and 41
}

TEST(HistoryFormulas, BeginTheirStatisticsWithThePageAndLeaveTheLiveOnes) {
  PageOfJob job;
  job.session.CurrentParameters[1].name = "rate";
  job.Compute("avg({rate})");
  job.session.AdditionalParameters[1].AverageCount = 7;
  job.session.AdditionalParameters[1].AverageSum = 700;
  job.session.CurrentValue[1] = 44;
  job.session.CurrentValue[2] = 55;
  job.Append(0, {99});
  job.Append(60, {10});
  job.Append(61, {20});
  job.Append(62, {60});
  job.Plot(60, 300);
  const Calls lines = CallsWith(job.pic2.calls, "line");
  ASSERT_EQ(lines.size(), 4U);
  EXPECT_EQ(lines[1], "line 1966 0 2466 15 0000FF w2");   // 10, then 15
  EXPECT_EQ(lines[3], "line 2466 15 3966 30 0000FF w2");  // 15, then 30
  EXPECT_EQ(job.session.AdditionalParameters[1].AverageCount, 7);
  EXPECT_EQ(job.session.AdditionalParameters[1].AverageSum, 700);
  EXPECT_EQ(job.session.CurrentValue[1], 44);
  EXPECT_EQ(job.session.CurrentValue[2], 55);
}

TEST(HistoryFormulas, LeaveTheCurveOpenWhereTheyFail) {
  PageOfJob job;
  job.session.CurrentParameters[1].name = "rate";
  job.session.CurrentParameters[1].FormIndex = 1;
  job.Compute("10/{rate}");
  job.session.CurrentParameters[2].FormIndex = 3;
  BuildGraphMap(job.session, 2);
  int second = 0;
  for (const double value : {1.0, 1.0, 0.0, 1.0, 1.0}) job.Append(second++, {value});
  job.Plot(0, 240);
  EXPECT_EQ(job.pic2.calls, (Calls{"line 1966 0 1966 15 0000FF w2", "line 1966 45 1966 60 0000FF w2"}));
}

TEST(HistoryFormulas, ThatADecoderFillsHaveNoHistory) {
  PageOfJob job;
  job.Compute(kLinkedParameter);
  job.Append(0, {10});
  job.Append(1, {10});
  job.Plot(0, 240);
  EXPECT_EQ(job.pic2.calls, Calls{"line 1966 0 1966 15 0000FF w2"});
}

// --- The live page again ---

TEST(RepaintedCurves, StandWhereTheyWereDrawnLive) {
  PageOfJob job;
  job.Record(0, 200);
  // The live page begins 7.5 s behind a whole minute, as half-page scrolls leave it.
  const double origin = JobStart() + 127.5 * kSecond;
  job.Page().ReplotFromLog(job.open.Reader(), origin, JobStart() + 190 * kSecond, origin);
  const Calls lines = CallsWith(job.pic2.calls, "line");
  // From 09:32:00 on, and one row beyond the last sample: 120 to 191 s.
  ASSERT_EQ(lines.size(), 71U);
  EXPECT_EQ(lines[8], "line 3766 7.5 3866 22.5 0000FF w2");  // 128 s to 129 s: half a row down the page
}

TEST(RepaintedCurves, OverMidnightEndWithTheDayAndThePageSaysSo) {
  PageOfJob job;
  const double begin = DateSerial(2026, 3, 14) + TimeOfDay(23, 58, 0);
  for (int second = 0; second <= 240; ++second) job.log.AppendLogRow({begin + second * kSecond, {50}});
  // A minute of the page stands above its first row.
  job.Page().ReplotFromLog(job.open.Reader(), begin, begin + 200 * kSecond, begin - 60 * kSecond);
  const Calls lines = CallsWith(job.pic2.calls, "line");
  ASSERT_EQ(lines.size(), 119U);
  EXPECT_EQ(lines.front(), "line 5966 900 5966 915 0000FF w2");
  EXPECT_EQ(lines.back(), "line 5966 2670 5966 2685 0000FF w2");
  EXPECT_EQ(job.pic2.calls.back(), "print 1116 2700 'What comes behind midnight is on the next page.' 70665B");
}

// --- Comments ---

TEST(ChartComments, StandAtTheRightEdgeAtTheirTime) {
  PageOfJob job;
  job.Record(0, 300);
  job.Comment(90, "Pump on");
  job.Plot(60, 300);
  job.pic2.calls.clear();
  const double to = JobStart() + 300 * kSecond;
  InsertComments(job.pic2, job.Page().Chart(), job.open.Comments(CommentsOfPage(JobStart() + 60 * kSecond, to)), to);
  // 30 rows down; 700 wide: x = 10966 - 770, y = 450 - 100.
  EXPECT_EQ(job.pic2.calls, Calls{"print 10196 350 'Pump on' 000000"});
}

TEST(ChartComments, AreCutOnTheChartAndNotInTheReport) {
  PageOfJob job;
  std::string comment(200, 'x');
  job.Comment(0, comment);
  job.Page().Picture2_Update2(JobStart());
  job.pic2.calls.clear();
  InsertComments(job.pic2, job.Page().Chart(), job.open.Comments({}), JobStart() + 240 * kSecond);
  // 1.1 x 99 x 100 = 10890 fit into 10966.
  EXPECT_EQ(job.pic2.calls, Calls{"print 76 -100 '" + std::string(99, 'x') + "' 000000"});
  EXPECT_EQ(job.open.Comments({}).at(0).text, comment);
}

TEST(ChartComments, EndWithTheFirstOneBeyondThePage) {
  PageOfJob job;
  job.Comment(10, "a");
  job.Comment(400, "b");
  job.Comment(20, "c");
  job.Page().Picture2_Update2(JobStart());
  job.pic2.calls.clear();
  InsertComments(job.pic2, job.Page().Chart(), job.open.Comments(CommentsFrom(JobStart())), JobStart() + 240 * kSecond);
  EXPECT_EQ(job.pic2.calls, Calls{"print 10856 50 'a' 000000"});
}

TEST(ChartComments, AreOneLineEach) {
  PageOfJob job;
  job.Comment(0, "two\nlines");
  job.Page().Picture2_Update2(JobStart());
  job.pic2.calls.clear();
  InsertComments(job.pic2, job.Page().Chart(), job.open.Comments({}), JobStart() + 240 * kSecond);
  EXPECT_EQ(job.pic2.calls, Calls{"print 9976 -100 'two lines' 000000"});
}

TEST(ChartComments, ThatWereJustEnteredStandAtThePresentWithinTheCurves) {
  RecordedChart c;
  c.chart.SetTimeOrigin(JobStart());
  PrintTheComment(c.chart, "Pump on", JobStart() + 100 * kSecond);
  EXPECT_EQ(c.pic2.calls, Calls{"print 10196 1500 'Pump on' 000000"});
  c.Forget();
  // 10000 twips between axis and edge hold 90 characters: 1.1 x 9000 = 9900.
  PrintTheComment(c.chart, std::string(95, 'x'), JobStart());
  EXPECT_EQ(c.pic2.calls, Calls{"print 1066 0 '" + std::string(90, 'x') + "' 000000"});
}

}  // namespace velk::test
