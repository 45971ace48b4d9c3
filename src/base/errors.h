#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>

#include "base/operator_text.h"

namespace velk {

/// Numbers of the run-time errors. An operator who phones in reads the text; a test compares the number.
enum class ErrorNumber {
  InvalidArgument = 5,
  Overflow = 6,
  SubscriptOutOfRange = 9,
  DivisionByZero = 11,
  TypeMismatch = 13,
  BadFileName = 52,
  FileNotFound = 53,
  FileAlreadyOpen = 55,
  DeviceIOError = 57,
  FileAlreadyExists = 58,
  DiskFull = 61,
  DeviceUnavailable = 68,
  PermissionDenied = 70,
  PathNotFound = 76,
  PortNotOpen = 8018,
  PortInvalid = 8002,
  Database = 3000,  ///< a database failure that has no number of its own
  NotADatabase = 3343,
  DatabaseLocked = 3356,
  NoCurrentRecord = 3021,
  NoSuchTable = 3078,
  Internal = 51,  ///< an error that no procedure should meet: a defect
};

struct ErrorRow {
  ErrorNumber number;
  MessageText text;
};

/// The whole table, a row for each number.
std::span<const ErrorRow> ErrorTable();

/// The text of an error number; "Error " and the number where the table has none.
OperatorText ErrorText(ErrorNumber number);

/// The operating system's words for a failure that counts as `number`.
OperatorText SystemText(ErrorNumber number, const std::string& words);

/// What an operator is told of an error: the text of a RuntimeError, the words of any other, which is a defect.
OperatorText TextOf(const std::exception& error);

/// A statement that could not be carried out. Event procedures show its text and offer Retry (see procedure.h). what()
/// is the text in English.
class RuntimeError : public std::runtime_error {
 public:
  explicit RuntimeError(ErrorNumber number);
  /// `text` replaces the table's text where more can be said: which device, which settings key.
  RuntimeError(ErrorNumber number, OperatorText text);

  ErrorNumber Number() const { return number_; }
  const OperatorText& Text() const { return text_; }

 private:
  ErrorNumber number_;
  OperatorText text_;
};

/// a / b; a divisor of zero raises DivisionByZero, a result that is no finite number raises Overflow.
double Divide(double a, double b);

/// Round half to even; NaN and values outside the type raise Overflow.
std::int16_t ToInt16(double value);
std::int32_t ToInt32(double value);

/// Narrow to 32-bit float; NaN and magnitudes beyond the 32-bit range raise Overflow.
float ToSingle(double value);

}  // namespace velk
