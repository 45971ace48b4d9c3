#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "model/parameter.h"

namespace velk {

struct PlainValue {
  double value = 0;
  bool isComputed = false;  ///< otherwise the formula is a number, which keeps its text
};

/// The value of a plain formula (see formula_items.h): Val of the text that the rewriting of its text comes to, of
/// which no step is written. Most formulas are plain. Gives nothing, with the statistics as they were, for any other
/// one and where a step depends on how a number is written. Raises what EvaluateFormula raises.
std::optional<PlainValue> PlainFormulaValue(std::string_view formula, int bracketCount, std::span<Parameter> additional,
                                            int formulaIndex);

}  // namespace velk
