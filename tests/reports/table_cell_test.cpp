#include "reports/table_cell.h"

#include <gtest/gtest.h>

#include <cmath>

namespace velk {
namespace {

TEST(TableCell, HasAsManyPlacesAsItsSizeNeeds) {
  EXPECT_EQ(FormatByMagnitude(0), "0.000");
  EXPECT_EQ(FormatByMagnitude(10), "10.000");
  EXPECT_EQ(FormatByMagnitude(-10), "-10.000");
  EXPECT_EQ(FormatByMagnitude(10.5), "10.50");
  EXPECT_EQ(FormatByMagnitude(100), "100.00");
  EXPECT_EQ(FormatByMagnitude(100.5), "100.5");
  EXPECT_EQ(FormatByMagnitude(-1000), "-1000.0");
  EXPECT_EQ(FormatByMagnitude(1000.5), "1,001");
  EXPECT_EQ(FormatByMagnitude(1234567), "1,234,567");
  EXPECT_EQ(FormatByMagnitude(1e12), "1,000,000,000,000") << "beyond 32 bits";
  EXPECT_EQ(FormatByMagnitude(std::nan("")), "nan");
}

}  // namespace
}  // namespace velk
