#pragma once

#include <span>
#include <string>

#include "model/parameter.h"

namespace velk {

/// What EvaluateFormula does, by the steps that say what that is, each done to the text. Any text takes this way; most
/// formulas take a shorter one to the same result (plain_formula.h).
void RewriteFormula(std::string& text, int bracketCount, std::span<Parameter> additional, int formulaIndex);

}  // namespace velk
