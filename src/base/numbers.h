#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velk {

/// The number at the front of a text: blanks and tabs are skipped, then sign, digits with an optional point, and an
/// optional exponent (E or e) are read. What follows is ignored; no number there gives 0. Never fails: a magnitude
/// beyond the 64-bit range gives an infinity, "-0" gives minus zero, "nan" and "inf" are no numbers and give 0.
double Val(std::string_view text);

/// Whether the whole text, blanks at both ends aside, is one finite number in the form that Val reads.
bool IsNumeric(std::string_view text);

/// The value of a text that has to be a number as a whole. Raises TypeMismatch for any other text, Overflow beyond
/// the 64-bit range.
double ToDouble(std::string_view text);

/// Text of a 64-bit float with 15, of a 32-bit float with 7 significant digits: plain decimal with a leading zero
/// ("0.5"), trailing zeros dropped; exponent form ("1E+20", "1.5E-05", at least two digits in the exponent) from 1E15
/// (32-bit: 1E7) up and below 1E-04. Minus zero gives "0".
std::string NumberText(double value);
std::string NumberText(float value);

/// Room to write one of these texts in. The longest, "-1.23456789012345E-308", takes 22; what is written behind the end
/// on the way has no meaning.
inline constexpr std::size_t kNumberTextSize = 40;

/// Writes NumberText(value) to `out`, which has room for kNumberTextSize characters, and gives its end. No zero behind
/// it. For formulas, which write numbers many times a sample.
char* WriteNumberText(char* out, double value);
char* WriteNumberText(char* out, float value);

/// Val(NumberText(value)), mostly without a text: what a number comes to that is kept with 15 digits.
double ThroughNumberText(double value);

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
