#pragma once

#include <string>
#include <string_view>

namespace velk {

/// Format a number by a picture: "0" a digit that is always there, "#" one that is there if needed, "." the decimal
/// point, "," between digits groups thousands, "%" times 100, "e+00", "E+0", "e-00" exponent forms ("e+" always shows a
/// sign, "e-" only a minus), quoted text and "\c" as literals, other characters as they stand, up to three sections
/// divided by ";" (positive, negative, zero). The value is first taken to 15 significant digits and rounded half away
/// from zero; a result that rounds to zero carries no minus. An empty picture gives NumberText. NaN gives "nan",
/// infinities "inf" and "-inf".
std::string Format(double value, std::string_view picture);

/// The same for a 32-bit float: it is widened through its 64-bit value.
std::string Format(float value, std::string_view picture);

/// What Format(value, picture) appends, without allocating where `out` has room: value labels change with every sample.
void FormatTo(std::string& out, double value, std::string_view picture);

}  // namespace velk
