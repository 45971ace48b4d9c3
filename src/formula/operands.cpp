#include "formula/operands.h"

#include "base/numbers.h"
#include "formula/formula_tokens.h"

namespace velk {

namespace {

constexpr std::string_view kPiText = "3.14159265358979";  // 4 x arctangent(1) as a number is written

/// Decodes one mark of each kind.
[[gnu::noinline]] void ResolveMarks(std::string& text) {
  if (text.find("ep") != std::string::npos) ReplaceFirst(text, "p", "+");
  if (text.find("em") != std::string::npos) ReplaceFirst(text, "m", "-");
}

/// OperandValue of any text.
[[gnu::noinline]] double ResolvedValue(std::string_view operand) {
  static thread_local std::string text;  // kept, so that its memory is
  text = operand;
  ResolveOperand(text);
  return Val(text);
}

bool HasSign(std::string_view text) {
  return !text.empty() && (text.front() == '@' || text.front() == '-');
}

}  // namespace

void ReplaceFirst(std::string& text, std::string_view find, std::string_view replacement) {
  const std::size_t at = text.find(find);
  if (at != std::string::npos) text.replace(at, find.size(), replacement);
}

std::size_t LastPosition(std::string_view text, std::string_view find) {
  const std::size_t at = find.size() == 1 ? text.rfind(find.front()) : text.rfind(find);
  return at == std::string_view::npos ? 0 : at + 1;
}

void ResolveOperand(std::string& text) {
  // The sign keeps its place, since none of what follows can begin with it.
  const std::size_t sign = HasSign(text) ? 1 : 0;
  if (text.find('e') != std::string::npos) ResolveMarks(text);
  if (std::string_view(text).substr(sign) == FormulaTokens[kPi]) text.replace(sign, std::string::npos, kPiText);
  if (sign > 0) text.front() = '-';
}

const char* ReadOperand(const char* begin, const char* end, double& value) {
  const bool negative = HasSign({begin, end});
  const char* const behind = ReadMagnitude(begin + (negative ? 1 : 0), end, value);
  if (negative) value = -value;
  return behind;
}

double OperandValue(std::string_view operand) {
  // Most operands are plain numbers, and those ResolveOperand leaves alone but for the sign.
  double value = 0;
  const char* const end = operand.data() + operand.size();
  return ReadOperand(operand.data(), end, value) == end ? value : ResolvedValue(operand);
}

}  // namespace velk
