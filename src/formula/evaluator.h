#pragma once

#include <span>
#include <string>

#include "model/parameter.h"

namespace velk {

/// Works off the text of a formula, whose references have been replaced by values (see substitute.h), until it is one
/// number as text. The formula is rewritten, not parsed: each operation cuts two operands out of the text and writes
/// its value back with 15 digits, and the order and the details of that are what decides how signs bind
/// (docs/user/formulas.md). Text that is no formula ends as some text too. `bracketCount` is the number of ")".
///
/// `additional` are the computed channels (slot 0 unused); avg, max and min keep their state in the one at
/// `formulaIndex`, at every call.
///
/// Raises DivisionByZero, InvalidArgument, Overflow, SubscriptOutOfRange; `text` is then of no use.
void EvaluateFormula(std::string& text, int bracketCount, std::span<Parameter> additional, int formulaIndex);

}  // namespace velk
