#include "base/dates.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <limits>

#include "base/errors.h"

namespace velk {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr int kSaturday = 6;

template <class Work>
std::optional<ErrorNumber> ErrorOf(Work work) {
  try {
    work();
  } catch (const RuntimeError& error) {
    return error.Number();
  }
  return std::nullopt;
}

struct Day {
  int year, month, day;
  double number;
};

const std::vector<Day> kDays = {{1899, 12, 30, 0},       {1899, 12, 31, 1},    {1900, 1, 1, 2},
                                {1900, 2, 28, 60},       {1900, 3, 1, 61},     {1970, 1, 1, 25569},
                                {2000, 1, 1, 36526},     {2000, 2, 29, 36585}, {2000, 3, 1, 36586},
                                {2026, 3, 14, 46095},    {2100, 3, 1, 73110},  {9999, 12, 31, 2958465},
                                {1899, 12, 29, -1},      {1850, 3, 5, -18197}, {1600, 2, 29, -109512},
                                {1582, 10, 15, -115858}, {100, 1, 1, -657434}};

TEST(DateSerial, CountsDaysFrom30December1899) {
  for (const auto& [year, month, day, number] : kDays) EXPECT_EQ(DateSerial(year, month, day), number) << year;
}

TEST(DateSerial, RaisesForADateThatDoesNotExist) {
  const std::vector<std::array<int, 3>> rows = {
      {1900, 2, 29}, {2100, 2, 29}, {2026, 2, 29}, {2000, 2, 30}, {2026, 4, 31}, {2026, 0, 1},  {2026, 13, 1},
      {2026, 1, 0},  {2026, 1, 32}, {99, 12, 31},  {10000, 1, 1}, {-1, 1, 1},    {2026, -1, 1}, {2026, 1, -1}};
  for (const auto& [year, month, day] : rows) {
    EXPECT_FALSE(DateExists(year, month, day));
    EXPECT_EQ(ErrorOf([&, y = year, m = month, d = day] { DateSerial(y, m, d); }), ErrorNumber::InvalidArgument);
  }
  EXPECT_TRUE(DateExists(2000, 2, 29));
}

TEST(Split, TakesEveryKnownDayApart) {
  for (const auto& [year, month, day, number] : kDays) {
    const DateParts parts = Split(number);
    EXPECT_EQ(parts.year, year);
    EXPECT_EQ(parts.month, month);
    EXPECT_EQ(parts.day, day);
    EXPECT_EQ(parts.hour + parts.minute + parts.second + parts.millisecond, 0);
  }
}

TEST(Split, GoesThroughTheCalendarDayByDay) {
  DateParts before = Split(-657434);
  for (double number = -657433; number <= 2958465; ++number) {
    const DateParts parts = Split(number);
    ASSERT_EQ(parts.weekday, (before.weekday + 1) % 7) << number;
    const bool sameMonth = parts.month == before.month && parts.year == before.year && parts.day == before.day + 1;
    const bool nextMonth = parts.day == 1 && !DateExists(before.year, before.month, before.day + 1) &&
                           parts.year * 12 + parts.month == before.year * 12 + before.month + 1;
    ASSERT_TRUE(sameMonth || nextMonth) << number;
    ASSERT_EQ(DateSerial(parts.year, parts.month, parts.day), number);
    before = parts;
  }
}

TEST(Split, KnowsTheDayOfTheWeek) {
  EXPECT_EQ(Split(0).weekday, kSaturday);
  EXPECT_EQ(Split(DateSerial(2026, 3, 14)).weekday, kSaturday);
  EXPECT_EQ(Split(DateSerial(2000, 2, 29)).weekday, 2);
  EXPECT_EQ(Split(DateSerial(1850, 3, 5)).weekday, 2);
  EXPECT_EQ(Split(DateSerial(100, 1, 1)).weekday, 5);
  EXPECT_EQ(Split(DateSerial(9999, 12, 31)).weekday, 5);
}

TEST(Split, CountsTheFractionForwardBeforeDay0) {
  const DateParts parts = Split(-1.25);
  EXPECT_EQ(parts.year, 1899);
  EXPECT_EQ(parts.day, 29);
  EXPECT_EQ(parts.hour, 6);
  EXPECT_EQ(Split(-0.25).day, 30);
  EXPECT_EQ(Split(-0.25).hour, 6);
  EXPECT_EQ(Split(0.25).hour, 6);
  EXPECT_EQ(DatePart(-1.25), -1);
  EXPECT_EQ(TimePart(-1.25), 0.25);
  EXPECT_EQ(JoinDateTime(-1, 0.25), -1.25);
  EXPECT_EQ(JoinDateTime(1, 0.25), 1.25);
}

TEST(Split, CutsToTheMillisecond) {
  const double day = DateSerial(2026, 3, 14);
  EXPECT_EQ(Split(day + TimeOfDay(12, 0, 0.0007)).millisecond, 0);
  EXPECT_EQ(Split(day + TimeOfDay(12, 0, 0.0015)).millisecond, 1);
  EXPECT_EQ(Split(day + TimeOfDay(23, 59, 59.999)).second, 59);
  EXPECT_EQ(Split(day + TimeOfDay(23, 59, 59.999)).millisecond, 999);
  EXPECT_EQ(Split(day + TimeOfDay(23, 59, 59.9995)).day, 14);
}

TEST(Split, TakesAFloatJustBelowMidnightAsMidnight) {
  const double midnight = DateSerial(2026, 3, 15);
  const double below = std::nextafter(midnight, 0);
  EXPECT_EQ(Split(below).day, 15);
  EXPECT_EQ(Split(below).hour, 0);
  EXPECT_EQ(DatePart(below), midnight);
  EXPECT_EQ(TimePart(below), 0);
}

TEST(Split, RaisesForWhatIsNoDateTime) {
  for (const double value : {-657435.0, 2958466.0, 1e9, -1e9, 1e300, kInfinity, -kInfinity, kNaN}) {
    EXPECT_FALSE(IsDateTime(value));
    EXPECT_EQ(ErrorOf([&] { Split(value); }), ErrorNumber::InvalidArgument);
    EXPECT_EQ(ErrorOf([&] { DatePart(value); }), ErrorNumber::InvalidArgument);
    EXPECT_EQ(ErrorOf([&] { TimePart(value); }), ErrorNumber::InvalidArgument);
    EXPECT_EQ(ErrorOf([&] { FormatDate(value, "yyyy"); }), ErrorNumber::InvalidArgument);
  }
  EXPECT_TRUE(IsDateTime(-657434));
  EXPECT_TRUE(IsDateTime(2958465.999));
  EXPECT_EQ(ErrorOf([] { Split(std::nextafter(2958466.0, 0)); }), ErrorNumber::InvalidArgument);
}

TEST(TimeOfDay, GivesEqualBitsForEqualTimes) {
  EXPECT_EQ(TimeOfDay(0, 0, 0), 0);
  EXPECT_EQ(TimeOfDay(6, 0, 0), 0.25);
  EXPECT_EQ(TimeOfDay(18, 0, 0), 0.75);
  EXPECT_EQ(TimeOfDay(0, 0, 1), 1.0 / 86400);
  EXPECT_EQ(TimeOfDay(9, 30, 0), 34200.0 / 86400);
  EXPECT_EQ(TimeOfDay(9, 30, 0), TimeOfDay(8, 89, 60));
}

/// Each second of a day, on days of every sign and grain.
TEST(TimeOfDay, OfEverySecondOfADayComesBackAsItself) {
  for (const double day : {0.0, -1.0, -657434.0, 46095.0, 2958465.0}) {
    for (int second = 0; second < 86'400; ++second) {
      const double time = TimeOfDay(second / 3600, second / 60 % 60, second % 60);
      const double value = JoinDateTime(day, time);
      char expected[16];
      std::snprintf(expected, sizeof expected, "%02d:%02d:%02d", second / 3600, second / 60 % 60, second % 60);
      ASSERT_EQ(FormatDate(value, "hh:mm:ss"), expected) << day;
      ASSERT_EQ(CDate(expected), time);
      ASSERT_EQ(TimePart(value), time) << day;
      ASSERT_EQ(DatePart(value), day);
    }
  }
}

TEST(TimeOfDay, OfEveryMillisecondComesBackAsItself) {
  for (int millisecond = 0; millisecond < 86'400'000; millisecond += 997) {
    const double value = 46095 + TimeOfDay(0, 0, millisecond / 1000.0);
    const DateParts parts = Split(value);
    ASSERT_EQ(((parts.hour * 60 + parts.minute) * 60 + parts.second) * 1000 + parts.millisecond, millisecond);
  }
}

TEST(FormatDate, FillsThePictures) {
  const double value = DateSerial(2026, 3, 4) + TimeOfDay(9, 5, 7);  // a Wednesday
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"dd-mmm-yyyy", "04-Mar-2026"},
      {"hh:mm:ss", "09:05:07"},
      {"hh:mm", "09:05"},
      {"DD/MM/YYYY", "04/03/2026"},
      {"dd-mmm-yyyy hh:mm:ss", "04-Mar-2026 09:05:07"},
      {"dd/mm/yy hh:mm:ss", "04/03/26 09:05:07"},
      {"dd-mmm-yy", "04-Mar-26"},
      {"yyyy-mm-dd", "2026-03-04"},
      {"d/m/yy", "4/3/26"},
      {"h:m:s", "9:5:7"},
      {"h:n:s", "9:5:7"},
      {"hh:nn", "09:05"},
      {"ddd", "Wed"},
      {"dddd, d mmmm", "Wednesday, 4 March"},
      {"hh:mm dd/mm", "09:05 04/03"},
      {"mm/dd hh", "03/04 09"},
      {"HH:MM:SS", "09:05:07"},
      {"Dd-mMm", "04-Mar"},
      {"hh mm", "09 05"},
      {"hhmmss", "090507"},
      {"hhmmmm", "090503"},  // the second mm is behind a minute
      {"ddddd", "Wednesday4"},
      {"yyy", "26y"},
      {"y", "y"},
      {"[ - ] °", "[ - ] °"},
      {"", ""},
  };
  for (const auto& [picture, text] : rows) EXPECT_EQ(FormatDate(value, picture), text) << picture;
}

