#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "model/parameter.h"

namespace velk {

/// The value of a plain formula (see formula_items.h): Val of the text that EvaluateFormula comes to, of which no
/// step is written. Most formulas are plain. Gives nothing, with the statistics as they were, for any other
/// one and where a step depends on how a number is written. Raises what EvaluateFormula raises.
std::optional<double> PlainFormulaValue(std::string_view formula, int bracketCount, std::span<Parameter> additional,
                                        int formulaIndex);

}  // namespace velk
