#pragma once

#include <span>
#include <string>

#include "model/parameter.h"

namespace velk {

/// Val of the text that EvaluateFormula gives (evaluator.h), with its errors and its statistics; `text` is of no use
/// then. Of a plain formula (plain_formula.h) no step is written, and nothing is allocated once the buffers have grown
/// to the longest.
double FormulaValue(std::string& text, int bracketCount, std::span<Parameter> additional, int formulaIndex);

}  // namespace velk
