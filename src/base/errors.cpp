#include "base/errors.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <utility>

#include "base/texts.h"

namespace velk {

namespace {

constexpr ErrorRow kErrors[] = {
    {ErrorNumber::InvalidArgument, text::ErrorInvalidArgument},
    {ErrorNumber::Overflow, text::ErrorOverflow},
    {ErrorNumber::SubscriptOutOfRange, text::ErrorSubscriptOutOfRange},
    {ErrorNumber::DivisionByZero, text::ErrorDivisionByZero},
    {ErrorNumber::TypeMismatch, text::ErrorTypeMismatch},
    {ErrorNumber::BadFileName, text::ErrorBadFileName},
    {ErrorNumber::FileNotFound, text::ErrorFileNotFound},
    {ErrorNumber::FileAlreadyOpen, text::ErrorFileAlreadyOpen},
    {ErrorNumber::DeviceIOError, text::ErrorDeviceIO},
    {ErrorNumber::FileAlreadyExists, text::ErrorFileAlreadyExists},
    {ErrorNumber::DiskFull, text::ErrorDiskFull},
    {ErrorNumber::DeviceUnavailable, text::ErrorDeviceUnavailable},
    {ErrorNumber::PermissionDenied, text::ErrorPermissionDenied},
    {ErrorNumber::PathNotFound, text::ErrorPathNotFound},
    {ErrorNumber::PortNotOpen, text::ErrorPortNotOpen},
    {ErrorNumber::PortInvalid, text::ErrorPortInvalid},
    {ErrorNumber::Database, text::ErrorDatabase},
    {ErrorNumber::NotADatabase, text::ErrorNotADatabase},
    {ErrorNumber::DatabaseLocked, text::ErrorDatabaseLocked},
    {ErrorNumber::NoCurrentRecord, text::ErrorNoCurrentRecord},
    {ErrorNumber::NoSuchTable, text::ErrorNoSuchTable},
    {ErrorNumber::Internal, text::ErrorInternal},
};

const ErrorRow* FindError(ErrorNumber number) {
  const auto* const row = std::ranges::find(kErrors, number, &ErrorRow::number);
  return row == std::end(kErrors) ? nullptr : row;
}

}  // namespace

std::span<const ErrorRow> ErrorTable() {
  return kErrors;
}

OperatorText ErrorText(ErrorNumber number) {
  if (const ErrorRow* const row = FindError(number)) return row->text;
  return OperatorText(text::ErrorOther) + std::to_string(static_cast<int>(number));
}

OperatorText SystemText(ErrorNumber number, const std::string& words) {
  const ErrorRow* const row = FindError(number);
  return OperatorText::Foreign(words, row != nullptr ? row->text : text::ErrorInternal);
}

OperatorText TextOf(const std::exception& error) {
  if (const auto* const known = dynamic_cast<const RuntimeError*>(&error)) return known->Text();
  return OperatorText::Foreign(error.what(), text::ErrorInternal);
}

RuntimeError::RuntimeError(ErrorNumber number) : RuntimeError(number, ErrorText(number)) {
}

RuntimeError::RuntimeError(ErrorNumber number, OperatorText text)
    : std::runtime_error(text.English()), number_(number), text_(std::move(text)) {
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
