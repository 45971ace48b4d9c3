#include "formula/formula_checks.h"

#include <algorithm>

#include "base/text.h"
#include "formula/formula_tokens.h"
#include "formula/texts.h"

namespace velk {

namespace {

void RemoveEach(std::string& text, std::string_view what) {
  text = ReplaceAll(std::move(text), what, {});
}

/// Takes the brackets out in pairs. Gives false when a "(" has no ")" behind it.
bool RemoveBracketPairs(std::string& text) {
  for (std::size_t left = text.find('('); left != std::string::npos; left = text.find('(')) {
    if (text.find(')', left) == std::string::npos) return false;
    text.erase(text.find(')'), 1);
    text.erase(text.find('('), 1);
  }
  return true;
}

void RemoveNumbers(std::string& text) {
  for (char digit = '0'; digit <= '9'; ++digit) RemoveEach(text, {&digit, 1});
  for (const std::string_view part : {".", "e+", "e-"}) RemoveEach(text, part);
}

/// Braces that enclose nothing end it: what they leave is found to be not valid.
void RemoveReferences(std::string& text) {
  for (std::size_t open = text.find('{'); open != std::string::npos; open = text.find('{')) {
    const std::size_t close = text.find('}');
    if (close == std::string::npos || close < open) return;
    text.erase(open, close - open + 1);
  }
}

}  // namespace

FormulaFault CompleteBrackets(std::string& formula, int& rightCount) {
  const auto leftCount = static_cast<int>(std::count(formula.begin(), formula.end(), '('));
  rightCount += static_cast<int>(std::count(formula.begin(), formula.end(), ')'));
  if (leftCount == rightCount) return {};
  if (leftCount - rightCount != 1) return {FormulaFault::BracketNumbersDiffer, {}};
  formula += ')';
  rightCount = leftCount;
  return {};
}

FormulaFault TextFault(std::string formula) {
  RemoveEach(formula, " ");
  RemoveEach(formula, ",");
  if (!RemoveBracketPairs(formula)) return {FormulaFault::RightBracketFirst, {}};
  RemoveNumbers(formula);
  RemoveReferences(formula);
  for (const std::string_view token : FormulaTokens) RemoveEach(formula, token);
  if (formula.empty()) return {};
  return {FormulaFault::NotValid, std::move(formula)};
}

bool CheckBrackets(const FormulaReport& report, std::string& formula, int& rightCount) {
  if (CompleteBrackets(formula, rightCount).kind == FormulaFault::None) return false;
  report.dialogs.Message(
      {.text = text::BracketNumbersDiffer, .title = text::FormulaCalculator, .icon = BoxIcon::Critical});
  return true;
}

bool CheckFormulaText(const FormulaReport& report, std::string_view formula) {
  const FormulaFault fault = TextFault(std::string(formula));
  if (fault.kind == FormulaFault::None) return false;
  report.beep();
  const OperatorText text = fault.kind == FormulaFault::RightBracketFirst
                                ? OperatorText(text::RightBracketFirst)
                                : text::NotValidBefore + fault.rest + text::NotValidAfter;
  report.dialogs.Message({.text = text, .title = {}, .icon = BoxIcon::Critical});
  return true;
}

}  // namespace velk
