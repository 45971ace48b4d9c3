#pragma once

#include <cstdint>
#include <string_view>

namespace velk {

// What tells a sound line from a damaged one, the same for every decoder that checks.

/// How often `delimiter` stands in the line, each search starting behind the last hit. 0 for an empty delimiter.
std::int32_t CountDelimiters(std::string_view line, std::string_view delimiter);

/// Whether the line begins with a time "hh:mm:": an hour from 0 to 23 and a minute from 0 to 59. Seconds are not looked
/// at.
bool HasTime(std::string_view line);

}  // namespace velk
