#include "core/panel/rate_meter.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

TEST(Rates, AreUnknownUntilTwoSamplesHaveCome) {
  RateMeter meter;
  EXPECT_FALSE(meter.PerSecond());
  meter.Note(1, 500, 10'000);
  meter.Note(1, 500, 10'000);
  EXPECT_FALSE(meter.PerSecond());
  meter.Note(2, 1500, 10'000);
  EXPECT_EQ(meter.PerSecond(), 1.0);
}

TEST(Rates, AreThoseOfTheWindow) {
  RateMeter meter;
  for (int second = 1; second <= 20; ++second) meter.Note(second, 1000 * second, 10'000);
  // From second 20 on ten samples a second; after ten seconds nothing is left of the slow ones.
  for (int second = 1; second <= 10; ++second) meter.Note(20 + 10 * second, 20'000 + 1000 * second, 10'000);
  EXPECT_EQ(meter.PerSecond(), 10.0);
}

TEST(Rates, OfSlowSamplesKeepTheLastTwo) {
  RateMeter meter;
  for (int minute = 1; minute <= 5; ++minute) meter.Note(minute, 60'000 * minute, 10'000);
  EXPECT_NEAR(*meter.PerSecond(), 1.0 / 60, 1e-12);
}

TEST(Rates, BeginAnewBehindAPause) {
  RateMeter meter;
  meter.Note(1, 1000, 10'000);
  meter.Note(2, 2000, 10'000);
  meter.Restart();
  EXPECT_FALSE(meter.PerSecond());
}

}  // namespace
}  // namespace velk
