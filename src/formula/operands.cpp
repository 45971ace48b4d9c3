#include "formula/operands.h"

#include "base/numbers.h"
#include "formula/formula_tokens.h"

namespace velk {

void ReplaceFirst(std::string& text, std::string_view find, std::string_view replacement) {
  const std::size_t at = text.find(find);
  if (at != std::string::npos) text.replace(at, find.size(), replacement);
}

std::size_t LastPosition(std::string_view text, std::string_view find) {
  const std::size_t at = text.rfind(find);
  return at == std::string_view::npos ? 0 : at + 1;
}

void ResolveOperand(std::string& text) {
  // The sign keeps its place, since none of what follows can begin with it.
  const bool hasSign = !text.empty() && (text.front() == '@' || text.front() == '-');
  const std::size_t sign = hasSign ? 1 : 0;
  if (text.find("ep") != std::string::npos) ReplaceFirst(text, "p", "+");
  if (text.find("em") != std::string::npos) ReplaceFirst(text, "m", "-");
  if (std::string_view(text).substr(sign) == FormulaTokens[kPi]) text.replace(sign, std::string::npos, kPiText);
  if (hasSign) text.front() = '-';
}

double OperandValue(std::string_view operand) {
  std::string text(operand);
  ResolveOperand(text);
  return Val(text);
}

}  // namespace velk
