#include "exchange/csv_times.h"

#include <gtest/gtest.h>

#include "base/dates.h"

namespace velk {
namespace {

TEST(CsvTimes, ReadDatesDayFirst) {
  const double day = DateSerial(2026, 11, 21);
  for (const char* text :
       {"21-Nov-2026", "21/11/2026", "21.11.2026", "2026-11-21", " 21-nov-2026 ", "21.11.2026 10:00"})
    EXPECT_EQ(CsvDay(text), day) << text;
  EXPECT_EQ(CsvDay("3/4/2026"), DateSerial(2026, 4, 3));
  EXPECT_EQ(CsvDay("3.4.2026"), DateSerial(2026, 4, 3));
}

TEST(CsvTimes, TakeNoOtherTextForADate) {
  for (const char* text : {"", "45000", "45000.5", "10:00:00", "31-Feb-2026", "11/21/2026", "Depth", "1.5", "1.2.3"})
    EXPECT_EQ(CsvDay(text), std::nullopt) << text;
}

TEST(CsvTimes, ReadTimesInWholeSeconds) {
  EXPECT_EQ(CsvSeconds("10:05:30"), 36330);
  EXPECT_EQ(CsvSeconds("10:05:30.999"), 36330);
  EXPECT_EQ(CsvSeconds("9:05"), 32700);
  EXPECT_EQ(CsvSeconds("1:00:00 PM"), 46800);
  EXPECT_EQ(CsvSeconds("12:00:00 AM"), 0);
  EXPECT_EQ(CsvSeconds("21-Nov-2026 10:05:30"), 36330);
  EXPECT_EQ(CsvSeconds("23:59:59"), 86399);
}

TEST(CsvTimes, TakeNoOtherTextForATime) {
  for (const char* text : {"", "0.5", "24:00:00", "10:60:00", "10:00:60", "noon", "21-Nov-2026", "1O:00:00"})
    EXPECT_EQ(CsvSeconds(text), std::nullopt) << text;
}

TEST(CsvTimes, AreWrittenAsLogsHaveThem) {
  EXPECT_EQ(CsvDayText(DateSerial(2026, 3, 1)), "01-Mar-2026");
  EXPECT_EQ(CsvTimeText(3661), "01:01:01");
  EXPECT_EQ(CsvTimeText(86399), "23:59:59");
}

TEST(CsvTimes, GoOnToTheNextDayWhereTheTimeIsEarlier) {
  EXPECT_EQ(NextDate(10, -1, 100), 100) << "none is before the first row";
  EXPECT_EQ(NextDate(10, 9, 100), 100);
  EXPECT_EQ(NextDate(10, 10, 100), 100);
  EXPECT_EQ(NextDate(9, 10, 100), 101);
}

}  // namespace
}  // namespace velk
