#include "instruments/reading/get_field.h"

#include <algorithm>

namespace velk {

namespace {

/// Place of the next delimiter behind `position`, counted from 1; 0 where there is none.
std::size_t NextDelimiter(std::string_view line, std::string_view delimiter, std::size_t position) {
  if (position >= line.size()) return 0;
  const std::size_t found = line.find(delimiter, position);
  return found == std::string_view::npos ? 0 : found + 1;
}

}  // namespace

std::string_view GetField(std::string_view line, std::string_view delimiter, std::size_t& position) {
  const std::size_t from = std::min(position, line.size());
  const std::size_t found = NextDelimiter(line, delimiter, position);
  position = found;
  if (found < 2) return line.substr(from);
  return line.substr(from, found - 1 - from);
}

std::string CleanUp(std::string text) {
  std::erase(text, '\0');
  return text;
}

}  // namespace velk
