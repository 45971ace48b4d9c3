#include <gtest/gtest.h>

#include <cmath>

#include "base/errors.h"
#include "graphs/chart_fixture.h"

namespace velk::test {

namespace {

/// The columns of the grid, one tenth of 10000 apart.
Calls Columns(const std::string& y1, const std::string& y2) {
  Calls calls;
  for (const char* x : {"1966", "2966", "3966", "4966", "5966", "6966", "7966", "8966", "9966"})
    calls.push_back(std::string("line ") + x + " " + y1 + " " + x + " " + y2 + " C0C0C0 w1");
  return calls;
}

Calls Rows(const std::vector<std::pair<std::string, std::string>>& placesAndColours) {
  Calls calls;
  for (const auto& [y, colour] : placesAndColours)
    calls.push_back("line 966 " + y + " 10966 " + y + " " + colour + " w1");
  return calls;
}

Calls operator+(Calls a, const Calls& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

const std::string kBlack = "000000", kGrey = "C0C0C0";

}  // namespace

TEST(StripChartFrame, OfTheFirstBlockHasAxisTickColumnsAndRowsInThatOrder) {
  RecordedChart c;
  c.session.Times.GraphPageTime = JobStart();
  c.DrawBlock(0);
  EXPECT_EQ(c.pic2.calls, (Calls{"line 966 0 966 1800 000000 w1", "line 866 1800 966 1800 000000 w1"}) +
                              Columns("0", "1800") +
                              Rows({{"0", kBlack},
                                    {"300", kGrey},
                                    {"600", kGrey},
                                    {"900", kBlack},
                                    {"1200", kGrey},
                                    {"1500", kGrey},
                                    {"1800", kBlack}}));
}

TEST(StripChartFrame, PrintsTheEndOfTheBlockBesideATickOnTheAxis) {
  RecordedChart c;
  c.session.Times.GraphPageTime = JobStart();
  c.DrawBlock(0);
  // "09:32" is 500 wide and 200 high: x = 966 - 100 - 525, y = 1800 - 100.
  EXPECT_EQ(c.picture3.calls, (Calls{"line 863 1800 963 1800 000000 w1", "print 341 1700 '09:32' 000000"}));
}

TEST(StripChartFrame, TakesThePageStartFromTheBlockCutToTheMinuteWhereThereIsNone) {
  RecordedChart c;
  c.chart.Picture2_Update(JobStart() + 30.5 * kSecond, JobStart() + 90.5 * kSecond);
  EXPECT_DOUBLE_EQ(c.session.Times.GraphPageTime, JobStart());
  EXPECT_DOUBLE_EQ(c.chart.TimeOrigin(), JobStart());
  EXPECT_EQ(c.pic2.calls.front(), "line 966 457.5 966 1357.5 000000 w1");
}

TEST(StripChartFrame, FollowsThePageStartThatAnotherChartPublished) {
  RecordedChart c;
  c.session.Times.GraphPageTime = JobStart() + 60 * kSecond;
  c.DrawBlock(60);
  EXPECT_EQ(c.pic2.calls.front(), "line 966 0 966 1800 000000 w1");
  EXPECT_DOUBLE_EQ(c.chart.TimeOrigin(), JobStart() + 60 * kSecond);
}

TEST(StripChartFrame, MovesThePictureByAsMuchAsTheOriginWithTheSecondBlockOfTheDefaultSettings) {
  RecordedChart c;
  c.session.Times.GraphPageTime = JobStart();
  c.DrawBlock(0);
  c.Forget();
  c.DrawBlock(120);
  // The origin moves to 60 s: 900 twips, 60 of the 240 dots. The block lies from 900 to 2700.
  ASSERT_GE(c.pic2.calls.size(), 2u);
  EXPECT_EQ(c.pic2.calls[0], "scroll 60");
  EXPECT_EQ(c.pic2.calls[1], "line 966 900 966 2700 000000 w1");
  EXPECT_EQ(c.picture3.calls,
            (Calls{"cls", "print 341 800 '09:32' 000000",   // retained label: 120 s stand at 900, less 100
                   "print -189 1700 '14-Mar-2026' 000000",  // 966 - 1.05 x 1100, middle of 900 and 2700
                   "line 863 2700 963 2700 000000 w1", "print 341 2600 '09:34' 000000"}));
  EXPECT_DOUBLE_EQ(c.session.Times.BlockPairsPerPage, 1);
}

TEST(StripChartFrame, KeepsEachTimeBesideItsPictureFromScrollToScroll) {
  RecordedChart c;
  c.session.Times.GraphPageTime = JobStart();
  double picture = 0, origin = 0;  // twips that the picture, and the origin, have moved
  for (int block = 0; block < 12; ++block) {
    c.Forget();
    c.DrawBlock(block * 120);
    if (c.pic2.calls.front().rfind("scroll ", 0) == 0) picture += 15 * std::stod(c.pic2.calls.front().substr(7));
    origin = (c.chart.TimeOrigin() - JobStart()) / kSecond * 15;
    EXPECT_NEAR(picture, origin, 7.5 * (block + 1)) << "half a dot a scroll at most, block " << block;
  }
  // From some scrolls on that is half the page.
  EXPECT_EQ(c.pic2.calls.front(), "scroll 120");
}

TEST(StripChartFrame, TakesThePictureAwayWhereThePageHasMovedOnWithoutIt) {
  RecordedChart c;
  c.session.Times.GraphPageTime = JobStart();
  c.DrawBlock(0);
  c.Forget();
  c.session.Times.GraphPageTime = JobStart() + 100 * kSecond;  // behind a gap
  c.DrawBlock(120);
  EXPECT_EQ(c.pic2.calls[0], "scroll 100");
  EXPECT_EQ(c.pic2.calls[1], "line 966 300 966 2100 000000 w1");
  EXPECT_EQ(c.picture3.calls[0], "cls");
  c.Forget();
  c.session.Times.GraphPageTime = JobStart() + 86400 * kSecond;
  c.DrawBlock(86400);
  EXPECT_EQ(c.pic2.calls[0], "scroll 240") << "the whole page";
}

TEST(StripChartFrame, MovesTheOriginHalfWayToTheBlockAtEachScroll) {
  RecordedChart c;
  c.session.Times.GraphPageTime = JobStart();
  const double expected[] = {0, 60, 150, 255};  // (0+120)/2, (60+240)/2, (150+360)/2
  for (int block = 0; block < 4; ++block) {
    c.DrawBlock(block * 120);
    EXPECT_NEAR((c.chart.TimeOrigin() - JobStart()) / kSecond, expected[block], 1e-4) << block;
  }
}

TEST(StripChartFrame, DoesNotScrollWhileTheBlockEndsAboveTheBottom) {
  RecordedChart c(1, 3603);
  c.session.Times.GraphPageTime = JobStart();
  c.DrawBlock(0);
  c.Forget();
  c.DrawBlock(120);
  EXPECT_EQ(c.pic2.calls.front(), "line 966 1800 966 3600 000000 w1");
  EXPECT_EQ(c.picture3.calls.front(), "line 863 3600 963 3600 000000 w1");
}

TEST(StripChartFrame, RewritesALabelForEachPairOfBlocksAtAScroll) {
  RecordedChart c(1, 7200);
  c.session.Times.GraphPageTime = JobStart();
  for (int block = 0; block < 3; ++block) c.DrawBlock(block * 120);
  c.Forget();
  c.DrawBlock(360);  // ends at 7200
  EXPECT_DOUBLE_EQ(c.session.Times.BlockPairsPerPage, 2);
  ASSERT_GE(c.picture3.calls.size(), 3u);
  EXPECT_EQ(c.picture3.calls[0], "cls");
  // The origin moves to 180 s, by 2700 twips.
  EXPECT_EQ(c.picture3.calls[1], "print 341 2600 '09:36' 000000");  // 360 s stand at 2700
  EXPECT_EQ(c.picture3.calls[2], "print 341 800 '09:34' 000000");   // a block earlier
  EXPECT_EQ(c.pic2.calls.front(), "scroll 180");
}

TEST(StripChartFrame, PrintsTheDateWhenABlockCrossesMidnight) {
  RecordedChart c;
  const double midnight = DateSerial(2026, 3, 15);
  c.session.Times.GraphPageTime = midnight - 60 * kSecond;
  c.chart.Picture2_Update(midnight - 60 * kSecond, midnight + 60 * kSecond);
  // Between 0 and 1800.
  EXPECT_EQ(c.picture3.calls.back(), "print -189 800 '15-Mar-2026' 000000");
}

TEST(StripChartFrame, PrintsNoDateForABlockWithinADay) {
  RecordedChart c;
  c.session.Times.GraphPageTime = JobStart();
  c.DrawBlock(0);
  for (const std::string& call : c.picture3.calls) EXPECT_EQ(call.find("Mar"), std::string::npos) << call;
}

TEST(StripChartFrame, RaisesDivisionByZeroWithoutATimeStepAndDrawsNothing) {
  RecordedChart c;
  c.session.Times.GraphPageTime = JobStart();
  c.session.Times.GraphTimeStep = 0;
  EXPECT_THROW(c.DrawBlock(0), RuntimeError);
  EXPECT_EQ(c.pic2.calls, Calls{});
  EXPECT_EQ(c.picture3.calls, Calls{});
}

TEST(StripChartFrame, LeavesWithoutDrawingAtATimeThatIsNoNumberOrOutOfRange) {
  RecordedChart c;
  c.session.Times.GraphPageTime = JobStart();
  c.chart.Picture2_Update(JobStart(), std::nan(""));
  c.chart.Picture2_Update(JobStart(), 1e300);
  c.chart.WriteDate(std::nan(""), JobStart());
  EXPECT_EQ(c.pic2.calls, Calls{});
  EXPECT_EQ(c.picture3.calls, Calls{});
}

TEST(WriteDate, AtTheStartStandsInTheMiddleOfTheFirstBlockAndSetsTheOrigin) {
  RecordedChart c;
  c.session.Times.GraphPageTime = JobStart();
  c.chart.WriteDate(JobStart(), JobStart() + 120 * kSecond);
  EXPECT_EQ(c.picture3.calls, (Calls{"print -189 800 '14-Mar-2026' 000000"}));
  EXPECT_DOUBLE_EQ(c.chart.TimeOrigin(), JobStart());
}

TEST(RedrawFrame, DrawsTheGridOfTheWholePage) {
  RecordedChart c;
  c.chart.RedrawFrame();
  EXPECT_EQ(c.pic2.calls, (Calls{"cls", "line 966 0 966 3600 000000 w1", "line 866 1800 966 1800 000000 w1"}) +
                              Columns("0", "3600") +
                              Rows({{"0", kBlack},
                                    {"600", kGrey},
                                    {"1200", kGrey},
                                    {"1800", kBlack},
                                    {"2400", kGrey},
                                    {"3000", kGrey},
                                    {"3600", kBlack}}));
  EXPECT_DOUBLE_EQ(c.session.Times.BlockPairsPerPage, 1);
}

TEST(RedrawFrame, BeginsItsRowsAtTheTimesOfTheBlocks) {
  RecordedChart c;
  c.session.Times.GraphPageTime = JobStart();
  c.DrawBlock(0);
  c.DrawBlock(120);  // the page begins at 60 s
  c.session.Times.GraphEndTime = JobStart() + 240 * kSecond;
  c.Forget();
  c.chart.RedrawFrame();
  // Blocks begin at 120 and 240 s: 900 and 2700 twips down the page.
  EXPECT_EQ(
      Calls(c.pic2.calls.begin() + 12, c.pic2.calls.end()),
      Rows({{"300", kGrey}, {"900", kBlack}, {"1500", kGrey}, {"2100", kGrey}, {"2700", kBlack}, {"3300", kGrey}}));
}

TEST(PrintAxisAgain, PrintsWhatStandsOnTheAxisSinceTheLastScroll) {
  RecordedChart c;
  c.session.Times.GraphPageTime = JobStart();
  c.DrawBlock(0);
  c.DrawBlock(120);
  const Calls drawn(c.picture3.calls.begin() + 2, c.picture3.calls.end());
  ASSERT_EQ(drawn.front(), "cls");
  c.Forget();
  c.chart.PrintAxisAgain();
  EXPECT_EQ(c.picture3.calls, drawn);
  EXPECT_EQ(c.pic2.calls, Calls{});
}

TEST(RedrawFrame, KeepsTheBlocksFromDrawingTheirRowsUntilThePageScrolls) {
  RecordedChart c;
  c.session.Times.GraphPageTime = JobStart();
  c.chart.RedrawFrame();
  c.Forget();
  c.DrawBlock(0);
  EXPECT_EQ(c.pic2.calls.size(), 2u + 9u);
  c.Forget();
  c.DrawBlock(120);
  EXPECT_EQ(c.pic2.calls.size(), 1u + 2u + 9u + 7u);
}

TEST(RedrawFrame, DrawsNoMoreRowsThanThereAreTwips) {
  RecordedChart c(1, 3600, 1e-9);
  c.chart.RedrawFrame();
  EXPECT_LE(c.pic2.calls.size(), 3u + 9u + 3601u);
}

TEST(StripChartTargets, TakeWhatIsDrawnWhileTheVisibleSurfacesStay) {
  RecordedChart c;
  c.session.Times.GraphPageTime = JobStart();
  SurfaceRecording plot(10966, 3600), axis(963, 3600);
  c.chart.SetTargets(plot, axis);
  c.DrawBlock(0);
  c.Plot(0, 10, 20, 30);
  c.chart.WriteDate(JobStart(), JobStart() + 120 * kSecond);
  EXPECT_EQ(plot.calls.back(), "line 2966 0 3966 150 0000FF w2");
  EXPECT_EQ(axis.calls.back(), "print -189 800 '14-Mar-2026' 000000");
  EXPECT_EQ(c.pic2.calls, Calls{});
  EXPECT_EQ(c.picture3.calls, Calls{});
}

TEST(StripChartTargets, ScrollInPlaceOfTheVisibleSurfaces) {
  RecordedChart c;
  c.session.Times.GraphPageTime = JobStart();
  c.DrawBlock(0);
  SurfaceRecording plot(1, 1), axis(1, 1);
  plot.CopyFrom(c.pic2);
  axis.CopyFrom(c.picture3);
  c.chart.SetTargets(plot, axis);
  const Calls shown = c.pic2.calls, before = plot.calls;
  c.DrawBlock(120);
  EXPECT_EQ(c.pic2.calls, shown);
  EXPECT_EQ(before, shown) << "the hidden one begins as a copy";
  ASSERT_GT(plot.calls.size(), before.size());
  EXPECT_EQ(plot.calls[before.size()], "scroll 60");
}

TEST(StripChartTargets, GoBackToTheVisibleSurfaces) {
  RecordedChart c;
  SurfaceRecording plot(10966, 3600), axis(963, 3600);
  c.chart.SetTargets(plot, axis);
  c.chart.SetTargets(c.pic2, c.picture3);
  c.Plot(0, 10, 20, 30);
  EXPECT_EQ(plot.calls, Calls{});
  EXPECT_EQ(c.pic2.calls, Calls{"line 2966 0 3966 150 0000FF w2"});
}

TEST(StripChartTargets, LeaveHeaderAndFrameOfThePageToTheVisibleSurfaces) {
  RecordedChart c;
  SurfaceRecording plot(10966, 3600), axis(963, 3600);
  c.chart.SetTargets(plot, axis);
  c.chart.InitialHeader();
  c.chart.RedrawFrame();
  EXPECT_EQ(plot.calls, Calls{});
  EXPECT_FALSE(c.picture1.calls.empty());
  EXPECT_FALSE(c.pic2.calls.empty());
}

TEST(StripChartTimes, OfTwoChartsAreApartWhereEachIsGivenItsOwn) {
  RecordedChart live, other;
  live.session.Times.GraphPageTime = JobStart();
  other.session.Times.GraphPageTime = JobStart() - 3600 * kSecond;
  other.session.Times.GraphTimeStep = 10 * kSecond;
  live.DrawBlock(0);
  other.chart.Picture2_Update(JobStart() - 3600 * kSecond, JobStart() - 2400 * kSecond);
  EXPECT_DOUBLE_EQ(live.chart.TimeOrigin(), JobStart());
  EXPECT_DOUBLE_EQ(other.chart.TimeOrigin(), JobStart() - 3600 * kSecond);
  // 120 rows of ten seconds are a block as high as 120 of one.
  EXPECT_EQ(other.pic2.calls, live.pic2.calls);
}

TEST(InitialHeader, HasARowOf250ForEachCurveInItsColour) {
  RecordedChart c(2);
  c.session.CurrentParameters[2].color = 0x00FF00;
  c.session.CurrentParameters[2].name = "Rate";
  c.session.CurrentParameters[2].min = -0.5;
  c.session.CurrentParameters[2].max = 1e15;
  c.chart.InitialHeader();
  EXPECT_EQ(c.picture1.calls, (Calls{"cls", "line 966 250 10966 250 0000FF w1", "print 976 50 '0' 0000FF",
                                     "print 10566 50 '100' 0000FF",              // 10966 - 300 - 100
                                     "print 5166 50 'Pressure 1 (psi)' 0000FF",  // (10000 - 1600) / 2 + 966
                                     "line 966 500 10966 500 00FF00 w1", "print 976 300 '-0.5' 00FF00",
                                     "print 10366 300 '1E+15' 00FF00",      // 10966 - 500 - 100
                                     "print 5466 300 'Rate (psi)' 00FF00",  // (10000 - 1000) / 2 + 966
                                     "line 0 500 966 500 000000 w1", "line 10966 0 10966 650 000000 w1",
                                     "print 546 80 'Time' 000000",      // 966 - 420, 500 - 420
                                     "print 231 300 '(hh:mm)' 000000",  // 966 - 735, 500 - 200
                                     "line 966 0 966 600 000000 w1"}));
}

TEST(InitialHeader, GivesATitleTheRoomBetweenTheNumbersBeforeItIsCutAndKeepsItsUnits) {
  RecordedChart c;
  c.pic2.Resize(2966, 3600);  // 2000 for the curves
  c.session.CurrentParameters[1].name = "Давление нагнетания";
  c.chart.InitialHeader();
  // "0" ends at 110, "100" begins at 1600: 1370 beside 60 on either side, 13 characters that end at 1540.
  EXPECT_EQ(c.picture1.calls[4], "print 1206 50 'Давлен… (psi)' 0000FF");
  c.session.CurrentParameters[1].name = "Давлени";
  c.Forget();
  c.chart.InitialHeader();
  EXPECT_EQ(c.picture1.calls[4], "print 1206 50 'Давлени (psi)' 0000FF") << "whole, though not in the middle";
  c.pic2.Resize(1500, 3600);
  c.Forget();
  c.chart.InitialHeader();
  for (const std::string& call : c.picture1.calls) EXPECT_EQ(call.find("Дав"), std::string::npos) << call;
}

TEST(InitialHeader, LeavesTheUnitsWhereTheNameHasNoRoomAndNeverANameWithoutThem) {
  RecordedChart c;
  c.session.CurrentParameters[1].name = "Давление нагнетания";
  c.pic2.Resize(2200, 3600);
  c.chart.InitialHeader();
  // From 170 to 774, behind which "100" begins at 834: 500 for "(psi)", which ends at 774.
  EXPECT_EQ(c.picture1.calls[4], "print 1240 50 '(psi)' 0000FF");
  for (double width = 1500; width <= 2966; width += 50) {
    c.pic2.Resize(width, 3600);
    c.Forget();
    c.chart.InitialHeader();
    for (const std::string& call : c.picture1.calls) {
      if (call.find("Д") == std::string::npos) continue;
      EXPECT_NE(call.find(" (psi)'"), std::string::npos) << width << ": " << call;
    }
  }
}

TEST(InitialHeader, IsAsHighAsItsRows) {
  EXPECT_DOUBLE_EQ(RecordedChart(1).chart.HeaderHeight(), 250);
  EXPECT_DOUBLE_EQ(RecordedChart(8).chart.HeaderHeight(), 2000);
}

}  // namespace velk::test
