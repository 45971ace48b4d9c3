#pragma once

#include <string>
#include <string_view>

namespace velk {

// A date-time is a count of days in a 64-bit float: day 0 is 30 December 1899, the fraction is the time of day, local
// wall clock. Before day 0 the fraction still counts forward from midnight of the day named by the whole part
// (-1.25 is 29 December 1899, 06:00).

/// Time of day as a fraction: (hour*3600 + minute*60 + second) / 86400. All times of day come from here, so that
/// equal times are equal bits.
double TimeOfDay(int hour, int minute, double second);

/// A day and a time of day as one date-time.
double JoinDateTime(double day, double timeOfDay);

/// Whether a proleptic Gregorian date is there, years 100 to 9999.
bool DateExists(int year, int month, int day);

/// Whether a number is a date-time: not NaN, and of the years 100 to 9999. The functions below that take a date-time
/// raise InvalidArgument for any other number.
bool IsDateTime(double value);

/// Days of a proleptic Gregorian date, years 100 to 9999. Raises InvalidArgument for a date that does not exist.
double DateSerial(int year, int month, int day);

struct DateParts {
  int year, month, day;
  int weekday;  ///< 0 is Sunday
  int hour, minute, second, millisecond;
};

/// Taken apart, cut to the millisecond, never rounded up beyond what the float's own grain (0.1 ms) demands: a time
/// built by TimeOfDay from whole seconds comes apart into the same seconds.
DateParts Split(double dateTime);

/// The whole days / the time of day of a date-time.
double DatePart(double dateTime);
double TimePart(double dateTime);

/// Format by a picture, any case: d dd ddd dddd, m mm mmm mmmm, yy yyyy, h hh, n nn, s ss; "mm" behind "h" or "hh" is
/// minutes; other characters as they stand ("/" stays "/"). Month and day names are English. Cut, never rounded up.
std::string FormatDate(double dateTime, std::string_view picture);

/// A text as date-time: "dd-mmm-yyyy", "DD/MM/YYYY", "yyyy-mm-dd", each alone or followed by blanks and a time, or a
/// time alone ("hh:mm" or "hh:mm:ss", one or two digits each, optional fraction of the second, optional AM/PM). Month
/// names are English, any case, three letters or whole. A number alone is a count of days. Raises TypeMismatch for any
/// other text, and for a day or time that does not exist.
double CDate(std::string_view text);

/// `dateTime` with the seconds taken off: what "dd-mmm-yyyy hh:mm" plus ":00" reads as.
double CutToMinute(double dateTime);

/// Boundaries of whole seconds (minutes) crossed on the way from `from` to `to`; negative backwards.
long long SecondsBetween(double from, double to);
long long MinutesBetween(double from, double to);

}  // namespace velk
