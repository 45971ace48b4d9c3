#include "base/number_entry.h"

#include <cmath>

#include "base/number_reading.h"

namespace velk {

namespace {

/// Blanks that spreadsheets put between thousands: the plain one, the one that breaks no line, and the narrow one.
constexpr std::string_view kGroupBlanks[] = {" ", "\u00A0", "\u202F"};

bool IsDecimalDigit(char c) {
  return c >= '0' && c <= '9';
}

/// What stands at the front of a text.
struct Front {
  std::size_t end = 0;  ///< behind the digits and separators
  std::size_t comma = std::string_view::npos;
  int commas = 0;
  int points = 0;
  bool standsApart = false;   ///< more digits follow behind a blank
  bool isInThousands = true;  ///< three digits stand between all points, and behind the last
};

std::size_t GroupBlankAt(std::string_view text, std::size_t place) {
  for (const std::string_view blank : kGroupBlanks)
    if (text.substr(place).starts_with(blank)) return blank.size();
  return 0;
}

Front ReadFront(std::string_view text) {
  Front front;
  std::size_t i = text.find_first_not_of(" \t");
  if (i == std::string_view::npos) return front;
  if (text[i] == '-' || text[i] == '+') ++i;
  const std::size_t begin = i;
  std::size_t group = 0;  // digits behind the last point
  for (; i < text.size() && (IsDecimalDigit(text[i]) || text[i] == '.' || text[i] == ','); ++i) {
    if (IsDecimalDigit(text[i])) ++group;
    if (text[i] == '.') {
      front.isInThousands &= front.points++ == 0 || group == 3;
      group = 0;
    }
    if (text[i] == ',' && front.commas++ == 0) front.comma = i;
  }
  front.isInThousands &= group == 3;
  front.end = i;
  const std::size_t blank = GroupBlankAt(text, i);
  const bool isNumber = i > begin && IsDecimalDigit(text[i - 1]);
  front.standsApart = isNumber && blank > 0 && i + blank < text.size() && IsDecimalDigit(text[i + blank]);
  return front;
}

}  // namespace

bool IsUnclearNumber(std::string_view text) {
  const Front front = ReadFront(text);
  return front.standsApart || (front.commas > 0 && front.commas + front.points > 1) ||
         (front.points > 1 && front.isInThousands);
}

std::string WithDecimalPoint(std::string_view text) {
  std::string plain(text);
  const Front front = ReadFront(text);
  if (front.commas == 1 && !IsUnclearNumber(text)) plain[front.comma] = '.';
  return plain;
}

std::optional<double> EnteredNumber(std::string_view text) {
  if (IsUnclearNumber(text)) return std::nullopt;
  const double value = Val(WithDecimalPoint(text));
  if (!std::isfinite(value)) return std::nullopt;
  return value;
}

}  // namespace velk
