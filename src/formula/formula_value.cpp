#include "formula/formula_value.h"

#include "base/numbers.h"
#include "formula/evaluator.h"
#include "formula/plain_formula.h"

namespace velk {

double FormulaValue(std::string& text, int bracketCount, std::span<Parameter> additional, int formulaIndex) {
  if (const auto plain = PlainFormulaValue(text, bracketCount, additional, formulaIndex)) return *plain;
  EvaluateFormula(text, bracketCount, additional, formulaIndex);
  return Val(text);
}

}  // namespace velk
