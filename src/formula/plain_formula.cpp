#include "formula/plain_formula.h"

#include <bit>
#include <cmath>

#include "base/numbers.h"
#include "formula/formula_items.h"
#include "formula/formula_tokens.h"
#include "formula/operations.h"

namespace velk {

namespace {

using Item = FormulaItem;

// Each rule here is one that the rewriting of the text has (evaluator.cpp), told of items. What they can't tell is left
// to the text.

/// Takes a result through the text that it would be written as. Gives false where that reads as no finite number.
bool GoThroughText(double& result) {
  if (result != 0) result = ThroughNumberText(result);
  return std::isfinite(result);
}

/// A result that is written with a sign, which is an operator then.
Item SignedNumber(double value) {
  const int sign = std::signbit(value) ? kSubtraction : kAddition;
  return {.ahead = static_cast<std::int8_t>(sign), .value = std::abs(value)};
}

/// The value of an operand that has the operator ahead as its sign.
double SignedValue(const Item& item) {
  if (item.isApart) return 0;
  if (item.ahead == kSubtraction) return item.kind == Item::Kind::Nothing ? 0 : -item.value;
  return item.ahead == kAddition ? item.value : 0;
}

/// Whether a minus stands ahead of the pluses ahead.
bool StandsBehindMinus(const Item* item) {
  while (item->ahead == kAddition) --item;
  return item->ahead == kSubtraction;
}

/// Works off the items of one bracket until the first one is all.
class Operations {
 public:
  Operations(Item* first, Item* end) : first_(first), end_(end) {}

  /// Gives false where the text would have to tell how it goes on.
  bool WorkOff() {
    for (const Item* item = first_ + 1; item < end_; ++item) present_ |= 1U << item->ahead;
    while (present_ != 0) {
      const auto token = static_cast<FormulaToken>(std::countr_zero(present_));
      if (!WorkOff(token)) return false;
      present_ = present_ >> (token + 1) << (token + 1);
    }
    return true;
  }

 private:
  bool WorkOff(FormulaToken token);
  bool WorkOffOne(FormulaToken token);
  bool PutBack(double value, FormulaToken token, bool hasSignedRight);

  Item* const first_;
  Item* end_;
  Item* left_ = nullptr;  ///< the last of those that are done with, and the left operand of what comes
  Item* next_ = nullptr;
  unsigned present_ = 0;  ///< bit k: operator k may stand ahead of an item
};

bool Operations::WorkOff(FormulaToken token) {
  left_ = first_;
  for (next_ = first_ + 1; next_ < end_; ++next_) {
    if (next_->ahead != token) {
      *++left_ = *next_;
    } else if (!WorkOffOne(token)) {
      return false;
    }
  }
  end_ = left_ + 1;
  return true;
}

bool Operations::WorkOffOne(FormulaToken token) {
  // A minus ahead goes into the operation, and an operator directly behind this one is a sign.
  const double left = left_->ahead == kSubtraction ? SignedValue(*left_) : left_->value;
  const bool isSigned = next_->kind == Item::Kind::Nothing && next_ + 1 < end_;
  if (isSigned) ++next_;
  double value = ApplyOperator(left, isSigned ? SignedValue(*next_) : next_->value, token);
  return GoThroughText(value) && PutBack(value, token, isSigned);
}

bool Operations::PutBack(double value, FormulaToken token, bool hasSignedRight) {
  const bool isNegative = std::signbit(value);
  if (left_->ahead == kSubtraction) {
    if (value == 0 && !isNegative) return false;  // "5-0" whose minus is gone is "50"
    *left_ = SignedNumber(value);
  } else if (left_ != first_ && (isNegative || (value > 0 && StandsBehindMinus(left_)))) {
    // "2*-3", "1-2++12": the sign stands behind the operator. Of "+-3", where nothing is left to do, the plus goes.
    const bool isSame = token == kSubtraction && left_->kind == Item::Kind::Nothing && !hasSignedRight;
    *next_-- = SignedNumber(value);
    if (isSame) {
      --left_;
    } else {
      *left_ = {.kind = Item::Kind::Nothing, .ahead = left_->ahead};
    }
  } else {
    *left_ = {.ahead = left_->ahead, .value = value};
    return true;
  }
  present_ |= 1U << (isNegative ? kSubtraction : kAddition);
  return true;
}

/// Works off a formula, the bracket first that closes first.
class Brackets {
 public:
  Brackets(std::span<Parameter> additional, int formulaIndex) : additional_(additional), formulaIndex_(formulaIndex) {}

