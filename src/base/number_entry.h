#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace velk {

// Numbers that an operator has typed, or pasted from a spreadsheet in whatever language: the decimal comma counts as
// the point.

/// Whether it can't be told which number is meant: a comma beside a point or another comma ("1,234.5"), thousands
/// between points ("1.234.567"), or digits that stand apart ("1 234").
bool IsUnclearNumber(std::string_view text);

/// A number that is clear with a point for its decimal comma; any other text as it is.
std::string WithDecimalPoint(std::string_view text);

/// The number at the front of a text, 0 where there is none; nothing for one that is unclear or beyond the 64-bit
/// range.
std::optional<double> EnteredNumber(std::string_view text);

}  // namespace velk
