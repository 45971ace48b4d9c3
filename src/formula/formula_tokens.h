#pragma once

#include <array>
#include <string_view>

namespace velk {

/// The words of the formula language. The index is the priority: operators are worked off from 0 to 6, each one wholly
/// before the next, so "/" goes before "*" and "-" before "+".
inline constexpr std::array<std::string_view, 17> FormulaTokens = {
    "^", "/", "*", "\\", "mod", "-", "+", "pi", "ln", "log", "sin", "cos", "tan", "exp", "avg", "max", "min"};

/// 4 x arctangent(1) as a number is written, which is what "pi" stands for.
inline constexpr std::string_view kPiText = "3.14159265358979";
inline constexpr double kPiValue = 3.14159265358979;

/// Indices of FormulaTokens.
enum FormulaToken : int {
  kPower = 0,
  kDivision = 1,
  kMultiplication = 2,
  kIntegerDivision = 3,
  kRemainder = 4,
  kSubtraction = 5,
  kAddition = 6,
  kLastOperator = kAddition,
  kPi = 7,
  kNaturalLogarithm = 8,
  kFirstFunction = kNaturalLogarithm,
  kDecimalLogarithm = 9,
  kSine = 10,
  kCosine = 11,
  kTangent = 12,
  kExponential = 13,
  kAverage = 14,
  kMaximum = 15,
  kMinimum = 16,
  kLastFunction = kMinimum,
};

}  // namespace velk