TEST(FormatDate, NamesEveryMonthAndDay) {
  const std::array<const char*, 12> months = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                              "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  for (int month = 1; month <= 12; ++month) {
    EXPECT_EQ(FormatDate(DateSerial(2026, month, 1), "mmm"), months[month - 1]);
  }
  const std::array<const char*, 7> days = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                           "Thursday", "Friday", "Saturday"};
  for (int day = 0; day < 7; ++day) EXPECT_EQ(FormatDate(DateSerial(2026, 3, 1) + day, "dddd"), days[day]);
}

TEST(FormatDate, CutsAndNeverRoundsUp) {
  const double value = DateSerial(2026, 3, 14) + TimeOfDay(23, 59, 59.999);
  EXPECT_EQ(FormatDate(value, "hh:mm:ss"), "23:59:59");
  EXPECT_EQ(FormatDate(value, "dd-mmm-yyyy hh:mm"), "14-Mar-2026 23:59");
  EXPECT_EQ(FormatDate(TimeOfDay(23, 59, 59.999), "hh:mm:ss"), "23:59:59");
}

TEST(FormatDate, ShowsDatesBeforeDay0AndEarlyYears) {
  EXPECT_EQ(FormatDate(-1.25, "dd-mmm-yyyy hh:mm"), "29-Dec-1899 06:00");
  EXPECT_EQ(FormatDate(0, "dd-mmm-yyyy hh:mm:ss"), "30-Dec-1899 00:00:00");
  EXPECT_EQ(FormatDate(DateSerial(100, 1, 1), "dd/mm/yyyy yy"), "01/01/0100 00");
  EXPECT_EQ(FormatDate(DateSerial(1905, 1, 1), "yy"), "05");
}

