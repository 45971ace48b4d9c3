#include "graphs/header_zones.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

// A band 10966 wide: 10000 twips behind the axis at 966, so that 35 % end at 4466 and 65 % at 7466.
constexpr double kWidth = 10966;

HeaderZone ZoneAt(double x) {
  return HeaderPlaceAt(x, 100, kWidth, 1).zone;
}

TEST(HeaderZones, EndWhereTheirSharesDo) {
  EXPECT_EQ(ZoneAt(965.9), HeaderZone::None);
  EXPECT_EQ(ZoneAt(966), HeaderZone::Minimum);
  EXPECT_EQ(ZoneAt(4466), HeaderZone::Minimum);
  EXPECT_EQ(ZoneAt(4467), HeaderZone::Colour);
  EXPECT_EQ(ZoneAt(7465), HeaderZone::Colour);
  EXPECT_EQ(ZoneAt(7466), HeaderZone::Maximum);
  EXPECT_EQ(ZoneAt(10966), HeaderZone::Maximum);
  EXPECT_EQ(ZoneAt(20000), HeaderZone::Maximum) << "it has no right end";
}

TEST(HeaderZones, HaveARowACurve) {
  EXPECT_EQ(HeaderPlaceAt(1000, 0, kWidth, 3).row, 1);
  EXPECT_EQ(HeaderPlaceAt(1000, 249, kWidth, 3).row, 1);
  EXPECT_EQ(HeaderPlaceAt(1000, 250, kWidth, 3).row, 2);
  EXPECT_EQ(HeaderPlaceAt(1000, 749, kWidth, 3).row, 3);
  EXPECT_EQ(HeaderPlaceAt(1000, 750, kWidth, 3).zone, HeaderZone::None) << "below the header";
  EXPECT_EQ(HeaderPlaceAt(1000, -1, kWidth, 3).zone, HeaderZone::None);
}

}  // namespace
}  // namespace velk
