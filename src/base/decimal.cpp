#include "base/decimal.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace velk {

char Decimal::DigitAt(int power) const {
  const int at = exponent - power;
  return at >= 0 && at < count ? digits[at] : '0';
}

void Decimal::RoundTo(int power) {
  const int kept = exponent - power + 1;
  if (kept >= count) return;
  const bool up = kept >= 0 && digits[kept] >= '5';
  count = std::max(kept, 0);
  if (up) {
    while (count > 0 && digits[count - 1] == '9') --count;
    if (count > 0) {
      ++digits[count - 1];
    } else {
      digits[0] = '1';
      count = 1;
      ++exponent;
    }
  }
  while (count > 0 && digits[count - 1] == '0') --count;
  if (count == 0) exponent = 0;
}

namespace {

__extension__ using Wide = unsigned __int128;

template <std::size_t count>
constexpr std::array<std::uint64_t, count> PowersOf(std::uint64_t base) {
  std::array<std::uint64_t, count> powers{1};
  for (std::size_t i = 1; i < count; ++i) powers[i] = powers[i - 1] * base;
  return powers;
}

constexpr auto kPowersOf5 = PowersOf<28>(5);  // 5^27 is the last that leaves a product with 53 bits within 128
constexpr auto kPowersOf10 = PowersOf<16>(10);

void DropTrailingZeros(Decimal& decimal) {
  while (decimal.count > 0 && decimal.digits[decimal.count - 1] == '0') --decimal.count;
}

/// The digits by exact integer arithmetic, much faster than to_chars, for what instruments send: 1E-12 to 1E15.
/// Gives false outside. Ties go to even, as in to_chars.
bool FindDigits(Decimal& decimal, double magnitude, int digits) {
  if (!(magnitude >= 1e-12 && magnitude < static_cast<double>(kPowersOf10[digits]))) return false;
  const auto bits = std::bit_cast<std::uint64_t>(magnitude);
  const std::uint64_t mantissa = (bits & ((1ULL << 52) - 1)) | (1ULL << 52);
  const int binaryExponent = static_cast<int>(bits >> 52) - 1075;
  // 1233 / 4096 is the logarithm of 2. In this range the exponent is right or one too low, which the digits tell.
  decimal.exponent = ((binaryExponent + 52) * 1233) >> 12;
  for (;;) {
    const int scale = digits - 1 - decimal.exponent;
    if (scale < 0 || scale >= static_cast<int>(kPowersOf5.size())) return false;
    // magnitude * 10^scale, the factor of 2^scale being part of the shift
    const Wide product = Wide{mantissa} * kPowersOf5[scale];
    const int shift = -(binaryExponent + scale);
    auto whole = static_cast<std::uint64_t>(product >> shift);
    if (whole >= kPowersOf10[digits]) {
      ++decimal.exponent;
      continue;
    }
    const Wide rest = product - (Wide{whole} << shift);
    const Wide half = Wide{1} << (shift - 1);
    if (rest > half || (rest == half && whole % 2 == 1)) ++whole;
    if (whole == kPowersOf10[digits]) {
      whole /= 10;
      ++decimal.exponent;
    }
    std::to_chars(decimal.digits, decimal.digits + digits, whole);
    decimal.count = digits;
    return true;
  }
}

/// The same for every finite number.
void FindDigitsAnywhere(Decimal& decimal, double magnitude, int digits) {
  // "d.ddde-ddd"
  char text[Decimal::kDigits64 + 10];
  const auto end = std::to_chars(text, std::end(text), magnitude, std::chars_format::scientific, digits - 1).ptr;
  decimal.digits[0] = text[0];
  std::copy_n(text + 2, digits - 1, decimal.digits + 1);
  decimal.count = digits;
  const char* sign = text + digits + 2;
  std::from_chars(sign + 1, end, decimal.exponent);
  if (*sign == '-') decimal.exponent = -decimal.exponent;
}

}  // namespace

Decimal ToDecimal(double value, int digits) {
  Decimal decimal;
  decimal.negative = std::signbit(value);
  if (value == 0) return decimal;
  const double magnitude = std::abs(value);
  if (!FindDigits(decimal, magnitude, digits)) FindDigitsAnywhere(decimal, magnitude, digits);
  DropTrailingZeros(decimal);
  return decimal;
}

}  // namespace velk
