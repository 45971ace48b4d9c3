#include "wells/trajectory.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "support/raises.h"
#include "wells/literal_trajectory.h"

namespace velk {
namespace {

using Survey = std::vector<SurveyStation>;

/// Without a depth of the grid but the first and the last.
constexpr std::int16_t kWide = 32767;

WellPath PathOf(const Survey& survey, std::int16_t interval = 100) {
  return CalculateTrajectory(survey, interval);
}

std::vector<double> DepthsOf(const WellPath& path) {
  std::vector<double> depths;
  for (const PathStation& station : path.stations) depths.push_back(station.depth);
  return depths;
}

double AzimuthAt(const Survey& survey, double depth) {
  for (const PathStation& station : PathOf(survey).stations)
    if (station.depth == depth) return station.azimuth * 180 / M_PI;
  return -1;
}

struct Segment {
  const char* what;
  Survey survey;
  double tvd, east, north, radius, dogLeg;
};

/// One segment each behind the surface, worked by hand.
const Segment kSegments[] = {
    {"straight down", {{0, 0, 0}, {1000, 0, 0}}, 1000, 0, 0, 0, 0},
    // A quarter of a circle of radius 1000; the average angle takes it as a line of its length at 45 degrees.
    {"to the horizontal",
     {{0, 0, 90}, {1570.79632679490, 90, 90}},
     1000,
     1110.7207345395914,
     0,
     1000,
     5.729577951308233},
    // 30 degrees in 1000: 3 degrees in 100, a circle of 6000 / pi.
    {"dropping", {{0, 60, 0}, {1000, 30, 0}}, 699.0570277140042, 0, 707.1067811865474, 1909.8593171027442, 3},
    // As deep as it began, since it climbs as far as it has gone down.
    {"through the horizontal", {{0, 80, 180}, {100, 100, 180}}, 0, 0, -100, 286.4788975654116, 20},
    {"a turn alone", {{0, 45, 0}, {1000, 45, 90}}, 707.1067811865474, 500, 500, 0, 0},
    {"a turn across north", {{0, 30, 359}, {1000, 30, 1}}, 866.0254037844386, 0, 500, 0, 0},
    {"a turn across north the other way",
     {{0, 30, 10}, {1000, 30, 330}},
     866.0254037844386,
     -86.82408883346517,
     492.4038765061040,
     0,
     0},
    // 60 degrees of inclination, and 110 of azimuth that count by 1 - cos 60 degrees.
    {"out of the vertical goes where it ends",
     {{0, 0, 200}, {1000, 60, 90}},
     609.6215668087134,
     500,
     0,
     703.9303514016242,
     8.139410298049855},
    // The change of azimuth counts by 1 - cos of that of inclination.
    {"build and turn",
     {{0, 20, 30}, {100, 30, 50}},
     90.4740363843104,
     27.16537822741844,
     32.37443709670646,
     572.6934957968647,
     10.004615022449148},
};

TEST(Trajectory, GoesThroughOneSegmentAsWorkedByHand) {
  for (const Segment& segment : kSegments) {
    SCOPED_TRACE(segment.what);
    // The surface has its direction from the row, not from what is set to zero: two rows of depth 0 give it that.
    Survey survey = segment.survey;
    survey.insert(survey.begin(), {0, 0, 0});
    const WellPath path = PathOf(survey, kWide);
    ASSERT_EQ(path.stations.size(), 3);
    const PathStation& end = path.stations[2];
    EXPECT_NEAR(end.tvd, segment.tvd, 1e-9);
    EXPECT_NEAR(end.east, segment.east, 1e-9);
    EXPECT_NEAR(end.north, segment.north, 1e-9);
    EXPECT_NEAR(end.radius, segment.radius, 1e-9);
    EXPECT_NEAR(end.dogLeg, segment.dogLeg, 1e-9);
    EXPECT_NEAR(end.inclination, survey.back().inclination * M_PI / 180, 1e-12);
    EXPECT_NEAR(end.azimuth, survey.back().azimuth * M_PI / 180, 1e-12);
  }
}

TEST(Trajectory, AddsUpItsSegments) {
  const WellPath path = PathOf({{0, 0, 0}, {1000, 0, 0}, {1000, 45, 0}, {2000, 45, 90}}, kWide);
  ASSERT_EQ(path.stations.size(), 4);
  EXPECT_NEAR(path.stations[3].tvd, 1707.1067811865474, 1e-9);
  EXPECT_NEAR(path.stations[3].east, 500, 1e-9);
  EXPECT_NEAR(path.stations[3].north, 500, 1e-9);
}

TEST(Trajectory, TakesTheDeepestPointAsItsDepth) {
  const WellPath path = PathOf({{0, 0, 0}, {1000, 0, 0}, {1000, 180, 0}, {1400, 180, 0}}, kWide);
  EXPECT_EQ(path.maxTvd, 1000);
  EXPECT_NEAR(path.stations.back().tvd, 600, 1e-9);
}

TEST(Trajectory, HasAStationAtEachDepthOfTheGrid) {
  EXPECT_EQ(DepthsOf(PathOf({{0, 0, 0}, {300, 5, 5}})), (std::vector<double>{0, 100, 200, 300}));
  EXPECT_EQ(DepthsOf(PathOf({{0, 0, 0}, {250, 5, 5}})), (std::vector<double>{0, 100, 200, 250}));
  EXPECT_EQ(DepthsOf(PathOf({{0, 0, 0}, {50, 5, 5}})), (std::vector<double>{0, 50}));
  EXPECT_EQ(PathOf({{0, 0, 0}, {1000, 5, 5}}).stations.size(), 11);
  EXPECT_EQ(PathOf({{0, 0, 0}, {1050, 5, 5}}).stations.size(), 12);
}

TEST(Trajectory, AddsAStationForARowBetweenTwoDepthsOfTheGrid) {
  EXPECT_EQ(DepthsOf(PathOf({{0, 0, 0}, {100, 1, 1}, {150, 2, 2}, {170, 2, 2}, {300, 5, 5}})),
            (std::vector<double>{0, 100, 150, 170, 200, 300}));
}

TEST(Trajectory, OfTheSurfaceAloneIsOnePoint) {
  const WellPath path = PathOf({{0, 3, 4}});
  ASSERT_EQ(path.stations.size(), 1);
  EXPECT_EQ(path.stations[0].tvd, 0);
  EXPECT_NEAR(path.stations[0].inclination, 3 * M_PI / 180, 1e-14);
  EXPECT_EQ(path.maxTvd, 0);
}

TEST(Trajectory, TakesAnIntervalBelowOneAsAHundred) {
  for (std::int16_t interval : {std::int16_t{0}, std::int16_t{-5}}) {
    const WellPath path = CalculateTrajectory(Survey{{0, 0, 0}, {200, 0, 0}}, interval);
    EXPECT_EQ(path.stations.size(), 3);
    EXPECT_EQ(interval, 100);
  }
}

TEST(Trajectory, OfAVerticalWellStaysBelowTheSurfacePoint) {
  for (const PathStation& station : PathOf({{0, 0, 0}, {450, 0, 77}, {1000, 0, 12}}).stations) {
    EXPECT_EQ(station.tvd, station.depth);
    EXPECT_EQ(station.east, 0);
    EXPECT_EQ(station.north, 0);
    EXPECT_EQ(station.radius, 0);
    EXPECT_EQ(station.dogLeg, 0);
  }
}

TEST(Trajectory, CountsARadiusBeyondABillionThousandAsStraight) {
  // 1e-10 degrees in 100: a radius of 5.7e13.
  const WellPath straight = PathOf({{0, 0, 0}, {0, 30, 0}, {100, 30 + 1e-10, 0}}, kWide);
  EXPECT_EQ(straight.stations[2].radius, 0);
  EXPECT_EQ(straight.stations[2].dogLeg, 0);
  // 1e-8 degrees: 5.7e11.
  EXPECT_NEAR(PathOf({{0, 0, 0}, {0, 30, 0}, {100, 30 + 1e-8, 0}}, kWide).stations[2].radius, 5.73e11, 1e9);
}

TEST(Trajectory, InterpolatesTheInclinationOnALine) {
  const WellPath path = PathOf({{0, 0, 0}, {50, 10, 0}, {150, 20, 0}});
  ASSERT_EQ(path.stations[2].depth, 100);
  EXPECT_NEAR(path.stations[2].inclination, 15 * M_PI / 180, 1e-14);
}

TEST(Trajectory, InterpolatesAzimuthsByTheChordFromMoreThanADegreeOn) {
  const auto halfway = [](double from, double to) {
    return AzimuthAt({{0, 0, 0}, {50, 10, from}, {150, 10, to}}, 100);
  };
  EXPECT_NEAR(halfway(10, 10.5), 10.25, 1e-10);
  EXPECT_NEAR(halfway(10, 11), 10.5, 1e-10);
  EXPECT_NEAR(halfway(11, 10), 10.5, 1e-10);
  // asin of the mean of the sines, by quadrant.
  EXPECT_NEAR(halfway(10, 50), 28.024320673604695, 1e-10);
  EXPECT_NEAR(halfway(110, 150), 133.95820700261777, 1e-10);
  EXPECT_NEAR(halfway(200, 240), 217.15855414405155, 1e-10);
  EXPECT_NEAR(halfway(290, 330), 313.95820700261777, 1e-10);
  // Across north they lie more than a degree apart.
  EXPECT_NEAR(std::remainder(halfway(359.75, 0.25), 360), 0, 1e-10);
}

TEST(Trajectory, TakesTheNextRowsAzimuthBelowAVerticalOne) {
  EXPECT_NEAR(AzimuthAt({{0, 0, 0}, {50, 0, 10}, {150, 10, 80}}, 100), 80, 1e-10);
}

TEST(Trajectory, OverflowsPastTheLastDepthThatTheGridCanHave) {
  EXPECT_EQ(PathOf({{0, 0, 0}, {32700, 0, 0}}).stations.size(), 328);
  EXPECT_EQ(PathOf({{0, 0, 0}, {32790, 0, 0}}).stations.size(), 329);
  EXPECT_EQ(test::Raised([&] { PathOf({{0, 0, 0}, {32800, 0, 0}}); }), ErrorNumber::Overflow);
  EXPECT_EQ(test::Raised([&] { PathOf({{0, 0, 0}, {32768, 0, 0}}, 1); }), ErrorNumber::Overflow);
  EXPECT_EQ(test::Raised([&] { PathOf({{0, 0, 0}, {1e300, 0, 0}}); }), ErrorNumber::Overflow);
}

TEST(Trajectory, RaisesForMoreStationsThanCanBeCounted) {
  Survey survey{{0, 0, 0}};
  for (int i = 1; i <= 32766; ++i) survey.push_back({i * 0.0011, 0, 0});
  EXPECT_EQ(PathOf(survey).stations.size(), 32767);
  EXPECT_EQ(test::Raised([&] { PathOf(survey, 1); }), ErrorNumber::Overflow);
  survey.push_back({40, 0, 0});
  EXPECT_EQ(test::Raised([&] { PathOf(survey); }), ErrorNumber::Overflow);
}

TEST(Trajectory, RaisesWhereTheGridHasADepthAboveTwoRowsOfOneDepth) {
  EXPECT_EQ(test::Raised([&] { PathOf({{500, 0, 0}, {500, 0, 0}, {1000, 0, 0}}); }), ErrorNumber::DivisionByZero);
}

TEST(Trajectory, TakesRowsOfOneDepthAsTheyCome) {
  EXPECT_EQ(DepthsOf(PathOf({{0, 0, 0}, {50, 1, 1}, {50, 2, 2}, {120, 3, 3}, {120, 4, 4}})),
            (std::vector<double>{0, 50, 50, 100, 120}));
  EXPECT_NEAR(PathOf({{0, 0, 0}, {120, 3, 3}, {120, 4, 4}}).stations.back().inclination, 4 * M_PI / 180, 1e-14);
}

TEST(Trajectory, RaisesBetweenAzimuthsAFullTurnApart) {
  EXPECT_EQ(test::Raised([&] { PathOf({{0, 0, 0}, {50, 10, 90}, {150, 10, 450}}); }), ErrorNumber::DivisionByZero);
}

TEST(Trajectory, RaisesForAnAzimuthThatLiesBeyondTheCircle) {
  // Rows out of order: 100 lies below both, twice as far as they are apart.
  EXPECT_EQ(test::Raised([&] { PathOf({{200, 10, 10}, {150, 10, 80}}); }), ErrorNumber::InvalidArgument);
}

TEST(Trajectory, RaisesForASurveyWithoutARowOrWithoutTheSurfaceOrAboveIt) {
  EXPECT_EQ(test::Raised([&] { PathOf({}); }), ErrorNumber::SubscriptOutOfRange);
  EXPECT_EQ(test::Raised([&] { PathOf({{0, 0, 0}, {-500, 0, 0}}); }), ErrorNumber::SubscriptOutOfRange);
  EXPECT_EQ(test::Raised([&] { PathOf({{500, 1, 2}}); }), ErrorNumber::SubscriptOutOfRange) << "nothing is above it";
}

TEST(Trajectory, RaisesForNumbersThatAreNone) {
  EXPECT_EQ(test::Raised([&] { PathOf({{0, 0, 0}, {100, INFINITY, 0}}); }), ErrorNumber::Overflow);
  EXPECT_EQ(test::Raised([&] { PathOf({{0, 0, 0}, {NAN, 0, 0}, {100, 0, 0}}); }), ErrorNumber::Overflow);
}

/// Rows a foot apart in a hole that bends and turns all the way.
Survey LongSurvey(int rows) {
  Survey survey{{0, 0, 0}};
  for (int i = 1; i < rows; ++i) survey.push_back({1.0 * i, 40 + 30 * std::sin(i * 0.01), std::fmod(i * 0.3, 360)});
  return survey;
}

void ExpectSameStations(const WellPath& path, const test::LiteralTrajectory& literal) {
  const std::vector<PathStation> expected = literal.Stations();
  ASSERT_EQ(path.stations.size(), expected.size());
  EXPECT_EQ(path.maxTvd, literal.maxTvd);
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const PathStation &a = path.stations[i], &b = expected[i];
    ASSERT_EQ(a.depth, b.depth) << i;
    ASSERT_EQ(a.inclination, b.inclination) << i;
    ASSERT_EQ(a.azimuth, b.azimuth) << i;
    ASSERT_EQ(a.tvd, b.tvd) << i;
    ASSERT_EQ(a.east, b.east) << i;
    ASSERT_EQ(a.north, b.north) << i;
    ASSERT_EQ(a.radius, b.radius) << i;
    ASSERT_EQ(a.dogLeg, b.dogLeg) << i;
  }
}

TEST(Trajectory, OfALongWellIsTheSame) {
  for (const int rows : {3999, 4000, 4001, 6000}) {
    const Survey survey = LongSurvey(rows);
    ExpectSameStations(PathOf(survey, kWide), test::LiteralTrajectory(survey, kWide));
  }
}

TEST(Trajectory, RaisesWhereverAlongALongWellAChangeIsTooSmallToBeSquared) {
  for (const std::size_t row : {std::size_t{100}, std::size_t{5900}}) {
    Survey survey = LongSurvey(6000);
    survey[row - 1].inclination = 0;
    survey[row].inclination = 1e-198;
    EXPECT_EQ(test::Raised([&] { PathOf(survey, kWide); }), ErrorNumber::DivisionByZero) << row;
  }
}

TEST(Trajectory, IsWhatTheMethodGivesStepByStep) {
  std::mt19937 random(18);
  std::uniform_real_distribution<double> share(0, 1);
  for (int well = 0; well < 300; ++well) {
    Survey survey{{0, 0, 0}};
    const int rows = 1 + static_cast<int>(share(random) * 60);
    for (int i = 0; i < rows; ++i) {
      SurveyStation row = survey.back();
      // Some rows keep their inclination or azimuth, some stand on the grid, some azimuths go all around.
      row.depth = share(random) < 0.2 ? (std::floor(row.depth / 30) + 1) * 30 : row.depth + 0.1 + share(random) * 200;
      if (share(random) < 0.8) row.inclination = share(random) * 100;
      if (share(random) < 0.8) row.azimuth = share(random) * 360;
      survey.push_back(row);
    }
    ExpectSameStations(PathOf(survey, 30), test::LiteralTrajectory(survey, 30));
  }
}

TEST(MeanAzimuth, GoesTheShorterWay) {
  const auto mean = [](double a, double b) { return MeanAzimuth(a * M_PI / 180, b * M_PI / 180) * 180 / M_PI; };
  EXPECT_NEAR(mean(10, 50), 30, 1e-9);
  EXPECT_NEAR(mean(100, 150), 125, 1e-9);
  EXPECT_NEAR(mean(200, 240), 220, 1e-9);
  EXPECT_NEAR(mean(280, 340), 310, 1e-9);
  EXPECT_NEAR(mean(170, 200), 185, 1e-9);
  EXPECT_NEAR(std::sin(mean(359, 1) * M_PI / 180), 0, 1e-9);
  EXPECT_GT(std::cos(mean(359, 1) * M_PI / 180), 0.999);
  EXPECT_NEAR(mean(350, 20), 5, 1e-9);
  EXPECT_NEAR(mean(20, 350), 5, 1e-9);
  EXPECT_NEAR(mean(300, 40), 350, 1e-9);
}

TEST(MeanAzimuth, OfASineOfOneIsAQuarterButForTheStandInOfItsTangent) {
  // The root is 0 there, or so small that its tangent is beyond all: atan(100000) is 1e-5 short of a quarter.
  EXPECT_NEAR(MeanAzimuth(M_PI / 2, M_PI / 2), M_PI / 2, 1.1e-5);
  EXPECT_NEAR(MeanAzimuth(3 * M_PI / 2, 3 * M_PI / 2), 3 * M_PI / 2, 1.1e-5);
}

TEST(SegmentDogLeg, IsThatOfTheSegmentWhicheverWayTheDepthRuns) {
  const SurveyStation upper{1000, 20, 30}, lower{1100, 30, 50};
  EXPECT_NEAR(SegmentDogLeg(upper, lower), 10.004615022449148, 1e-9);
  EXPECT_NEAR(SegmentDogLeg(lower, upper), 10.004615022449148, 1e-9);
  EXPECT_NEAR(SegmentDogLeg({0, 0, 0}, {300, 9, 0}), 3, 1e-9);
}

TEST(SegmentDogLeg, IsZeroWhereNothingBends) {
  EXPECT_EQ(SegmentDogLeg({500, 10, 20}, {500, 30, 40}), 0);
  EXPECT_EQ(SegmentDogLeg({500, 10, 20}, {600, 10, 80}), 0);
  EXPECT_EQ(SegmentDogLeg({500, 10, 20}, {600, 10 + 1e-10, 20}), 0);
}

}  // namespace
}  // namespace velk
