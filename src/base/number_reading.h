#pragma once

#include <string_view>

#include "base/plain_decimal.h"

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

/// Val without blanks and sign: a digit or a point is at `begin`. Gives what is behind the number; null, and 0, where
/// there is none. Of any length, and with an exponent or without.
const char* ReadAnyMagnitude(const char* begin, const char* end, double& value);

/// The same, by the short way where there is one.
inline const char* ReadMagnitude(const char* begin, const char* end, double& value) {
  const char* const behind = ReadPlainMagnitude(begin, end, value);
  const bool isWhole = behind != nullptr && (behind == end || (*behind != 'e' && *behind != 'E'));
  return isWhole ? behind : ReadAnyMagnitude(begin, end, value);
}

}  // namespace velk