TEST(CDate, ReadsDaysTimesAndBoth) {
  const double day = 46095;  // 14 March 2026
  const std::vector<std::pair<std::string, double>> rows = {
      {"14-Mar-2026", day},
      {"14-MAR-2026", day},
      {"14-march-2026", day},
      {"14/03/2026", day},
      {"2026-03-14", day},
      {"4-May-2026", 46146},
      {"4/5/2026", 46146},
      {"2026-5-4", 46146},
      {"29-Feb-2000", 36585},
      {"30-Dec-1899", 0},
      {"01/01/0100", -657434},
      {"31/12/9999", 2958465},
      {"14-Mar-2026 09:30", day + 34200.0 / 86400},
      {"14/03/2026 09:30:15", day + 34215.0 / 86400},
      {"2026-03-14   9:5", day + 32700.0 / 86400},
      {"14-Mar-2026 00:00:00", day},
      {"  14-Mar-2026  ", day},
      {"29-Dec-1899 06:00", -1.25},
      {"09:30", 34200.0 / 86400},
      {"9:5:7", 32707.0 / 86400},
      {"0:00", 0},
      {"23:59:59", 86399.0 / 86400},
      {"12:00:00.5", 43200.5 / 86400},
      {"12:00:00.250", 43200.25 / 86400},
      {"12:00 AM", 0},
      {"12:00 PM", 0.5},
      {"6:00pm", 0.75},
      {"6:00 am", 0.25},
      {"11:59:59 PM", 86399.0 / 86400},
      {"46095", day},
      {"46095.25", 46095.25},
      {"-1.25", -1.25},
      {"0", 0},
      {" 1e3 ", 1000},
  };
  for (const auto& [text, value] : rows) EXPECT_EQ(CDate(text), value) << text;
}

