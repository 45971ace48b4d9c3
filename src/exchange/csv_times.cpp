#include "exchange/csv_times.h"

#include "base/dates.h"
#include "base/errors.h"
#include "base/numbers.h"
#include "base/text.h"

namespace velk {

namespace {

bool IsCsvDigit(char c) {
  return c >= '0' && c <= '9';
}

int TwoDigits(std::string_view text, std::size_t at) {
  return (text[at] - '0') * 10 + (text[at + 1] - '0');
}

/// "hh:mm:ss" without a detour: it is what nearly every row has. -1 for any other text.
int PlainSeconds(std::string_view text) {
  if (text.size() != 8 || text[2] != ':' || text[5] != ':') return -1;
  for (const std::size_t i : {0U, 1U, 3U, 4U, 6U, 7U})
    if (!IsCsvDigit(text[i])) return -1;
  const int hour = TwoDigits(text, 0), minute = TwoDigits(text, 3), second = TwoDigits(text, 6);
  return hour < 24 && minute < 60 && second < 60 ? (hour * 60 + minute) * 60 + second : -1;
}

/// A dotted date with slashes; other texts as they are.
std::string WithSlashes(std::string text) {
  const std::size_t first = text.find('.');
  if (first == std::string::npos || first == 0 || first > 2) return text;
  const std::size_t second = text.find('.', first + 1);
  if (second == std::string::npos || second > first + 3) return text;
  text[first] = text[second] = '/';
  return text;
}

/// Of a text that is no number alone.
std::optional<double> DateTimeOf(std::string_view text) {
  const std::string trimmed = Trim(text);
  if (trimmed.empty() || IsNumeric(trimmed)) return std::nullopt;
  try {
    return CDate(WithSlashes(trimmed));
  } catch (const RuntimeError&) {
    return std::nullopt;
  }
}

}  // namespace

std::optional<double> CsvDay(std::string_view text) {
  const auto value = DateTimeOf(text);
  // A time alone is of day 0.
  if (!value || (DatePart(*value) == 0 && text.find(':') != std::string_view::npos)) return std::nullopt;
  return DatePart(*value);
}

std::optional<int> CsvSeconds(std::string_view text) {
  const int plain = PlainSeconds(text);
  if (plain >= 0) return plain;
  if (text.find(':') == std::string_view::npos) return std::nullopt;
  const auto value = DateTimeOf(text);
  if (!value) return std::nullopt;
  const DateParts parts = Split(*value);
  return (parts.hour * 60 + parts.minute) * 60 + parts.second;
}

double CsvTimeOfDay(int seconds) {
  return TimeOfDay(seconds / 3600, seconds / 60 % 60, seconds % 60);
}

std::string CsvDayText(double day) {
  return FormatDate(day, "dd-mmm-yyyy");
}

std::string CsvTimeText(int seconds) {
  std::string text = "00:00:00";
  const int parts[] = {seconds / 3600, seconds / 60 % 60, seconds % 60};
  for (std::size_t i = 0; i < 3; ++i) {
    text[i * 3] = static_cast<char>('0' + parts[i] / 10);
    text[i * 3 + 1] = static_cast<char>('0' + parts[i] % 10);
  }
  return text;
}

double NextDate(int newTime, int previous, double date) {
  return previous >= 0 && newTime < previous ? date + 1 : date;
}

}  // namespace velk
