#include "formula/operations.h"

#include <cmath>
#include <limits>

#include "base/errors.h"

namespace velk {

namespace {

double Finite(double value) {
  if (!std::isfinite(value)) throw RuntimeError(ErrorNumber::Overflow);
  return value;
}

double Power(double base, double exponent) {
  const bool zeroBelow = base == 0 && exponent < 0;
  const bool brokenRoot = base < 0 && std::trunc(exponent) != exponent;
  if (zeroBelow || brokenRoot) throw RuntimeError(ErrorNumber::InvalidArgument);
  return Finite(std::pow(base, exponent));
}

struct WholeOperands {
  std::int32_t left;
  std::int32_t right;
};

WholeOperands ToWhole(double left, double right) {
  const WholeOperands whole{ToInt32(left), ToInt32(right)};
  if (whole.right == 0) throw RuntimeError(ErrorNumber::DivisionByZero);
  // The quotient has no 32-bit form, and the processor traps on the remainder too.
  if (whole.left == std::numeric_limits<std::int32_t>::min() && whole.right == -1) {
    throw RuntimeError(ErrorNumber::Overflow);
  }
  return whole;
}

double NaturalLogarithm(double argument) {
  if (argument <= 0) throw RuntimeError(ErrorNumber::InvalidArgument);
  return std::log(argument);
}

double Average(Parameter& channel, double sample) {
  const double sum = Finite(channel.AverageSum + sample);
  if (channel.AverageCount == std::numeric_limits<std::int32_t>::max()) throw RuntimeError(ErrorNumber::Overflow);
  channel.AverageSum = sum;
  ++channel.AverageCount;
  return Divide(channel.AverageSum, channel.AverageCount);
}

double Statistic(FormulaToken function, double sample, Parameter& channel) {
  if (function == kAverage) return Average(channel, sample);
  if (function == kMaximum) {
    if (sample > channel.RunningMaximum) channel.RunningMaximum = sample;
    return channel.RunningMaximum;
  }
  if (sample < channel.RunningMinimum) channel.RunningMinimum = sample;
  return channel.RunningMinimum;
}

Parameter& Channel(std::span<Parameter> additional, int formulaIndex) {
  if (formulaIndex < 1 || static_cast<std::size_t>(formulaIndex) >= additional.size()) {
    throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  }
  return additional[static_cast<std::size_t>(formulaIndex)];
}

}  // namespace

double ApplyOperator(double left, double right, FormulaToken token) {
  Finite(left);
  Finite(right);
  switch (token) {
    case kPower:
      return Power(left, right);
    case kDivision:
      return Divide(left, right);
    case kMultiplication:
      return Finite(left * right);
    case kIntegerDivision: {
      const WholeOperands whole = ToWhole(left, right);
      const std::int32_t quotient = whole.left / whole.right;
      return quotient;
    }
    case kRemainder: {
      const WholeOperands whole = ToWhole(left, right);
      return whole.left % whole.right;
    }
    case kSubtraction:
      return Finite(left - right);
    case kAddition:
      return Finite(left + right);
    default:
      throw RuntimeError(ErrorNumber::InvalidArgument);
  }
}

double ApplyFunction(FormulaToken function, double argument, std::span<Parameter> additional, int formulaIndex) {
  Finite(argument);
  switch (function) {
    case kNaturalLogarithm:
      return NaturalLogarithm(argument);
    case kDecimalLogarithm:
      return NaturalLogarithm(argument) / std::log(10.0);
    case kSine:
      return std::sin(argument);
    case kCosine:
      return std::cos(argument);
    case kTangent:
      return Finite(std::tan(argument));
    case kExponential:
      return Finite(std::exp(argument));
    case kAverage:
    case kMaximum:
    case kMinimum:
      return Statistic(function, argument, Channel(additional, formulaIndex));
    default:
      throw RuntimeError(ErrorNumber::InvalidArgument);
  }
}

}  // namespace velk
