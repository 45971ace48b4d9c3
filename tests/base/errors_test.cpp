#include "base/errors.h"

#include <gtest/gtest.h>

#include <limits>

namespace velk {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

template <class Work>
std::optional<ErrorNumber> ErrorOf(Work work) {
  try {
    work();
  } catch (const RuntimeError& error) {
    return error.Number();
  }
  return std::nullopt;
}

TEST(Errors, HaveTheNumbersThatOperatorsKnow) {
  EXPECT_EQ(static_cast<int>(ErrorNumber::InvalidArgument), 5);
  EXPECT_EQ(static_cast<int>(ErrorNumber::Overflow), 6);
  EXPECT_EQ(static_cast<int>(ErrorNumber::SubscriptOutOfRange), 9);
  EXPECT_EQ(static_cast<int>(ErrorNumber::DivisionByZero), 11);
  EXPECT_EQ(static_cast<int>(ErrorNumber::TypeMismatch), 13);
}

TEST(Errors, EachNumberHasItsText) {
  const std::vector<std::pair<ErrorNumber, std::string>> rows = {
      {ErrorNumber::InvalidArgument, "Invalid procedure call or argument"},
      {ErrorNumber::Overflow, "Overflow"},
      {ErrorNumber::SubscriptOutOfRange, "Subscript out of range"},
      {ErrorNumber::DivisionByZero, "Division by zero"},
      {ErrorNumber::TypeMismatch, "Type mismatch"},
      {ErrorNumber::BadFileName, "Bad file name or number"},
      {ErrorNumber::FileNotFound, "File not found"},
      {ErrorNumber::FileAlreadyOpen, "File already open"},
      {ErrorNumber::DeviceIOError, "Device I/O error"},
      {ErrorNumber::FileAlreadyExists, "File already exists"},
      {ErrorNumber::DiskFull, "Disk full"},
      {ErrorNumber::DeviceUnavailable, "Device unavailable"},
      {ErrorNumber::PermissionDenied, "Permission denied"},
      {ErrorNumber::PathNotFound, "Path not found"},
  };
  for (const auto& [number, text] : rows) {
    EXPECT_EQ(ErrorText(number).English(), text);
    EXPECT_EQ(RuntimeError(number).what(), text);
    EXPECT_EQ(RuntimeError(number).Number(), number);
  }
  EXPECT_EQ(ErrorText(static_cast<ErrorNumber>(4711)).English(), "Error 4711");
}

TEST(Errors, AnOwnTextReplacesTheTablesText) {
  const RuntimeError error(ErrorNumber::DeviceUnavailable, "/dev/ttyUSB0 is not there");
  EXPECT_STREQ(error.what(), "/dev/ttyUSB0 is not there");
  EXPECT_EQ(error.Number(), ErrorNumber::DeviceUnavailable);
}

TEST(Divide, RaisesForAZeroDivisorAndForAResultThatIsNoNumber) {
  EXPECT_EQ(Divide(7, 2), 3.5);
  EXPECT_EQ(Divide(0, -4), 0);
  EXPECT_EQ(Divide(1, kInfinity), 0);
  for (const double dividend : {1.0, 0.0, -1.0, kInfinity, kNaN}) {
    EXPECT_EQ(ErrorOf([&] { Divide(dividend, 0.0); }), ErrorNumber::DivisionByZero);
    EXPECT_EQ(ErrorOf([&] { Divide(dividend, -0.0); }), ErrorNumber::DivisionByZero);
  }
  EXPECT_EQ(ErrorOf([] { Divide(1e308, 1e-10); }), ErrorNumber::Overflow);
  EXPECT_EQ(ErrorOf([] { Divide(kInfinity, 2); }), ErrorNumber::Overflow);
  EXPECT_EQ(ErrorOf([] { Divide(kInfinity, kInfinity); }), ErrorNumber::Overflow);
  EXPECT_EQ(ErrorOf([] { Divide(kNaN, 2); }), ErrorNumber::Overflow);
}

TEST(ToInt16, RoundsHalfToEven) {
  const std::vector<std::pair<double, int>> rows = {{0, 0},
                                                    {-0.0, 0},
                                                    {0.5, 0},
                                                    {1.5, 2},
                                                    {2.5, 2},
                                                    {3.5, 4},
                                                    {-0.5, 0},
                                                    {-1.5, -2},
                                                    {-2.5, -2},
                                                    {2.4, 2},
                                                    {2.6, 3},
                                                    {-2.6, -3},
                                                    {0.49999999999999994, 0},
                                                    {32767, 32767},
                                                    {32767.49, 32767},
                                                    {-32768, -32768},
                                                    {-32768.5, -32768}};
  for (const auto& [value, whole] : rows) EXPECT_EQ(ToInt16(value), whole) << value;
}

TEST(ToInt16, RaisesOutsideItsRange) {
  for (const double value : {32767.5, 32768.0, -32768.51, -32769.0, 1e300, -1e300, kInfinity, -kInfinity, kNaN}) {
    EXPECT_EQ(ErrorOf([&] { ToInt16(value); }), ErrorNumber::Overflow) << value;
  }
}

TEST(ToInt32, RoundsHalfToEvenAndRaisesOutsideItsRange) {
  EXPECT_EQ(ToInt32(2147483646.5), 2147483646);
  EXPECT_EQ(ToInt32(2147483647.25), 2147483647);
  EXPECT_EQ(ToInt32(-2147483648.5), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(ToInt32(-7.5), -8);
  for (const double value : {2147483647.5, 2147483648.0, -2147483649.0, 1e300, kInfinity, -kInfinity, kNaN}) {
    EXPECT_EQ(ErrorOf([&] { ToInt32(value); }), ErrorNumber::Overflow) << value;
  }
}

TEST(ToSingle, NarrowsAndRaisesBeyondThe32BitRange) {
  EXPECT_EQ(ToSingle(0.1), 0.1F);
  EXPECT_EQ(ToSingle(-1234.5), -1234.5F);
  EXPECT_TRUE(std::signbit(ToSingle(-0.0)));
  EXPECT_EQ(ToSingle(3.4028234663852886e38), std::numeric_limits<float>::max());
  EXPECT_EQ(ToSingle(1e-60), 0.0F);
  for (const double value : {3.5e38, -3.5e38, 1e300, kInfinity, -kInfinity, kNaN}) {
    EXPECT_EQ(ErrorOf([&] { ToSingle(value); }), ErrorNumber::Overflow) << value;
  }
}

}  // namespace
}  // namespace velk
