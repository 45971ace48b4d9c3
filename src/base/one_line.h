#pragma once

#include <string>

namespace velk {

/// A text with a blank for each line end and every other control character.
std::string OnOneLine(std::string text);

}  // namespace velk
