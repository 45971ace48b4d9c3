#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velk {

// Inside a formula that is being worked off, a minus at the front of the text is written "@" and the exponent marks
// "e+" and "e-" are written "ep" and "em", so that each "+" or "-" left is an operator or the sign behind one.

/// Turns the encoded text of an operand back into plain text: the sign, one exponent mark of each kind, and "pi" as a
/// number.
void ResolveOperand(std::string& text);

/// Val of what ResolveOperand makes of the text.
double OperandValue(std::string_view operand);

/// Replaces the first `find` in the text, if there is one.
void ReplaceFirst(std::string& text, std::string_view find, std::string_view replacement);

/// Where the last `find` begins, counted from 1; 0 where there is none.
std::size_t LastPosition(std::string_view text, std::string_view find);

}  // namespace velk
