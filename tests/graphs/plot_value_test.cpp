#include <gtest/gtest.h>

#include <limits>

#include "base/errors.h"
#include "graphs/chart_fixture.h"

namespace velk::test {

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

}  // namespace

TEST(PlotValue, DrawsALineWithPenTwoFromTheLastPointToTheNew) {
  RecordedChart c;
  c.chart.SetTimeOrigin(JobStart());
  c.Plot(10, 11, 25, 50);
  // y = 15 twips a second; x = 966 + 10000 x value / 100.
  EXPECT_EQ(c.pic2.calls, (Calls{"line 3466 150 5966 165 0000FF w2"}));
}

TEST(PlotValue, TakesTheMinuteOfThePreviousTimeAsOriginWhereThereIsNone) {
  RecordedChart c;
  c.Plot(75.25, 76.25, 0, 100);
  EXPECT_NEAR((c.chart.TimeOrigin() - JobStart()) / kSecond, 60, 1e-4);
  EXPECT_EQ(c.pic2.calls, (Calls{"line 966 228.75 10966 243.75 0000FF w2"}));
}

TEST(PlotValue, OfTheFirstPointHasNoLength) {
  RecordedChart c;
  c.chart.SetTimeOrigin(JobStart());
  c.Plot(2, 2, 40, 40);
  EXPECT_EQ(c.pic2.calls, (Calls{"line 4966 30 4966 30 0000FF w2"}));
}

TEST(PlotValue, GivesLowValuesTheRightSideOfAnInvertedScale) {
  RecordedChart c;
  c.chart.SetTimeOrigin(JobStart());
  c.chart.PlotValue(JobStart(), JobStart() + kSecond, 25, 75, 100, 0, 0, true);
  EXPECT_EQ(c.pic2.calls, (Calls{"line 8466 0 3466 15 000000 w2"}));
}

TEST(PlotValue, LeavesTheSurfaceToCutValuesBeyondTheScale) {
  RecordedChart c;
  c.chart.SetTimeOrigin(JobStart());
  c.Plot(0, 1, 90, 120);
  EXPECT_EQ(c.pic2.calls, (Calls{"line 9966 0 12966 15 0000FF w2"}));
}

TEST(PlotValue, DrawsOnlyADotBehindAGapOfFifteenSeconds) {
  RecordedChart c;
  c.chart.SetTimeOrigin(JobStart());
  c.Plot(0, 15, 10, 50);
  EXPECT_EQ(c.pic2.calls, (Calls{"circle 5966 225 3 0000FF w2"}));
}

TEST(PlotValue, DrawsALineOverFourteenSeconds) {
  RecordedChart c;
  c.chart.SetTimeOrigin(JobStart());
  c.Plot(0, 14, 10, 50);
  EXPECT_EQ(c.pic2.calls, (Calls{"line 1966 0 5966 210 0000FF w2"}));
}

TEST(IsGap, CountsBoundariesOfSecondsAndNotTheirLength) {
  const double t = JobStart();
  EXPECT_FALSE(IsGap(t + 0.1 * kSecond, t + 14.9 * kSecond));  // 14.8 s, 14 boundaries
  EXPECT_TRUE(IsGap(t + 0.9 * kSecond, t + 15.1 * kSecond));   // 14.2 s, 15 boundaries
  EXPECT_FALSE(IsGap(t, t + 13 * kSecond));
  EXPECT_TRUE(IsGap(t, t + 400));
  EXPECT_FALSE(IsGap(t + kSecond, t));
}

TEST(PlotValue, DrawsASegmentThatCrossesTheEdgeThickInBothBands) {
  RecordedChart c;
  c.chart.SetTimeOrigin(JobStart());
  c.Plot(0, 1, 90, 110, true);
  EXPECT_EQ(c.pic2.calls, (Calls{"line 9966 0 11966 15 0000FF w2",     // as it is
                                 "line -34 0 1966 15 0000FF w3",       // one range to the left
                                 "line 9966 0 11966 15 0000FF w3"}));  // its start lies below: one to the right
}

TEST(PlotValue, DrawsDotsInEachBandBehindAGap) {
  RecordedChart c;
  c.chart.SetTimeOrigin(JobStart());
  c.Plot(0, 20, 150, 150, true);
  EXPECT_EQ(c.pic2.calls, (Calls{"circle 15966 300 3 0000FF w2", "circle 5966 300 3 0000FF w3"}));
}

TEST(PlotValue, OfAnEmptyScaleRaisesDivisionByZero) {
  RecordedChart c;
  c.chart.SetTimeOrigin(JobStart());
  for (const bool wrapping : {false, true}) {
    try {
      c.chart.PlotValue(JobStart(), JobStart(), 5, 5, 5, 5, 0, wrapping);
      FAIL() << "nothing was raised";
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.Number(), ErrorNumber::DivisionByZero);
    }
  }
  EXPECT_EQ(c.pic2.calls, Calls{});
}

TEST(PlotValue, LeavesWithoutDrawingWhereAStepIsNoNumber) {
  RecordedChart c;
  const double t = JobStart(), nan = std::nan("");
  c.chart.SetTimeOrigin(t);
  c.chart.PlotValue(t, t, kNan, 5, 0, 100, 0, false);
  c.chart.PlotValue(t, t, 5, kNan, 0, 100, 0, true);
  c.chart.PlotValue(nan, t, 5, 5, 0, 100, 0, false);
  c.chart.PlotValue(t, nan, 5, 5, 0, 100, 0, false);
  c.chart.PlotValue(t, t, 5, 5, nan, 100, 0, false);
  c.chart.PlotValue(t, t, 5, 5, 0, nan, 0, true);
  EXPECT_EQ(c.pic2.calls, Calls{});
}

TEST(PlotValue, LeavesWithoutDrawingWhereAStepOverflows) {
  RecordedChart c;
  const double t = JobStart();
  const float inf = std::numeric_limits<float>::infinity();
  c.chart.SetTimeOrigin(t);
  c.chart.PlotValue(t, t, 3e38f, 3e38f, 0, 1e-3, 0, false);  // x beyond the 32-bit range
  c.chart.PlotValue(t, t, inf, inf, 0, 100, 0, true);
  c.chart.PlotValue(t, t, 5, 5, 0, 1e60, 0, false);    // a limit beyond it
  c.chart.PlotValue(t, 1e60, 5, 5, 0, 100, 0, false);  // y beyond it
  EXPECT_EQ(c.pic2.calls, Calls{});
}

TEST(PlotValue, TakesNewLimitsOfACurveForItsNewSegmentsOnly) {
  RecordedChart c;
  const double t = JobStart();
  c.chart.SetTimeOrigin(t);
  c.chart.PlotValue(t, t, 50, 50, 0, 100, 0, false);
  c.chart.PlotValue(t, t, 50, 50, 0, 200, 0, false);
  c.chart.PlotValue(t, t, 50, 50, 0, 100, 0, false);
  EXPECT_EQ(c.pic2.calls,
            (Calls{"line 5966 0 5966 0 000000 w2", "line 3466 0 3466 0 000000 w2", "line 5966 0 5966 0 000000 w2"}));
}

}  // namespace velk::test
