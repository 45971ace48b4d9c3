#pragma once

#include <string>
#include <vector>

#include "platform/drawing/surface.h"

namespace velk {

/// The words of a text, between blanks and line breaks.
std::vector<std::string> WordsOf(const std::string& text);

/// As many words a line as fit in `room`; a word that is wider has a line by itself.
std::vector<std::string> Wrapped(const Surface& page, const std::vector<std::string>& words, double room);

/// The lines of a cell, none of them wider than `room`, which is that of a letter at least: broken where the text has
/// line breaks, at blanks, and within a word where that is too wide. One that fits stays as it is. Beyond `most` lines
/// the text ends with an ellipsis.
std::vector<std::string> CellLines(const Surface& page, const std::string& cell, double room, std::size_t most);

}  // namespace velk
