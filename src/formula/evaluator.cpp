#include "formula/evaluator.h"

#include "base/numbers.h"
#include "formula/plain_formula.h"
#include "formula/result_text.h"
#include "formula/rewriting.h"

namespace velk {

void EvaluateFormula(std::string& text, int bracketCount, std::span<Parameter> additional, int formulaIndex) {
  const auto plain = PlainFormulaValue(text, bracketCount, additional, formulaIndex);
  if (!plain || !plain->isComputed) return RewriteFormula(text, bracketCount, additional, formulaIndex);
  ResultText result(plain->value);
  result.Lower();
  text = result.View();
}

double FormulaValue(std::string& text, int bracketCount, std::span<Parameter> additional, int formulaIndex) {
  if (const auto plain = PlainFormulaValue(text, bracketCount, additional, formulaIndex)) return plain->value;
  RewriteFormula(text, bracketCount, additional, formulaIndex);
  return Val(text);
}

}  // namespace velk
