#include "platform/opc/ua/ua_values.h"

#include <gtest/gtest.h>

#include "base/dates.h"

namespace velk {
namespace {

TEST(UaQuality, HasTheSubCodesThatHaveOne) {
  // Codes as they go over the network; qualities are 192, 64 or 0, and 4 times the sub-code.
  const struct {
    std::uint32_t status;
    std::int32_t quality;
  } cases[] =
      {
          {0x00000000, 192},    {0x00960000, 192 + 24}, {0x40000000, 64},      {0x408F0000, 64 + 4},
          {0x40900000, 64 + 4}, {0x40930000, 64 + 16},  {0x40940000, 64 + 20}, {0x40950000, 64 + 24},
          {0x80000000, 0},      {0x80890000, 4},        {0x808A0000, 8},       {0x808B0000, 12},
          {0x808C0000, 16},     {0x80050000, 24},       {0x80310000, 24},      {0x808D0000, 28},
          {0x80320000, 32},     {0x80340000, 0},        {0x40900480, 64 + 4},  // with bits of information below
      };
  for (const auto& row : cases) EXPECT_EQ(ua::QualityOf(row.status), row.quality) << std::hex << row.status;
}

TEST(UaTime, GoesThereAndBackByTheLocalClock) {
  EXPECT_EQ(ua::DaysOf(0), 0);
  const double moment = DateSerial(2026, 3, 14) + TimeOfDay(9, 5, 7);
  EXPECT_NEAR(ua::DaysOf(ua::TimeOf(moment)), moment, 1e-9);
}

}  // namespace
}  // namespace velk
