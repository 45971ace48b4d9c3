#include "base/number_reading.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

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

}  // namespace

// No "inf", "nan" and sign, which from_chars would take too.
const char* ReadAnyMagnitude(const char* begin, const char* end, double& value) {
  value = 0;
  const bool point = begin != end && *begin == '.';
  if (end - begin <= (point ? 1 : 0) || !IsDigit(begin[point ? 1 : 0])) return nullptr;
  const auto [behind, error] = std::from_chars(begin, end, value);
  if (error == std::errc::result_out_of_range) {
    value = IsHuge(begin, behind) ? std::numeric_limits<double>::infinity() : 0;
  }
  return behind;
}

namespace {

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
  Reading reading;
  const char* const behind = ReadMagnitude(read, end, reading.value);
  if (behind == nullptr) return {};
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

}  // namespace velk
