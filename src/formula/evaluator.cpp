#include "formula/evaluator.h"

#include <algorithm>
#include <array>
#include <bit>
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

/// The bit above them: a letter that may have to be lowered or encoded.
constexpr OperatorSet kLetterToPrepare = 1U << (kLastOperator + 1);

/// What can begin with a byte.
constexpr auto kMeanings = [] {
  std::array<std::uint8_t, 256> meanings{};
  for (unsigned c = 'A'; c <= 'Z'; ++c) meanings[c] = kLetterToPrepare;
  for (unsigned c = 0x80; c <= 0xFF; ++c) meanings[c] = kLetterToPrepare;
  meanings['e'] = kLetterToPrepare;
  for (int k = 0; k <= kLastOperator; ++k) {
    const auto first = static_cast<unsigned char>(FormulaTokens[k].front());
    meanings[first] = static_cast<std::uint8_t>(meanings[first] | 1U << k);
  }
  return meanings;
}();

OperatorSet MeaningOf(char c) {
  return kMeanings[static_cast<unsigned char>(c)];
}

/// Whether a text begins with one of these operators. All but "mod" are one character. Inlined: asked of each
/// character.
[[gnu::always_inline]] inline bool BeginsWithOneOf(OperatorSet operators, std::string_view text) {
  const OperatorSet meaning = MeaningOf(text.front()) & operators;
  return meaning != 0 && (meaning != 1U << kRemainder || text.starts_with(FormulaTokens[kRemainder]));
}

