#include "formula/evaluator.h"

#include <algorithm>
#include <string_view>

#include "base/numbers.h"
#include "base/text.h"
#include "formula/formula_tokens.h"
#include "formula/operands.h"
#include "formula/operations.h"
#include "formula/result_text.h"

namespace velk {

namespace {

void MarkLeadingMinus(std::string& inner) {
  if (!inner.empty() && inner.front() == '-') inner.front() = '@';
}

void LowerAndEncode(std::string& inner) {
  inner = ReplaceAll(ReplaceAll(LowerCase(inner), "e+", "ep"), "e-", "em");
}

struct LeftOperand {
  std::size_t boundary = 0;  ///< characters ahead of the operand
  bool hasMinus = false;     ///< a minus was passed, so a positive result needs a "+" in its place
};

/// Looks ahead of an operator for the nearest of those that are worked off later; a "-" stays with the operand.
LeftOperand FindLeftOperand(std::string_view leftPart, FormulaToken token) {
  LeftOperand operand;
  for (int later = token + 1; later <= kLastOperator; ++later) {
    const std::size_t at = LastPosition(leftPart, FormulaTokens[later]);
    if (at <= operand.boundary) continue;
    const bool isMinus = later == kSubtraction;
    operand.boundary = isMinus ? at - 1 : at + FormulaTokens[later].size() - 1;
    operand.hasMinus |= isMinus;
  }
  return operand;
}

/// Length of the text from behind an operator to the next one; the first character may be a sign.
std::size_t RightOperandLength(std::string_view rightPart, FormulaToken token) {
  std::size_t length = rightPart.size();
  for (int k = token; k <= kLastOperator; ++k) length = std::min(length, rightPart.find(FormulaTokens[k], 1));
  return length;
}

/// Puts `result` in the place of an operation. Gives false when nothing came of it.
bool WriteBack(std::string& inner, std::size_t begin, std::size_t end, std::string_view result) {
  if (std::string_view(inner).substr(begin, end - begin) != result) {
    inner.replace(begin, end - begin, result);
  } else if (begin > 0) {
    // Only "+-3" comes to this: nothing stands between the signs, and 0-3 is "-3" again. It is read as "-3".
    inner.erase(begin - 1, 1);
  } else {
    return false;
  }
  MarkLeadingMinus(inner);
  return true;
}

void WorkOffOperator(std::string& inner, FormulaToken token) {
  const std::string_view name = FormulaTokens[token];
  for (std::size_t at = inner.find(name); at != std::string::npos; at = inner.find(name)) {
    const std::string_view leftPart = std::string_view(inner).substr(0, at);
    const std::string_view rightPart = std::string_view(inner).substr(at + name.size());
    const LeftOperand left = FindLeftOperand(leftPart, token);
    const std::size_t rightLength = RightOperandLength(rightPart, token);
    const double value = ApplyOperator(OperandValue(Trimmed(leftPart.substr(left.boundary))),
                                       OperandValue(Trimmed(rightPart.substr(0, rightLength))), token);
    ResultText result(value);
    result.Encode();
    const std::string written = (value > 0 && left.hasMinus ? "+" : "") + std::string(result.View());
    if (!WriteBack(inner, left.boundary, at + name.size() + rightLength, written)) return;
  }
}

/// Works off a text without brackets.
void WorkOffOperators(std::string& inner) {
  MarkLeadingMinus(inner);
  LowerAndEncode(inner);
  for (int k = 0; k <= kLastOperator; ++k) WorkOffOperator(inner, static_cast<FormulaToken>(k));
  ResolveOperand(inner);
}

/// Applies the functions whose names end `before`, and cuts the names off. One look at each function, in the order of
/// the table.
void WorkOffFunctions(std::string_view& before, std::string& inner, std::span<Parameter> additional, int formulaIndex) {
  for (int f = kFirstFunction; f <= kLastFunction; ++f) {
    if (!before.ends_with(FormulaTokens[f])) continue;
    inner = ResultText(ApplyFunction(static_cast<FormulaToken>(f), Val(inner), additional, formulaIndex)).View();
    before.remove_suffix(FormulaTokens[f].size());
  }
}

/// Works off the bracket that ends at `close`, which is the first to do so.
void WorkOffBracket(std::string& text, std::size_t close, std::span<Parameter> additional, int formulaIndex) {
  const std::string_view ahead = std::string_view(text).substr(0, close);
  const std::size_t open = LastPosition(ahead, "(");
  std::string inner(ahead.substr(open));
  WorkOffOperators(inner);
  std::string_view before = Trimmed(ahead.substr(0, open == 0 ? 0 : open - 1));
  WorkOffFunctions(before, inner, additional, formulaIndex);
  text = std::string(before).append(inner).append(Trimmed(std::string_view(text).substr(close + 1)));
}

}  // namespace

void EvaluateFormula(std::string& text, int bracketCount, std::span<Parameter> additional, int formulaIndex) {
  for (int pass = 0; pass <= bracketCount; ++pass) {
    const std::size_t close = text.find(')');
    if (close == std::string::npos) {
      WorkOffOperators(text);
    } else {
      WorkOffBracket(text, close, additional, formulaIndex);
    }
    ResolveOperand(text);
  }
}

}  // namespace velk
