#include "reports/range_entry.h"

#include <gtest/gtest.h>

#include <cmath>

#include "base/dates.h"

namespace velk {
namespace {

double At(int day, int hour, int minute, double second) {
  return JoinDateTime(DateSerial(2026, 3, day), TimeOfDay(hour, minute, second));
}

const double kFirstRecord = At(14, 9, 30, 0), kLastRecord = At(15, 2, 0, 0.5);

TEST(RangeEntryTest, TakesTimesBetweenTheFirstAndTheLastRecord) {
  const RangeEntry range = ReadRange("14-Mar-2026 23:00:00", "15/03/2026 01:00:00", kFirstRecord, kLastRecord);
  EXPECT_EQ(range.begin, At(14, 23, 0, 0));
  EXPECT_EQ(range.end, At(15, 1, 0, 0));
  EXPECT_TRUE(range.beginIsSound && range.endIsSound);
}

TEST(RangeEntryTest, SetsABoundBeyondTheRecordsToTheirs) {
  const RangeEntry range = ReadRange("13-Mar-2026", "20-Mar-2026", kFirstRecord, kLastRecord);
  EXPECT_EQ(range.begin, kFirstRecord);
  EXPECT_EQ(range.end, kLastRecord);
}

TEST(RangeEntryTest, PutsBothBackWhereTheBeginLiesBehindTheEnd) {
  const RangeEntry range = ReadRange("15-Mar-2026 01:00:00", "14-Mar-2026 23:00:00", kFirstRecord, kLastRecord);
  EXPECT_EQ(range.begin, kFirstRecord);
  EXPECT_EQ(range.end, kLastRecord);
  EXPECT_TRUE(range.beginIsSound && range.endIsSound);
}

TEST(RangeEntryTest, PutsABoundBackThatIsNoTime) {
  const RangeEntry range = ReadRange("yesterday", "15-Mar-2026 01:00:00", kFirstRecord, kLastRecord);
  EXPECT_FALSE(range.beginIsSound);
  EXPECT_TRUE(range.endIsSound);
  EXPECT_EQ(range.begin, kFirstRecord);
  EXPECT_EQ(range.end, At(15, 1, 0, 0));
  EXPECT_FALSE(ReadRange("14-Mar-2026", "32-Mar-2026", kFirstRecord, kLastRecord).endIsSound);
}

TEST(RangeEntryTest, KeepsTheLastRecordWhereItsTimeStandsAsShown) {
  const RangeEntry range = ReadRange("14-Mar-2026 09:30:00", "15-Mar-2026 02:00:00", kFirstRecord, kLastRecord);
  EXPECT_EQ(range.end, kLastRecord) << "half a second behind what is shown";
}

TEST(ReadTargetTest, JoinsTheDateAtTheLeftAndTheTimeAtTheRight) {
  EXPECT_EQ(ReadTarget("14-Mar-2026 09:30:05"), At(14, 9, 30, 5));
  EXPECT_EQ(ReadTarget(" 14-Mar-2026   09:30:05 "), At(14, 9, 30, 5));
  for (const char* wrong : {"", "14-Mar-2026", "09:30:05", "14-Mar-2026 25:00:00", "tomorrow at noon"})
    EXPECT_TRUE(std::isnan(ReadTarget(wrong))) << wrong;
}

TEST(RangeEntryTest, TakesAFactorWithAPointOrAComma) {
  EXPECT_EQ(ReadFactor("1.5"), 1.5);
  EXPECT_EQ(ReadFactor("1,5"), 1.5);
  EXPECT_EQ(ReadFactor(" 3 "), 3);
  EXPECT_EQ(ReadFactor("-2"), -2);
  EXPECT_EQ(ReadFactor("much"), 0);
  EXPECT_EQ(ReadFactor(""), 0);
}

}  // namespace
}  // namespace velk
