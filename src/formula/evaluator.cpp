#include "formula/evaluator.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/numbers.h"
#include "base/text.h"
#include "formula/formula_tokens.h"
#include "formula/operands.h"
#include "formula/operations.h"

namespace velk {

namespace {

/// Bit k: operator k may stand in the text. A pass for an operator whose bit is not set has nothing to do.
using OperatorSet = unsigned;

constexpr auto kOperatorsByFirstByte = [] {
  std::array<std::uint8_t, 256> sets{};
  for (int k = 0; k <= kLastOperator; ++k) {
    const auto first = static_cast<unsigned char>(FormulaTokens[k].front());
    sets[first] = static_cast<std::uint8_t>(sets[first] | 1U << k);
  }
  return sets;
}();

OperatorSet OperatorsBeginningWith(char c) {
  return kOperatorsByFirstByte[static_cast<unsigned char>(c)];
}

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

/// A value as it is written into a formula.
class ResultText {
 public:
  explicit ResultText(double value) {
    char* end = text_ + 1;
    // Minus zero keeps its sign, so that "5-0*3" does not become "50".
    if (value == 0 && std::signbit(value)) *end++ = '-';
    end_ = WriteNumberText(end, value);
  }

  /// With a "+" in front.
  void AddPlus() {
    *text_ = '+';
    begin_ = text_;
  }

  /// "E+20" to "ep20".
  void Encode() {
    char* const mark = std::find(begin_, end_, 'E');
    if (mark == end_) return;
    *mark = 'e';
    mark[1] = mark[1] == '+' ? 'p' : 'm';
  }

  std::string_view View() const { return {begin_, static_cast<std::size_t>(end_ - begin_)}; }

 private:
  char text_[2 + kNumberTextSize];
  char* begin_ = text_ + 1;
  char* end_;
};

void MarkLeadingMinus(std::string& inner) {
  if (!inner.empty() && inner.front() == '-') inner.front() = '@';
}

/// Lower-cases the text, encodes its exponent marks and tells which operators may stand in it.
OperatorSet LowerAndEncode(std::string& inner) {
  const bool ascii =
      std::all_of(inner.begin(), inner.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
  if (!ascii) inner = LowerCase(inner);
  OperatorSet present = 0;
  char previous = 0;
  for (char& c : inner) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    if (previous == 'e' && c == '+') c = 'p';
    if (previous == 'e' && c == '-') c = 'm';
    present |= OperatorsBeginningWith(c);
    previous = c;
  }
  return present;
}

struct LeftOperand {
  std::size_t boundary = 0;  ///< characters ahead of the operand
  bool hasMinus = false;     ///< a minus was taken into the operand, so a positive result needs a "+" in its place
};

/// Looks back from an operator for those that are worked off later; a "-" stays with the operand.
LeftOperand FindLeftOperand(std::string_view leftPart, int token, OperatorSet present) {
  LeftOperand operand;
  for (int m = token + 1; m <= kLastOperator; ++m) {
    if ((present >> m & 1U) == 0) continue;
    const std::size_t position = LastPosition(leftPart, FormulaTokens[m]);
    if (position <= operand.boundary) continue;
    if (m == kSubtraction) {
      operand.boundary = position - 1;
      operand.hasMinus = true;
    } else {
      operand.boundary = position + FormulaTokens[m].size() - 1;
    }
  }
  return operand;
}

/// Length of the text from behind an operator to the next one; the first character may be a sign.
std::size_t RightOperandLength(std::string_view rightPart, int token, OperatorSet present) {
  std::size_t length = rightPart.size();
  for (int m = token; m <= kLastOperator; ++m) {
    if ((present >> m & 1U) == 0) continue;
    length = std::min(length, rightPart.find(FormulaTokens[m], 1));
  }
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

void WorkOffOperator(std::string& inner, FormulaToken token, OperatorSet& present) {
  const std::string_view name = FormulaTokens[token];
  for (std::size_t at = inner.find(name); at != std::string::npos; at = inner.find(name)) {
    const std::string_view leftPart = std::string_view(inner).substr(0, at);
    const std::string_view rightPart = std::string_view(inner).substr(at + name.size());
    const LeftOperand left = FindLeftOperand(leftPart, token, present);
    const std::size_t rightLength = RightOperandLength(rightPart, token, present);
    const double value = ApplyOperator(OperandValue(Trimmed(leftPart.substr(left.boundary))),
                                       OperandValue(Trimmed(rightPart.substr(0, rightLength))), token);
    ResultText result(value);
    if (value > 0 && left.hasMinus) result.AddPlus();
    result.Encode();
    present |= OperatorsBeginningWith(result.View().front());
    if (!WriteBack(inner, left.boundary, at + name.size() + rightLength, result.View())) return;
  }
}

/// Applies the functions whose names end `before`, and cuts the names off. One look at each function, in the order of
/// the table.
void WorkOffFunctions(std::string_view& before, std::string& inner, std::span<Parameter> additional, int formulaIndex) {
  for (int f = kFirstFunction; f <= kLastFunction; ++f) {
    if (!before.ends_with(FormulaTokens[f])) continue;
    const auto function = static_cast<FormulaToken>(f);
    inner = ResultText(ApplyFunction(function, Val(inner), additional, formulaIndex)).View();
    before.remove_suffix(FormulaTokens[f].size());
  }
}

/// Works off the bracket that closes first, or all of a text without one.
void WorkOffInnermost(std::string& text, std::span<Parameter> additional, int formulaIndex) {
  static thread_local std::string inner;  // kept, so that their memory is
  static thread_local std::string rewritten;

  std::string_view before;
  std::string_view after;
  inner = text;
  if (const std::size_t close = text.find(')'); close != std::string::npos) {
    const std::string_view ahead = std::string_view(text).substr(0, close);
    const std::size_t open = LastPosition(ahead, "(");
    before = Trimmed(ahead.substr(0, open == 0 ? 0 : open - 1));
    inner = ahead.substr(open);
    after = Trimmed(std::string_view(text).substr(close + 1));
  }

  MarkLeadingMinus(inner);
  OperatorSet present = LowerAndEncode(inner);
  for (int k = 0; k <= kLastOperator; ++k) {
    if ((present >> k & 1U) != 0) WorkOffOperator(inner, static_cast<FormulaToken>(k), present);
  }
  ResolveOperand(inner);
  WorkOffFunctions(before, inner, additional, formulaIndex);

  rewritten.assign(before).append(inner).append(after);
  text.swap(rewritten);
  ResolveOperand(text);
}

}  // namespace

void EvaluateFormula(std::string& text, int bracketCount, std::span<Parameter> additional, int formulaIndex) {
  for (int pass = 0; pass <= bracketCount; ++pass) WorkOffInnermost(text, additional, formulaIndex);
}

}  // namespace velk