[[gnu::noinline]] std::string_view WithoutBlanks(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

std::string_view Trimmed(std::string_view text) {
  const bool plain = text.empty() || (text.front() != ' ' && text.back() != ' ');
  return plain ? text : WithoutBlanks(text);
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

  /// "E+20" to "e+20".
  void Lower() {
    char* const mark = Mark();
    if (mark != end_) *mark = 'e';
  }

  /// "E+20" to "ep20".
  void Encode() {
    char* const mark = Mark();
    if (mark == end_) return;
    *mark = 'e';
    mark[1] = mark[1] == '+' ? 'p' : 'm';
  }

  std::string_view View() const { return {begin_, static_cast<std::size_t>(end_ - begin_)}; }

 private:
  static constexpr std::ptrdiff_t kLongestExponent = 5;  // "E+308"

  char* Mark() { return std::find(std::max(begin_, end_ - kLongestExponent), end_, 'E'); }

  char text_[2 + kNumberTextSize];
  char* begin_ = text_ + 1;
  char* end_;
};

void MarkLeadingMinus(std::string& inner) {
  if (!inner.empty() && inner.front() == '-') inner.front() = '@';
}

/// Lower-cases the text, encodes its exponent marks and tells which operators may stand in it.
[[gnu::noinline]] OperatorSet LowerAndEncode(std::string& inner) {
  const bool ascii =
      std::all_of(inner.begin(), inner.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
  if (!ascii) inner = LowerCase(inner);
  OperatorSet present = 0;
  char previous = 0;
  for (char& c : inner) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    if (previous == 'e' && c == '+') c = 'p';
    if (previous == 'e' && c == '-') c = 'm';
    present |= MeaningOf(c);
    previous = c;
  }
  return present & ~kLetterToPrepare;
}

/// The same, which for most texts is one look that finds no letter.
OperatorSet Prepare(std::string& inner) {
  OperatorSet present = 0;
  for (const char c : inner) {
    present |= MeaningOf(c);
    if (present >= kLetterToPrepare) return LowerAndEncode(inner);
  }
  return present;
}

std::size_t FindOperator(std::string_view text, FormulaToken token) {
  const std::string_view name = FormulaTokens[token];
  std::size_t at = text.find(name.front());
  while (at != std::string_view::npos && !BeginsWithOneOf(1U << token, text.substr(at)))
    at = text.find(name.front(), at + 1);
  return at;
}

struct LeftOperand {
  std::size_t boundary = 0;  ///< characters ahead of the operand
  bool hasMinus = false;     ///< a minus was passed, so a positive result needs a "+" in its place
};

/// Looks back from an operator for the nearest of those that are worked off later; a "-" stays with the operand. One
/// ahead of a "+" is passed too.
LeftOperand FindLeftOperand(std::string_view leftPart, OperatorSet later) {
  LeftOperand operand;
  if (later == 0) return operand;
  for (std::size_t at = leftPart.size(); at-- > 0;) {
    if (!BeginsWithOneOf(later, leftPart.substr(at))) continue;
    const char c = leftPart[at];
    operand.hasMinus = c == '-';
    if (operand.boundary == 0) operand.boundary = at + (c == '-' ? 0 : c == 'm' ? FormulaTokens[kRemainder].size() : 1);
    if (c != '+') break;
  }
  return operand;
}

/// Length of the text from behind an operator to the next one; the first character may be a sign.
std::size_t RightOperandLength(std::string_view rightPart, OperatorSet sameOrLater) {
  if (rightPart.empty()) return 0;
  const auto next = std::find_if(rightPart.begin() + 1, rightPart.end(), [&](const char& c) {
    return BeginsWithOneOf(sameOrLater, {&c, rightPart.end()});
  });
  return static_cast<std::size_t>(next - rightPart.begin());
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
  for (std::size_t at = FindOperator(inner, token); at != std::string::npos; at = FindOperator(inner, token)) {
    const OperatorSet sameOrLater = present >> token << token;
    const std::string_view leftPart = std::string_view(inner).substr(0, at);
    const std::string_view rightPart = std::string_view(inner).substr(at + name.size());
    const LeftOperand left = FindLeftOperand(leftPart, sameOrLater & ~(1U << token));
    const std::size_t rightLength = RightOperandLength(rightPart, sameOrLater);
    const double value = ApplyOperator(OperandValue(Trimmed(leftPart.substr(left.boundary))),
                                       OperandValue(Trimmed(rightPart.substr(0, rightLength))), token);
    ResultText result(value);
    if (value > 0 && left.hasMinus) result.AddPlus();
    result.Encode();
    present |= MeaningOf(result.View().front());
    if (!WriteBack(inner, left.boundary, at + name.size() + rightLength, result.View())) return;
  }
}

/// Works off a text that is one operation of two plain numbers, as most come to be in the end. There is no operator
/// beside it then, and no operand to be bounded or resolved. Gives false, and changes nothing, for any other text.
bool WorkOffSingle(std::string& inner, FormulaToken token) {
  const char* const end = inner.data() + inner.size();
  double left = 0;
  const char* const at = ReadOperand(inner.data(), end, left);
  const std::string_view name = FormulaTokens[token];
  if (at == nullptr || !std::string_view(at, end).starts_with(name)) return false;
  double right = 0;
  if (ReadOperand(at + name.size(), end, right) != end) return false;
  ResultText result(ApplyOperator(left, right, token));
  result.Lower();
  inner = result.View();
  return true;
}

/// Works off a text without brackets.
void WorkOffOperators(std::string& inner) {
  MarkLeadingMinus(inner);
  OperatorSet present = Prepare(inner);
  for (OperatorSet rest = present; rest != 0;) {
    const auto token = static_cast<FormulaToken>(std::countr_zero(rest));
    const OperatorSet others = rest & (rest - 1);
    if (others == 0 && WorkOffSingle(inner, token)) return;
    WorkOffOperator(inner, token, present);
    rest = present >> (token + 1) << (token + 1);
  }
  ResolveOperand(inner);
}

/// Applies the functions whose names end `before`, and cuts the names off. One look at each function, in the order of
/// the table.
void WorkOffFunctions(std::string_view& before, std::string& inner, std::span<Parameter> additional, int formulaIndex) {
  if (before.empty()) return;
  for (int f = kFirstFunction; f <= kLastFunction; ++f) {
    const std::string_view name = FormulaTokens[f];
    if (before.empty() || before.back() != name.back() || !before.ends_with(name)) continue;
    const auto function = static_cast<FormulaToken>(f);
    inner = ResultText(ApplyFunction(function, Val(inner), additional, formulaIndex)).View();
    before.remove_suffix(name.size());
  }
}

/// Works off the bracket that ends at `close`, which is the first to do so.
void WorkOffBracket(std::string& text, std::size_t close, std::span<Parameter> additional, int formulaIndex) {
  static thread_local std::string inner;  // kept, so that its memory is
  const std::string_view ahead = std::string_view(text).substr(0, close);
  const std::size_t open = ahead.rfind('(') + 1;
  inner = ahead.substr(open);
  WorkOffOperators(inner);
  std::string_view before = Trimmed(ahead.substr(0, open == 0 ? 0 : open - 1));
  WorkOffFunctions(before, inner, additional, formulaIndex);

  const std::string_view after = Trimmed(std::string_view(text).substr(close + 1));
  const auto begin = static_cast<std::size_t>(before.data() - text.data());
  const auto afterBegin = static_cast<std::size_t>(after.data() - text.data());
  text.erase(afterBegin + after.size());
  text.replace(begin + before.size(), afterBegin - begin - before.size(), inner);
  text.erase(0, begin);
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
