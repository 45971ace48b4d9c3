#include "instruments/reading/date_field.h"

#include <algorithm>
#include <string>

#include "base/dates.h"
#include "base/errors.h"
#include "base/numbers.h"
#include "base/text.h"

namespace velk {

namespace {

bool IsDigits(std::string_view text, std::size_t least, std::size_t most) {
  return text.size() >= least && text.size() <= most &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// "yyyy-mm-dd" of a date of numbers between two dots or slashes, which CDate doesn't read; nothing for any other form.
std::optional<std::string> InIsoOrder(std::string_view date) {
  const std::size_t first = date.find_first_of("./");
  if (first == std::string_view::npos) return {};
  const char separator = date[first];
  const std::size_t second = date.find(separator, first + 1);
  if (second == std::string_view::npos) return {};
  const std::string day(date.substr(0, first)), month(date.substr(first + 1, second - first - 1)),
      year(date.substr(second + 1));
  if (!IsDigits(month, 1, 2)) return {};
  if (IsDigits(day, 1, 2) && IsDigits(year, 4, 4)) return year + "-" + month + "-" + day;
  if (separator != '/') return {};
  if (IsDigits(day, 1, 2) && IsDigits(year, 2, 2)) return "20" + year + "-" + month + "-" + day;
  if (IsDigits(day, 4, 4) && IsDigits(year, 1, 2)) return day + "-" + month + "-" + year;
  return {};
}

/// As CDate reads it.
std::string Readable(std::string_view text) {
  const std::size_t end = std::min(text.find_first_of(" T"), text.size());
  const std::string_view date = text.substr(0, end);
  const std::string rest(text.substr(end));
  if (const std::optional<std::string> ordered = InIsoOrder(date)) return rest.starts_with('T') ? "" : *ordered + rest;
  const bool isIso = date.size() > 4 && IsDigits(date.substr(0, 4), 4, 4) && date[4] == '-';
  if (isIso && rest.size() > 1 && rest[0] == 'T' && rest[1] != ' ') return std::string(date) + " " + rest.substr(1);
  return std::string(text);
}

}  // namespace

std::optional<double> ReadDateField(std::string_view field) {
  const std::size_t begin = std::min(field.find_first_not_of("\r\n"), field.size());
  const std::string text = Readable(Trim(field.substr(begin)));
  if (IsNumeric(text)) return {};
  try {
    const double when = CDate(text);
    if (DatePart(when) == 0) return {};
    return when;
  } catch (const RuntimeError&) {
    return {};
  }
}

}  // namespace velk
