#include "formula/formula_input.h"

#include <algorithm>

#include "base/text.h"
#include "formula/formula_tokens.h"

namespace velk {

namespace {

/// "mod" never counts here: it is longer than the one character that stands ahead of the cursor.
bool IsBehindOperator(const FormulaInput& input) {
  if (input.cursor == 0) return false;
  const std::string ahead = Mid(input.text, input.cursor, 1);
  const auto operatorsEnd = FormulaTokens.begin() + kLastOperator + 1;
  return std::find(FormulaTokens.begin(), operatorsEnd, ahead) != operatorsEnd;
}

bool BeginsWithStatistic(std::string_view text) {
  const std::string front = LowerCase(Left(text, 3));
  return front == FormulaTokens[kAverage] || front == FormulaTokens[kMaximum] || front == FormulaTokens[kMinimum];
}

}  // namespace

void InsertText(FormulaInput& input, std::string_view what) {
  const std::size_t length = CharacterCount(input.text);
  const std::size_t at = input.cursor == 0 ? length : std::min(input.cursor, length);
  input.text = Left(input.text, at).append(what).append(Mid(input.text, at + 1));
  input.cursor = at + CharacterCount(what);
}

void InsertOperator(FormulaInput& input, std::string_view caption) {
  if (caption == FormulaTokens[kSubtraction] && IsBehindOperator(input)) InsertText(input, "(");
  InsertText(input, caption);
}

bool InsertFunction(FormulaInput& input, std::string_view caption) {
  if (BeginsWithStatistic(input.text)) return false;
  InsertText(input, caption);
  if (caption == FormulaTokens[kPi]) return true;
  InsertText(input, "()");
  --input.cursor;
  return true;
}

void InsertReference(FormulaInput& input, std::string_view name) {
  InsertText(input, "{" + std::string(name) + "}");
}

}  // namespace velk
