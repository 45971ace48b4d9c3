#include "base/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "base/decimal.h"
#include "base/errors.h"

namespace velk {

namespace {

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}
bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

/// Whether the digits in front of the exponent, and the exponent, make a number above 1. Only asked beyond the 64-bit
/// range, where that tells too big from too small.
bool IsHuge(const char* read, const char* end) {
  constexpr long long kFar = 1'000'000'000'000;  // beyond any count of digits
  while (read != end && *read == '0') ++read;
  const char* whole = read;
  while (read != end && IsDigit(*read)) ++read;
  long long magnitude = read - whole;
  if (read != end && *read == '.') {
    const char* fraction = ++read;
    while (read != end && *read == '0') ++read;
    if (magnitude == 0) magnitude = fraction - read;
    while (read != end && IsDigit(*read)) ++read;
  }
  if (read == end) return magnitude > 0;
  ++read;
  const bool negative = *read == '-';
  if (negative || *read == '+') ++read;
  long long exponent = 0;
  for (; read != end; ++read) exponent = std::min(kFar, exponent * 10 + (*read - '0'));
  return magnitude + (negative ? -exponent : exponent) > 0;
}

struct Reading {
  double value = 0;
  std::size_t end = 0;  ///< behind the number; 0 where there is none
};

Reading ReadNumber(std::string_view text) {
  const char* const begin = text.data();
  const char* const end = begin + text.size();
  const char* read = std::find_if_not(begin, end, IsBlank);
  const bool negative = read != end && *read == '-';
  if (read != end && (*read == '-' || *read == '+')) ++read;
  // from_chars would also take "inf", "nan" and a second sign.
  const bool point = read != end && *read == '.';
  if (end - read <= (point ? 1 : 0) || !IsDigit(read[point ? 1 : 0])) return {};
  Reading reading;
  const auto [behind, error] = std::from_chars(read, end, reading.value);
  if (error == std::errc::result_out_of_range) {
    reading.value = IsHuge(read, behind) ? std::numeric_limits<double>::infinity() : 0;
  }
  if (negative) reading.value = -reading.value;
  reading.end = static_cast<std::size_t>(behind - begin);
  return reading;
}

/// The number that a text is as a whole; `end` is 0 for any other text.
Reading ReadWhole(std::string_view text) {
  const Reading reading = ReadNumber(text);
  const bool whole = std::all_of(text.begin() + static_cast<std::ptrdiff_t>(reading.end), text.end(), IsBlank);
  return whole ? reading : Reading{};
}

char* CopyText(char* out, std::string_view text) {
  return std::copy(text.begin(), text.end(), out);
}

/// "123", "12.5", "1200"
char* WritePlainAboveOne(char* out, const Decimal& number) {
  const int whole = number.exponent + 1;
  out = std::copy_n(number.digits, std::min(number.count, whole), out);
  if (number.count <= whole) return std::fill_n(out, whole - number.count, '0');
  *out++ = '.';
  return std::copy(number.digits + whole, number.digits + number.count, out);
}

/// "0.00125"
char* WritePlainBelowOne(char* out, const Decimal& number) {
  out = std::fill_n(CopyText(out, "0."), -number.exponent - 1, '0');
  return std::copy_n(number.digits, number.count, out);
}

/// "1.5E-05"
char* WriteExponentForm(char* out, const Decimal& number) {
  *out++ = number.digits[0];
  if (number.count > 1) {
    *out++ = '.';
    out = std::copy(number.digits + 1, number.digits + number.count, out);
  }
  out = CopyText(out, number.exponent < 0 ? "E-" : "E+");
  const int exponent = std::abs(number.exponent);
  if (exponent < 10) *out++ = '0';
  return std::to_chars(out, out + 3, exponent).ptr;
}

char* WriteText(char* out, double value, int digits) {
  if (std::isnan(value)) return CopyText(out, "nan");
  if (std::isinf(value)) return CopyText(out, value < 0 ? "-inf" : "inf");
  const Decimal number = ToDecimal(value, digits);
  if (number.IsZero()) return CopyText(out, "0");
  if (number.negative) *out++ = '-';
  if (number.exponent < -4 || number.exponent >= digits) return WriteExponentForm(out, number);
  return number.exponent < 0 ? WritePlainBelowOne(out, number) : WritePlainAboveOne(out, number);
}

}  // namespace

double Val(std::string_view text) {
  return ReadNumber(text).value;
}

bool IsNumeric(std::string_view text) {
  const Reading reading = ReadWhole(text);
  return reading.end > 0 && std::isfinite(reading.value);
}

double ToDouble(std::string_view text) {
  const Reading reading = ReadWhole(text);
  if (reading.end == 0) throw RuntimeError(ErrorNumber::TypeMismatch);
  if (!std::isfinite(reading.value)) throw RuntimeError(ErrorNumber::Overflow);
  return reading.value;
}

char* WriteNumberText(char* out, double value) {
  return WriteText(out, value, Decimal::kDigits64);
}

char* WriteNumberText(char* out, float value) {
  return WriteText(out, static_cast<double>(value), Decimal::kDigits32);
}

std::string NumberText(double value) {
  char text[kNumberTextSize];
  return {text, WriteNumberText(text, value)};
}

std::string NumberText(float value) {
  char text[kNumberTextSize];
  return {text, WriteNumberText(text, value)};
}

}  // namespace velk
