#include "graphs/wrapping.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace velk::test {

namespace {

struct Drawn {
  double previous, value;
  int penWidth;
  bool operator==(const Drawn&) const = default;
};

void PrintTo(const Drawn& d, std::ostream* out) {
  *out << d.previous << ".." << d.value << " w" << d.penWidth;
}

std::vector<Drawn> Passes(float previous, float value, Scale scale, bool wrapping) {
  std::vector<Drawn> drawn;
  WrappingPasses passes(previous, value, scale, wrapping);
  for (WrappingPass pass; passes.Next(pass);) drawn.push_back({pass.previous, pass.value, pass.penWidth});
  return drawn;
}

using List = std::vector<Drawn>;
constexpr Scale kPercent{0, 100};

}  // namespace

TEST(Wrapping, DrawsASegmentWithinTheScaleOnce) {
  EXPECT_EQ(Passes(0, 100, kPercent, true), (List{{0, 100, 2}}));
}

TEST(Wrapping, DrawsOnceWhereTheCurveDoesNotWrap) {
  EXPECT_EQ(Passes(150, -50, kPercent, false), (List{{150, -50, 2}}));
}

TEST(Wrapping, MovesAValueAboveTheScaleDownByRanges) {
  EXPECT_EQ(Passes(250, 260, kPercent, true), (List{{250, 260, 2}, {150, 160, 3}, {50, 60, 3}}));
}

TEST(Wrapping, MovesAValueBelowTheScaleUpByRanges) {
  EXPECT_EQ(Passes(-150, -160, kPercent, true), (List{{-150, -160, 2}, {-50, -60, 3}, {50, 40, 3}}));
}

TEST(Wrapping, GoesDownFirstAndThenUpWhenBothEdgesAreCrossed) {
  EXPECT_EQ(Passes(-10, 110, kPercent, true), (List{{-10, 110, 2}, {-110, 10, 3}, {-10, 110, 3}, {90, 210, 3}}));
}

TEST(Wrapping, CountsFromAScaleThatDoesNotBeginAtZero) {
  EXPECT_EQ(Passes(31, 32, {10, 30}, true), (List{{31, 32, 2}, {11, 12, 3}}));
}

TEST(Wrapping, LeavesAValueThatComesToLieOnALimitThere) {
  // In 32 bits 1.2 less the range of 6.1 would be a hair below -4.9, and be drawn once more above.
  const Scale scale{-4.9f, 1.2f};
  const auto passes = Passes(2.0f, 1.2f, scale, true);
  ASSERT_EQ(passes.size(), 2u);
  EXPECT_EQ(passes[1].value, static_cast<double>(-4.9f));
}

TEST(Wrapping, EndsAtOnceOnAScaleThatIsInvertedEmptyOrNoNumber) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  for (const Scale scale : {Scale{100, 0}, Scale{5, 5}, Scale{nan, 100}, Scale{0, nan}})
    EXPECT_EQ(Passes(150, 160, scale, true), (List{{150, 160, 2}}));
}

TEST(Wrapping, EndsAfterAThousandRounds) {
  EXPECT_EQ(Passes(5000, 5000, {0, 1}, true).size(), 1001u);
  EXPECT_EQ(Passes(-5000, -5000, {0, 1}, true).size(), 1001u);
  EXPECT_EQ(Passes(5000, 5000, {0, 1}, true).back(), (Drawn{4000, 4000, 3}));
}

TEST(Wrapping, EndsWhenTakingOffTheRangeNoLongerChangesTheValue) {
  EXPECT_EQ(Passes(1e9f, 1e9f, {0, 1}, true), (List{{1e9, 1e9, 2}}));
  EXPECT_EQ(Passes(0.5f, 1e9f, {0, 1}, true), (List{{0.5, 1e9, 2}}));
  EXPECT_EQ(Passes(-1e9f, 0.5f, {0, 1}, true), (List{{-1e9, 0.5, 2}}));
}

TEST(Wrapping, EndsOnInfinitiesAndWhatIsNoNumber) {
  const float inf = std::numeric_limits<float>::infinity(), nan = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(Passes(inf, 5, kPercent, true).size(), 1u);
  EXPECT_EQ(Passes(-inf, 5, kPercent, true).size(), 1u);
  EXPECT_EQ(Passes(nan, nan, kPercent, true).size(), 1u);
}

}  // namespace velk::test
