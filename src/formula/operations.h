#pragma once

#include <span>

#include "formula/formula_tokens.h"
#include "model/parameter.h"

namespace velk {

/// left `token` right. "\" and "mod" round both operands to 32-bit integers (half to even), divide toward zero and give
/// the remainder the sign of `left`. Raises DivisionByZero; InvalidArgument for a power that is not defined (zero to a
/// negative power, a negative base to a broken power); Overflow for an operand or a result that is no finite number,
/// and for "\" and "mod" beyond the 32-bit range. 0^0 is 1.
double ApplyOperator(double left, double right, FormulaToken token);

/// A function of `argument`; angles are radians. "avg", "max" and "min" take the argument as a further sample of the
/// computed channel `additional[formulaIndex]` (from 1) and give the statistic over all its samples. Raises
/// InvalidArgument for a logarithm of zero or below, Overflow for an argument, a result or a sum that is no finite
/// number, SubscriptOutOfRange where a statistic has no such channel.
double ApplyFunction(FormulaToken function, double argument, std::span<Parameter> additional, int formulaIndex);

}  // namespace velk