  /// Leaves the first item.
  bool WorkOff(std::span<Item> items) {
    Item* const first = items.data();
    end_ = first;
    for (const Item& item : items) {
      if (item.kind != Item::Kind::Closing) {
        *end_++ = item;
      } else if (!WorkOffLast()) {
        return false;
      }
    }
    return Operations(first, end_).WorkOff();
  }

 private:
  bool WorkOffLast();
  void PutBack(Item& bracket, double value);

  const std::span<Parameter> additional_;
  const int formulaIndex_;
  Item* end_ = nullptr;  ///< of those that are done with
};

bool Brackets::WorkOffLast() {
  Item* bracket = end_ - 1;
  while (bracket->kind != Item::Kind::Opening) --bracket;
  const Item& inner = bracket[1];
  if (!Operations(bracket + 1, end_).WorkOff()) return false;
  double value = inner.value;
  if (bracket->function == kNoToken) {
    if (inner.isApart) return false;  // its blanks come to stand outside
  } else {
    value = ApplyFunction(static_cast<FormulaToken>(bracket->function), value, additional_, formulaIndex_);
    if (!GoThroughText(value)) return false;
  }
  end_ = bracket + 1;
  PutBack(*bracket, value);
  return true;
}

/// A minus of the value is an operator in the text around, except at its very front.
void Brackets::PutBack(Item& bracket, double value) {
  const bool isFront = bracket.ahead == kNoToken && !bracket.isNegated && !bracket.isApart;
  const bool hasSign = std::signbit(value) && !isFront;
  if (bracket.isNegated && !hasSign) value = -value;
  bracket = {.kind = hasSign && !bracket.isApart ? Item::Kind::Nothing : Item::Kind::Number,
             .isApart = bracket.isApart,
             .ahead = bracket.ahead,
             .value = hasSign ? 0 : value};
  if (hasSign) *end_++ = SignedNumber(value);
}

/// What avg, max and min keep from call to call.
class KeptStatistics {
 public:
  KeptStatistics(std::span<Parameter> additional, int formulaIndex) {
    if (formulaIndex < 1 || static_cast<std::size_t>(formulaIndex) >= additional.size()) return;
    channel_ = &additional[static_cast<std::size_t>(formulaIndex)];
    count_ = channel_->AverageCount;
    sum_ = channel_->AverageSum;
    minimum_ = channel_->RunningMinimum;
    maximum_ = channel_->RunningMaximum;
  }

  void PutBack() const {
    if (channel_ == nullptr) return;
    channel_->AverageCount = count_;
    channel_->AverageSum = sum_;
    channel_->RunningMinimum = minimum_;
    channel_->RunningMaximum = maximum_;
  }

 private:
  Parameter* channel_ = nullptr;
  std::int32_t count_ = 0;
  double sum_ = 0;
  double minimum_ = 0;
  double maximum_ = 0;
};

}  // namespace

std::optional<double> PlainFormulaValue(std::string_view formula, int bracketCount, std::span<Parameter> additional,
                                        int formulaIndex) {
  const auto items = ItemsOf(formula, bracketCount);
  if (!items) return std::nullopt;
  const KeptStatistics before(additional, formulaIndex);
  if (Brackets(additional, formulaIndex).WorkOff(*items)) return items->front().value;
  before.PutBack();
  return std::nullopt;
}

}  // namespace velk
