#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace velk {

/// The day of a text, in days: "21-Nov-2026", day first in "21/11/2026" and "21.11.2026", "2026-11-21"; a time behind
/// it is left out. Nothing for any other text, a number among them.
std::optional<double> CsvDay(std::string_view text);

/// The time of day of a text in whole seconds from midnight on, fractions cut: "10:05:30", with AM or PM, alone or
/// behind a date. Nothing for any other text.
std::optional<int> CsvSeconds(std::string_view text);

/// Seconds from midnight as a fraction of a day.
double CsvTimeOfDay(int seconds);

/// "dd-mmm-yyyy" and "hh:mm:ss".
std::string CsvDayText(double day);
std::string CsvTimeText(int seconds);

/// The day of a row in a file that tells times only, from the row before it: a time that is earlier than that one is of
/// the next day. `previous` below 0: there is none before.
double NextDate(int newTime, int previous, double date);

}  // namespace velk
