#include "base/dates.h"

#include <cmath>
#include <optional>

#include "base/errors.h"

namespace velk {

namespace {

constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;
constexpr double kMillisecondsPerDay = 86'400'000;

/// A float that counts days up to the year 9999 is as coarse as 0.04 ms, and times are sums of such floats: what lies
/// less than this below a full millisecond is that millisecond.
constexpr double kGrainMilliseconds = 0.1;

struct Instant {
  long long day;
  int millisecond;  ///< of the day

  long long Seconds() const { return day * 86'400 + millisecond / 1000; }
};

bool IsLeap(int year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int DaysInMonth(int year, int month) {
  constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && IsLeap(year) ? 29 : kDays[month - 1];
}

// Years run from March to February here, so that the leap day is a year's last.
constexpr long long kDaysOf400Years = 146'097;
constexpr long long kDayZero = 693'899;  // 30 December 1899, from 1 March of the year 0

long long DayNumber(int year, int month, int day) {
  const long long y = month > 2 ? year : year - 1;
  const long long monthsFromMarch = (month + 9) % 12;
  return y * 365 + y / 4 - y / 100 + y / 400 + (monthsFromMarch * 153 + 2) / 5 + day - 1 - kDayZero;
}

void SetDate(DateParts& parts, long long dayNumber) {
  const long long days = dayNumber + kDayZero;
  const long long era = days / kDaysOf400Years;
  const long long inEra = days % kDaysOf400Years;
  const long long yearOfEra = (inEra - inEra / 1460 + inEra / 36'524 - inEra / 146'096) / 365;
  const long long inYear = inEra - (yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100);
  const long long monthsFromMarch = (inYear * 5 + 2) / 153;
  parts.day = static_cast<int>(inYear - (monthsFromMarch * 153 + 2) / 5 + 1);
  parts.month = static_cast<int>(monthsFromMarch < 10 ? monthsFromMarch + 3 : monthsFromMarch - 9);
  parts.year = static_cast<int>(era * 400 + yearOfEra + (parts.month <= 2 ? 1 : 0));
  // Day 0 was a Saturday; the 7's keep days before it positive.
  parts.weekday = static_cast<int>((days - kDayZero + 6 + 7LL * 1'000'000) % 7);
}

bool IsDay(long long day) {
  static const long long first = DayNumber(kFirstYear, 1, 1);
  static const long long last = DayNumber(kLastYear, 12, 31);
  return day >= first && day <= last;
}

std::optional<Instant> FindInstant(double dateTime) {
  const double whole = std::trunc(dateTime);
  // Coarse, so that the whole part fits an integer; written so that NaN fails.
  if (!(std::abs(whole) < 1e7)) return std::nullopt;
  const double milliseconds = std::abs(dateTime - whole) * kMillisecondsPerDay + kGrainMilliseconds;
  Instant instant{static_cast<long long>(whole), static_cast<int>(milliseconds)};
  if (milliseconds >= kMillisecondsPerDay) instant = {instant.day + 1, 0};
  if (!IsDay(instant.day)) return std::nullopt;
  return instant;
}

Instant InstantOf(double dateTime) {
  const std::optional<Instant> instant = FindInstant(dateTime);
  if (!instant) throw RuntimeError(ErrorNumber::InvalidArgument);
  return *instant;
}

double TimeOf(int millisecond) {
  return TimeOfDay(millisecond / 3'600'000, millisecond / 60'000 % 60, (millisecond % 60'000) / 1000.0);
}

}  // namespace

double TimeOfDay(int hour, int minute, double second) {
  return (hour * 3600 + minute * 60 + second) / 86400;
}

double JoinDateTime(double day, double timeOfDay) {
  return day < 0 ? day - timeOfDay : day + timeOfDay;
}

bool IsDateTime(double value) {
  return FindInstant(value).has_value();
}

bool DateExists(int year, int month, int day) {
  return year >= kFirstYear && year <= kLastYear && month >= 1 && month <= 12 && day >= 1 &&
         day <= DaysInMonth(year, month);
}

double DateSerial(int year, int month, int day) {
  if (!DateExists(year, month, day)) throw RuntimeError(ErrorNumber::InvalidArgument);
  return static_cast<double>(DayNumber(year, month, day));
}

DateParts Split(double dateTime) {
  const auto [day, millisecond] = InstantOf(dateTime);
  DateParts parts{};
  SetDate(parts, day);
  parts.hour = millisecond / 3'600'000;
  parts.minute = millisecond / 60'000 % 60;
  parts.second = millisecond / 1000 % 60;
  parts.millisecond = millisecond % 1000;
  return parts;
}

double DatePart(double dateTime) {
  return static_cast<double>(InstantOf(dateTime).day);
}

double TimePart(double dateTime) {
  return TimeOf(InstantOf(dateTime).millisecond);
}

double CutToMinute(double dateTime) {
  const auto [day, millisecond] = InstantOf(dateTime);
  return JoinDateTime(static_cast<double>(day), TimeOf(millisecond - millisecond % 60'000));
}

long long SecondsBetween(double from, double to) {
  return InstantOf(to).Seconds() - InstantOf(from).Seconds();
}

long long MinutesBetween(double from, double to) {
  const auto minutes = [](double dateTime) {
    const auto [day, millisecond] = InstantOf(dateTime);
    return day * 1440 + millisecond / 60'000;
  };
  return minutes(to) - minutes(from);
}

}  // namespace velk
