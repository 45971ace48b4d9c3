#pragma once

#include <string_view>

namespace velk {

/// Whether a text is a plain decimal number: blanks around, one sign ahead, digits with one point at most. A damaged
/// byte that leaves a number for Val to read, such as an exponent's letter, is none of these.
bool IsDecimalText(std::string_view text);

/// Whether every field behind the first one, the time, is a plain decimal number. The line ends at its terminator.
bool HasDecimalFields(std::string_view line, std::string_view delimiter, std::string_view terminator);

}  // namespace velk
