#pragma once

#include <optional>
#include <string_view>

namespace velk {

/// The date and time, in days, of a field that an instrument begins its line with; nothing where it holds none. Read
/// are "21-Nov-2026", "21.11.2026", "21/11/2026", "21/11/26" (of this century), "2026/11/21" and "2026-11-21", alone or
/// followed by blanks and a time as CDate has it; a "T" may lead the time behind "2026-11-21". A zone behind the time
/// ("Z", "+03:00") is none of it: rows have the local time of the machine, and nobody could tell shifted ones apart. CR
/// and LF ahead of the field belong to the end of the line before. A time alone, or a number that would count as days,
/// comes from a damaged line: its sample would stand in a wrong century.
std::optional<double> ReadDateField(std::string_view field);

}  // namespace velk
