#include "instruments/reading/time_check.h"

#include "base/numbers.h"

namespace velk {

namespace {

bool IsBelow(std::string_view digits, double limit) {
  const double value = Val(digits);
  return value >= 0 && value < limit;
}

}  // namespace

std::int32_t CountDelimiters(std::string_view line, std::string_view delimiter) {
  if (delimiter.empty()) return 0;
  std::int32_t count = 0;
  if (delimiter.size() == 1) {  // nearly always: many characters at once
    for (const char character : line) count += character == delimiter[0];
    return count;
  }
  for (std::size_t at = line.find(delimiter); at != std::string_view::npos;
       at = line.find(delimiter, at + delimiter.size()))
    ++count;
  return count;
}

bool HasTime(std::string_view line) {
  return line.size() >= 6 && line[2] == ':' && line[5] == ':' && IsBelow(line.substr(0, 2), 24) &&
         IsBelow(line.substr(3, 2), 60);
}

}  // namespace velk
