#include "platform/errors.h"

#include <cmath>
#include <limits>

namespace velk {

std::string ErrorText(ErrorNumber number) {
  switch (number) {
    case ErrorNumber::InvalidArgument:
      return "Invalid procedure call or argument";
    case ErrorNumber::Overflow:
      return "Overflow";
    case ErrorNumber::SubscriptOutOfRange:
      return "Subscript out of range";
    case ErrorNumber::DivisionByZero:
      return "Division by zero";
    case ErrorNumber::TypeMismatch:
      return "Type mismatch";
    case ErrorNumber::BadFileName:
      return "Bad file name or number";
    case ErrorNumber::FileNotFound:
      return "File not found";
    case ErrorNumber::FileAlreadyOpen:
      return "File already open";
    case ErrorNumber::DeviceIOError:
      return "Device I/O error";
    case ErrorNumber::FileAlreadyExists:
      return "File already exists";
    case ErrorNumber::DiskFull:
      return "Disk full";
    case ErrorNumber::DeviceUnavailable:
      return "Device unavailable";
    case ErrorNumber::PermissionDenied:
      return "Permission denied";
    case ErrorNumber::PathNotFound:
      return "Path not found";
    case ErrorNumber::PortNotOpen:
      return "The port is not open";
    case ErrorNumber::PortInvalid:
      return "Invalid port number";
    case ErrorNumber::Database:
      return "Database error";
    case ErrorNumber::NotADatabase:
      return "Unrecognized database format";
    case ErrorNumber::DatabaseLocked:
      return "The database is locked";
    case ErrorNumber::NoCurrentRecord:
      return "No current record";
    case ErrorNumber::NoSuchTable:
      return "The table does not exist";
  }
  return "Error " + std::to_string(static_cast<int>(number));
}

RuntimeError::RuntimeError(ErrorNumber number) : RuntimeError(number, ErrorText(number)) {
}

RuntimeError::RuntimeError(ErrorNumber number, const std::string& text) : std::runtime_error(text), number_(number) {
}

double Divide(double a, double b) {
  if (b == 0) throw RuntimeError(ErrorNumber::DivisionByZero);
  const double quotient = a / b;
  if (!std::isfinite(quotient)) throw RuntimeError(ErrorNumber::Overflow);
  return quotient;
}

namespace {

// Half to even whatever rounding mode a library has left set, so not std::nearbyint.
double RoundHalfToEven(double value) {
  const double below = std::floor(value);
  const double rest = value - below;
  if (rest < 0.5) return below;
  if (rest > 0.5) return below + 1;
  return std::fmod(below, 2) == 0 ? below : below + 1;
}

template <class Integer>
Integer ToInteger(double value) {
  const double rounded = RoundHalfToEven(value);
  // Written so that NaN fails.
  if (!(rounded >= std::numeric_limits<Integer>::min() && rounded <= std::numeric_limits<Integer>::max())) {
    throw RuntimeError(ErrorNumber::Overflow);
  }
  return static_cast<Integer>(rounded);
}

}  // namespace

std::int16_t ToInt16(double value) {
  return ToInteger<std::int16_t>(value);
}

std::int32_t ToInt32(double value) {
  return ToInteger<std::int32_t>(value);
}

float ToSingle(double value) {
  const float narrowed = static_cast<float>(value);
  if (!std::isfinite(narrowed)) throw RuntimeError(ErrorNumber::Overflow);
  return narrowed;
}

}  // namespace velk
