#pragma once

#include <cstddef>
#include <string_view>

namespace velk {

/// Whether the text ends in CR LF or LF CR.
inline bool EndsALine(std::string_view text) {
  return text.ends_with("\r\n") || text.ends_with("\n\r");
}

/// Bytes of a line that are kept: all of it where the terminator begins at its very last character, otherwise those
/// ahead of the terminator, and none where there is no terminator.
inline std::size_t KeptOfLine(std::string_view line, std::string_view terminator) {
  const std::size_t found = line.find(terminator);
  if (found == std::string_view::npos) return 0;
  return found + 1 < line.size() ? found : line.size();
}

}  // namespace velk
