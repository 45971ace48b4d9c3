#include "formula/formula_items.h"

#include <array>
#include <vector>

#include "base/number_reading.h"
#include "formula/formula_tokens.h"

namespace velk {

namespace {

/// The operator that begins with a byte.
constexpr auto kOperators = [] {
  std::array<int, 256> operators{};
  operators.fill(kNoToken);
  for (int k = 0; k <= kLastOperator; ++k) operators[static_cast<unsigned char>(FormulaTokens[k].front())] = k;
  return operators;
}();

/// Takes the items off the front of a formula. Each function gives false where there is no rule for what stands there.
class Cutter {
 public:
  /// There is room at `items` for one more than the text has characters: each takes one, or the operator behind it
  /// does.
  Cutter(std::string_view text, FormulaItem* items)
      : at_(text.data()), end_(text.data() + text.size()), first_(items), next_(items) {}

  bool TakeAll(int bracketCount) {
    // Blanks at the front are cut off when a bracket is worked off, and stay where there is none.
    if (at_ == end_ || *at_ == ' ') return false;
    while (!isWhole_) {
      if (!TakeItem()) return false;
    }
    return opened_ == closed_ && closed_ == bracketCount;
  }

  std::span<FormulaItem> Taken() const { return {first_, next_}; }

 private:
  bool TakeItem();
  bool TakeNumber(FormulaItem& item);
  bool TakePi(FormulaItem& item);
  bool TakeFunction(FormulaItem& item);
  bool TakeOpening(FormulaItem& item);
  bool TakeBehindOperand();
  bool TakeOperator(int token);

  bool TakeBlanks() {
    const char* const from = at_;
    while (at_ != end_ && *at_ == ' ') ++at_;
    return at_ != from;
  }

  bool StandsHere(std::string_view name) const { return std::string_view(at_, end_).starts_with(name); }

  /// The operator at this place. All but "mod" are one character.
  int OperatorHere() const {
    const int found = kOperators[static_cast<unsigned char>(*at_)];
    return found != kRemainder || StandsHere(FormulaTokens[kRemainder]) ? found : kNoToken;
  }

  const char* at_;
  const char* const end_;
  FormulaItem* const first_;
  FormulaItem* next_;             ///< behind those that were taken
  std::int8_t ahead_ = kNoToken;  ///< none at the front of the formula and of each bracket
  int opened_ = 0;
  int closed_ = 0;
  bool isWhole_ = false;  ///< the text has ended behind an operand
};

/// Takes an operand with what is behind it, what opens a bracket, or nothing but the operator that a sign is.
bool Cutter::TakeItem() {
  FormulaItem& item = *next_;
  item = {.isApart = TakeBlanks(), .ahead = ahead_};
  bool isBehindBlanks = item.isApart;
  if (ahead_ == kNoToken && !item.isApart && at_ != end_ && *at_ == '-') {
    item.isNegated = true;
    ++at_;
    isBehindBlanks = TakeBlanks();
  }
  if (at_ == end_) return false;
  if (const int next = OperatorHere(); next != kNoToken) {
    item.kind = item.isApart ? FormulaItem::Kind::Number : FormulaItem::Kind::Nothing;
    ++next_;
    return TakeOperator(next);
  }
  if (*at_ == '(') return TakeOpening(item);
  if (item.isNegated && isBehindBlanks) return false;  // the minus is none of the number's, but no operator either
  const bool isWord = *at_ >= 'a';
  if (isWord && !StandsHere(FormulaTokens[kPi])) return TakeFunction(item);
  if (isWord ? !TakePi(item) : !TakeNumber(item)) return false;
  if (item.isNegated) item.value = -item.value;
  ++next_;
  return TakeBehindOperand();
}

bool Cutter::TakeNumber(FormulaItem& item) {
  const char* const behind = ReadMagnitude(at_, end_, item.value);
  if (behind == nullptr) return false;
  at_ = behind;
  return true;
}

/// A plus is no sign of it, and it is nothing with blanks.
bool Cutter::TakePi(FormulaItem& item) {
  at_ += FormulaTokens[kPi].size();
  item.value = kPiValue;
  const bool isBehindSign = ahead_ == kAddition && next_[-1].kind == FormulaItem::Kind::Nothing;
  return !item.isApart && !isBehindSign && (at_ == end_ || *at_ != ' ');
}

bool Cutter::TakeFunction(FormulaItem& item) {
  int function = kFirstFunction;
  while (!StandsHere(FormulaTokens[function])) {
    if (++function > kLastFunction) return false;
  }
  at_ += FormulaTokens[function].size();
  TakeBlanks();
  item.function = static_cast<std::int8_t>(function);
  return at_ != end_ && *at_ == '(' && TakeOpening(item);
}

/// Blanks ahead of a bracket go with it, but not those ahead of its function.
bool Cutter::TakeOpening(FormulaItem& item) {
  item.kind = FormulaItem::Kind::Opening;
  if (item.function == kNoToken) item.isApart = false;
  ++next_;
  ++at_;
  ++opened_;
  ahead_ = kNoToken;
  return true;
}

/// Takes brackets that close, and the operator.
bool Cutter::TakeBehindOperand() {
  TakeBlanks();
  while (at_ != end_ && *at_ == ')') {
    if (++closed_ > opened_) return false;
    *next_++ = {.kind = FormulaItem::Kind::Closing};
    ++at_;
    TakeBlanks();
  }
  isWhole_ = at_ == end_;
  return isWhole_ || TakeOperator(OperatorHere());
}

bool Cutter::TakeOperator(int token) {
  if (token == kNoToken) return false;
  at_ += FormulaTokens[token].size();
  ahead_ = static_cast<std::int8_t>(token);
  return true;
}

}  // namespace

std::optional<std::span<FormulaItem>> ItemsOf(std::string_view formula, int bracketCount) {
  static thread_local std::vector<FormulaItem> items;  // kept, so that its memory is
  if (items.size() <= formula.size()) items.resize(formula.size() + 1);
  Cutter cutter(formula, items.data());
  if (!cutter.TakeAll(bracketCount)) return std::nullopt;
  return cutter.Taken();
}

}  // namespace velk
