#include "formula/operations.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "base/errors.h"
#include "support/raises.h"

namespace velk {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kInfinite = std::numeric_limits<double>::infinity();
constexpr double kLowest32 = -2147483648.0;
constexpr double kHighest32 = 2147483647.0;

using test::Raised;

ErrorNumber RaisedBy(double left, FormulaToken token, double right) {
  return Raised([&] { ApplyOperator(left, right, token); });
}

/// A function without statistics.
double Apply(FormulaToken function, double argument) {
  return ApplyFunction(function, argument, {}, 1);
}

TEST(ApplyOperator, Calculates) {
  EXPECT_EQ(ApplyOperator(2, 10, kPower), 1024);
  EXPECT_EQ(ApplyOperator(7, 2, kDivision), 3.5);
  EXPECT_EQ(ApplyOperator(7, -2, kMultiplication), -14);
  EXPECT_EQ(ApplyOperator(7, 2, kSubtraction), 5);
  EXPECT_EQ(ApplyOperator(7, 2, kAddition), 9);
}

TEST(ApplyOperator, DividesIntegersTowardZero) {
  EXPECT_EQ(ApplyOperator(7, 2, kIntegerDivision), 3);
  EXPECT_EQ(ApplyOperator(-7, 2, kIntegerDivision), -3);
  EXPECT_EQ(ApplyOperator(7, -2, kIntegerDivision), -3);
  EXPECT_EQ(ApplyOperator(-7, -2, kIntegerDivision), 3);
}

TEST(ApplyOperator, GivesTheRemainderTheSignOfTheLeftOperand) {
  EXPECT_EQ(ApplyOperator(7, 3, kRemainder), 1);
  EXPECT_EQ(ApplyOperator(-7, 3, kRemainder), -1);
  EXPECT_EQ(ApplyOperator(7, -3, kRemainder), 1);
  EXPECT_EQ(ApplyOperator(-7, -3, kRemainder), -1);
}

TEST(ApplyOperator, RoundsIntegerOperandsHalfToEven) {
  EXPECT_EQ(ApplyOperator(7.5, 2, kRemainder), 0);
  EXPECT_EQ(ApplyOperator(2.5, 1, kIntegerDivision), 2);
  EXPECT_EQ(ApplyOperator(3.5, 1, kIntegerDivision), 4);
  EXPECT_EQ(ApplyOperator(-2.5, 1, kIntegerDivision), -2);
  EXPECT_EQ(ApplyOperator(9, 2.5, kIntegerDivision), 4);
}

TEST(ApplyOperator, HasNoMinusZeroAmongIntegers) {
  EXPECT_FALSE(std::signbit(ApplyOperator(-2, 2, kRemainder)));
  EXPECT_FALSE(std::signbit(ApplyOperator(-0.0, 3, kIntegerDivision)));
}

TEST(ApplyOperator, KeepsTheSignOfAZeroProduct) {
  EXPECT_TRUE(std::signbit(ApplyOperator(-0.0, 3, kMultiplication)));
  EXPECT_TRUE(std::signbit(ApplyOperator(0, -3, kDivision)));
}

TEST(ApplyOperator, RaisesDivisionByZero) {
  EXPECT_EQ(RaisedBy(1, kDivision, 0), ErrorNumber::DivisionByZero);
  EXPECT_EQ(RaisedBy(0, kDivision, -0.0), ErrorNumber::DivisionByZero);
  EXPECT_EQ(RaisedBy(1, kIntegerDivision, 0.5), ErrorNumber::DivisionByZero);
  EXPECT_EQ(RaisedBy(1, kRemainder, -0.5), ErrorNumber::DivisionByZero);
}

TEST(ApplyOperator, RaisesInvalidArgumentForAPowerThatIsNotDefined) {
  EXPECT_EQ(RaisedBy(0, kPower, -1), ErrorNumber::InvalidArgument);
  EXPECT_EQ(RaisedBy(-8, kPower, 0.5), ErrorNumber::InvalidArgument);
  EXPECT_EQ(ApplyOperator(0, 0, kPower), 1);
  EXPECT_EQ(ApplyOperator(-2, 3, kPower), -8);
  EXPECT_EQ(ApplyOperator(-2, -1, kPower), -0.5);
}

TEST(ApplyOperator, RaisesOverflowBeyondTheRange) {
  EXPECT_EQ(RaisedBy(kLargest, kAddition, kLargest), ErrorNumber::Overflow);
  EXPECT_EQ(RaisedBy(-kLargest, kSubtraction, kLargest), ErrorNumber::Overflow);
  EXPECT_EQ(RaisedBy(kLargest, kMultiplication, 2), ErrorNumber::Overflow);
  EXPECT_EQ(RaisedBy(kLargest, kDivision, 0.5), ErrorNumber::Overflow);
  EXPECT_EQ(RaisedBy(10, kPower, 400), ErrorNumber::Overflow);
}

TEST(ApplyOperator, RaisesOverflowForAnOperandBeyondTheRange) {
  EXPECT_EQ(RaisedBy(1, kDivision, kInfinite), ErrorNumber::Overflow);
  EXPECT_EQ(RaisedBy(0, kMultiplication, -kInfinite), ErrorNumber::Overflow);
}

TEST(ApplyOperator, RaisesOverflowForIntegersBeyond32Bits) {
  EXPECT_EQ(RaisedBy(kHighest32 + 1, kIntegerDivision, 1), ErrorNumber::Overflow);
  EXPECT_EQ(RaisedBy(kHighest32 + 0.5, kIntegerDivision, 1), ErrorNumber::Overflow);
  EXPECT_EQ(RaisedBy(1, kRemainder, kLowest32 - 1), ErrorNumber::Overflow);
  EXPECT_EQ(RaisedBy(1e20, kRemainder, 0), ErrorNumber::Overflow);
  EXPECT_EQ(ApplyOperator(kHighest32 + 0.4, 1, kIntegerDivision), kHighest32);
  EXPECT_EQ(ApplyOperator(kLowest32 - 0.5, 1, kIntegerDivision), kLowest32);
}

TEST(ApplyOperator, NeverTrapsAtTheEndOfThe32BitRange) {
  EXPECT_EQ(RaisedBy(kLowest32, kIntegerDivision, -1), ErrorNumber::Overflow);
  EXPECT_EQ(RaisedBy(kLowest32, kRemainder, -1), ErrorNumber::Overflow);
}

TEST(ApplyFunction, Calculates) {
  EXPECT_EQ(Apply(kNaturalLogarithm, 1), 0);
  EXPECT_DOUBLE_EQ(Apply(kNaturalLogarithm, 10), 2.302585092994046);
  EXPECT_DOUBLE_EQ(Apply(kDecimalLogarithm, 1000), 3);
  EXPECT_DOUBLE_EQ(Apply(kSine, 1), 0.8414709848078965);
  EXPECT_DOUBLE_EQ(Apply(kCosine, 1), 0.5403023058681398);
  EXPECT_DOUBLE_EQ(Apply(kTangent, 1), 1.5574077246549023);
  EXPECT_DOUBLE_EQ(Apply(kExponential, 1), 2.718281828459045);
}

TEST(ApplyFunction, RaisesInvalidArgumentForALogarithmOfZeroOrBelow) {
  for (const FormulaToken function : {kNaturalLogarithm, kDecimalLogarithm}) {
    for (const double argument : {0.0, -0.0, -1.0}) {
      EXPECT_EQ(Raised([&] { Apply(function, argument); }), ErrorNumber::InvalidArgument) << argument;
    }
  }
}

TEST(ApplyFunction, RaisesOverflowBeyondTheRange) {
  EXPECT_EQ(Raised([] { Apply(kExponential, 710); }), ErrorNumber::Overflow);
  EXPECT_EQ(Raised([] { Apply(kSine, kInfinite); }), ErrorNumber::Overflow);
}

TEST(ApplyFunction, AveragesAllSamples) {
  std::vector<Parameter> additional(2);
  EXPECT_EQ(ApplyFunction(kAverage, 4, additional, 1), 4);
  EXPECT_EQ(ApplyFunction(kAverage, 1, additional, 1), 2.5);
  EXPECT_EQ(ApplyFunction(kAverage, -2, additional, 1), 1);
  EXPECT_EQ(additional[1].AverageCount, 3);
  EXPECT_EQ(additional[1].AverageSum, 3);
}

TEST(ApplyFunction, KeepsTheExtremes) {
  std::vector<Parameter> additional(2);
  EXPECT_EQ(ApplyFunction(kMaximum, -4, additional, 1), 0);
  EXPECT_EQ(ApplyFunction(kMaximum, 4, additional, 1), 4);
  EXPECT_EQ(ApplyFunction(kMaximum, 3, additional, 1), 4);
  EXPECT_EQ(ApplyFunction(kMinimum, 4, additional, 1), 0);
  EXPECT_EQ(ApplyFunction(kMinimum, -4, additional, 1), -4);
  EXPECT_EQ(ApplyFunction(kMinimum, -3, additional, 1), -4);
  EXPECT_EQ(additional[1].RunningMaximum, 4);
  EXPECT_EQ(additional[1].RunningMinimum, -4);
}

TEST(ApplyFunction, DoesNotReplaceAnExtremeByAnEqualValue) {
  std::vector<Parameter> additional(2);
  additional[1].RunningMaximum = -0.0;
  EXPECT_TRUE(std::signbit(ApplyFunction(kMaximum, 0.0, additional, 1)));
}

TEST(ApplyFunction, KeepsTheStateOfEachChannelApart) {
  std::vector<Parameter> additional(3);
  ApplyFunction(kAverage, 10, additional, 1);
  EXPECT_EQ(ApplyFunction(kAverage, 2, additional, 2), 2);
  EXPECT_EQ(additional[1].AverageSum, 10);
}

TEST(ApplyFunction, LeavesTheStateAloneWhenTheSumOverflows) {
  std::vector<Parameter> additional(2);
  ApplyFunction(kAverage, kLargest, additional, 1);
  EXPECT_EQ(Raised([&] { ApplyFunction(kAverage, kLargest, additional, 1); }), ErrorNumber::Overflow);
  EXPECT_EQ(additional[1].AverageCount, 1);
  EXPECT_EQ(additional[1].AverageSum, kLargest);
}

TEST(ApplyFunction, RaisesOverflowWhenTheCountIsFull) {
  std::vector<Parameter> additional(2);
  additional[1].AverageCount = std::numeric_limits<std::int32_t>::max();
  EXPECT_EQ(Raised([&] { ApplyFunction(kAverage, 1, additional, 1); }), ErrorNumber::Overflow);
}

TEST(ApplyFunction, RaisesSubscriptOutOfRangeForAStatisticWithoutAChannel) {
  std::vector<Parameter> additional(2);
  for (const int index : {-1, 0, 2}) {
    EXPECT_EQ(Raised([&] { ApplyFunction(kAverage, 1, additional, index); }), ErrorNumber::SubscriptOutOfRange)
        << index;
  }
}

}  // namespace
}  // namespace velk
