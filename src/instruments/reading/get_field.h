#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velk {

/// The text from behind `position` to the next delimiter; `position` moves to that delimiter. Positions count bytes
/// from 1, and a line is begun with 0. Where no delimiter follows, or the one found is the line's first character, it
/// gives the rest of the line, or "" at its end; where none follows `position` becomes 0, so a further call begins at
/// the front again. The result points into `line`.
std::string_view GetField(std::string_view line, std::string_view delimiter, std::size_t& position);

/// `text` without its characters of code 0, which idle lines bring in.
std::string CleanUp(std::string text);

}  // namespace velk