TEST(CDate, RaisesForOtherTexts) {
  const std::vector<std::string> texts = {"",
                                          " ",
                                          "today",
                                          "14-Mar",
                                          "14-Mar-26",
                                          "14-Mrz-2026",
                                          "14-Marc-2026",
                                          "14-03-2026",
                                          "14.03.2026",
                                          "14/Mar/2026",
                                          "2026/03/14",
                                          "03/14/2026",
                                          "29-Feb-1900",
                                          "29/02/2026",
                                          "31-Apr-2026",
                                          "0-Mar-2026",
                                          "2026-13-01",
                                          "2026-00-10",
                                          "01/01/0099",
                                          "014-Mar-2026",
                                          "14-Mar-20266",
                                          "24:00",
                                          "12:60",
                                          "12:00:60",
                                          "12:",
                                          ":30",
                                          "123:00",
                                          "12:00:",
                                          "12:00:00.",
                                          "12:00.5",
                                          "0:30 AM",
                                          "13:00 PM",
                                          "12:00 XM",
                                          "12:00 A",
                                          "14-Mar-2026x",
                                          "14-Mar-202609:30",
                                          "14-Mar-2026T09:30",
                                          "14-Mar-2026 09:30 x",
                                          "14-Mar-2026 9",
                                          "-12:00",
                                          "1e300",
                                          "2958466",
                                          "-657435",
                                          "nan",
                                          "inf",
                                          "1,5",
                                          "14 Mar 2026",
                                          "\t12:00",
                                          "12:00\n",
                                          "-14-Mar-2026",
                                          "14--Mar-2026",
                                          "14-Mar-\xFF"};
  for (const std::string& text : texts) {
    EXPECT_EQ(ErrorOf([&] { CDate(text); }), ErrorNumber::TypeMismatch) << text;
  }
}

TEST(CDate, NeverTakesAFractionUpToTheNextSecond) {
  const double value = CDate("23:59:59.99999999999999999999");
  EXPECT_LT(value, 1);
  EXPECT_EQ(CDate("12:00:00." + std::string(400, '9')), CDate("12:00:00.999999999"));
}

TEST(CDate, ReadsBackWhatTheProgramWrites) {
  for (const char* picture : {"dd-mmm-yyyy hh:mm:ss", "DD/MM/YYYY hh:mm:ss", "yyyy-mm-dd hh:nn:ss"}) {
    for (const auto& [year, month, day, number] : kDays) {
      const double value = JoinDateTime(number, TimeOfDay(17, 4, 59));
      EXPECT_EQ(CDate(FormatDate(value, picture)), value) << year << picture;
    }
  }
}

TEST(CutToMinute, TakesTheSecondsOff) {
  const double day = DateSerial(2026, 3, 14);
  EXPECT_EQ(CutToMinute(day + TimeOfDay(9, 30, 59.999)), day + TimeOfDay(9, 30, 0));
  EXPECT_EQ(CutToMinute(day + TimeOfDay(9, 30, 0)), day + TimeOfDay(9, 30, 0));
  EXPECT_EQ(CutToMinute(day + TimeOfDay(9, 30, 12)), CDate("14-Mar-2026 09:30:00"));
  EXPECT_EQ(CutToMinute(-1.25 - 30.0 / 86400), -1.25);
}

TEST(SecondsBetween, CountsBoundariesOfWholeSeconds) {
  const double day = DateSerial(2026, 3, 14);
  const auto at = [&](double seconds) { return day + TimeOfDay(9, 30, seconds); };
  EXPECT_EQ(SecondsBetween(at(0), at(15)), 15);
  EXPECT_EQ(SecondsBetween(at(0.9), at(1.1)), 1);
  EXPECT_EQ(SecondsBetween(at(1.1), at(1.9)), 0);
  EXPECT_EQ(SecondsBetween(at(15), at(0)), -15);
  EXPECT_EQ(SecondsBetween(day, day + 1), 86400);
  EXPECT_EQ(SecondsBetween(-1.25, 1.5), 2 * 86400 + 6 * 3600);
  EXPECT_EQ(MinutesBetween(at(59), at(61)), 1);
  EXPECT_EQ(MinutesBetween(at(0), at(59.9)), 0);
  EXPECT_EQ(MinutesBetween(at(61), at(59)), -1);
  EXPECT_EQ(MinutesBetween(day, day + 2), 2880);
}

/// Adding the interval again and again is what acquisition does for hours.
TEST(SecondsBetween, HoldsForSumsOfManyIntervals) {
  const double start = DateSerial(2026, 3, 14) + TimeOfDay(9, 30, 0);
  double time = start;
  for (int second = 1; second <= 86'400; ++second) {
    time += 1.0 / 86400;
    ASSERT_EQ(SecondsBetween(start, time), second);
  }
}

}  // namespace
}  // namespace velk
