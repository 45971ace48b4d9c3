#include "base/number_text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "base/number_reading.h"
#include "base/powers_of_ten.h"

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

template <int count>
constexpr std::array<std::uint64_t, count> PowersOf(std::uint64_t base) {
  std::array<std::uint64_t, count> powers{1};
  for (std::size_t i = 1; i < count; ++i) powers[i] = powers[i - 1] * base;
  return powers;
}

constexpr auto kPowersOf5 = PowersOf<28>(5);  // 5^27 is the last that leaves a product with 53 bits within 128
constexpr auto kWholePowersOf10 = PowersOf<16>(10);

/// The eight digits of a number below 10^8 as numbers 0 to 9 in bytes, the first in the lowest. Fours, then pairs, then
/// single digits are parted, each stage at once in lanes of one word: x / 100 is x * 5243 >> 19 below 10^4, and x / 10
/// is x * 103 >> 10 below 100. The rest goes one lane up: hundreds + ((fours - hundreds * 100) << 16).
std::uint64_t EightDigits(std::uint64_t number) {
  const std::uint64_t fours = number / 10'000 + ((number % 10'000) << 32);
  const std::uint64_t hundreds = ((fours * 5243) >> 19) & 0x0000'007F'0000'007F;
  const std::uint64_t pairs = (fours << 16) - hundreds * ((100 << 16) - 1);
  const std::uint64_t tens = ((pairs * 103) >> 10) & 0x000F'000F'000F'000F;
  return (pairs << 8) - tens * ((10 << 8) - 1);
}

/// A number as ToDecimal gives it, without its sign.
struct Digits {
  Wide text;  ///< 16 characters, the first in the lowest byte: those in use, and '0' behind them
  int count;
  int exponent;
};

/// Digits up to the last one that is not zero. There is such a one.
int CountDigits(std::uint64_t eightDigits) {
  return 8 - static_cast<int>(static_cast<unsigned>(std::countl_zero(eightDigits)) / 8);
}

/// The digits of a whole number that has `digits` of them. Of up to eight one word is enough.
[[gnu::always_inline]] inline void SetDigits(Digits& found, std::uint64_t number, int digits) {
  static_assert(std::endian::native == std::endian::little, "the lowest byte is written first");
  constexpr std::uint64_t kZeros = 0x3030'3030'3030'3030;
  std::uint64_t front = 0;
  std::uint64_t back = 0;
  if (digits <= 8) {
    front = EightDigits(number * kWholePowersOf10[8 - digits]);
  } else {
    const std::uint64_t filledUp = number * kWholePowersOf10[16 - digits];
    front = EightDigits(filledUp / kWholePowersOf10[8]);
    back = EightDigits(filledUp % kWholePowersOf10[8]);
  }
  found.count = back == 0 ? CountDigits(front) : 8 + CountDigits(back);
  found.text = Wide{back | kZeros} << 64 | (front | kZeros);
}

/// A number's digits as one whole number, the first of which counts 10^exponent.
struct WholeDigits {
  std::uint64_t number;
  int exponent;
};

/// The digits by exact integer arithmetic, much faster than to_chars, for what instruments send: 1E-11 to 1E15, of
/// 7 digits from 1E-7. Gives false outside. Ties go to even, as in to_chars.
[[gnu::always_inline]] inline bool FindWholeDigits(WholeDigits& found, double magnitude, int digits) {
  if (!(magnitude >= PowerOfTen(kLeastPowerOfTen) && magnitude < PowerOfTen(digits))) return false;
  const auto bits = std::bit_cast<std::uint64_t>(magnitude);
  const std::uint64_t mantissa = (bits & ((1ULL << 52) - 1)) | (1ULL << 52);
  const int binaryExponent = static_cast<int>(bits >> 52) - 1023;
  // 1233 / 4096 is the logarithm of 2. In this range the exponent is right or one too low. The nearest to a power of
  // ten counts as that power, since it is rounded to it.
  int exponent = (binaryExponent * 1233) >> 12;
  if (magnitude >= PowerOfTen(exponent + 1)) ++exponent;
  // magnitude * 10^scale * 2^64, which leaves the whole number that is looked for in the upper half. Its factor
  // 10^scale * 2^(binaryExponent + 12) is below 2^62, since the number has 50 bits at most.
  const int scale = digits - 1 - exponent;
  const int shift = binaryExponent + scale + 12;
  if (shift < 0) return false;
  const Wide product = Wide{mantissa} * (kPowersOf5[scale] << shift);
  // All but a half is added, and the rest of it where that makes an even number.
  const std::uint64_t odd = static_cast<std::uint64_t>(product >> 64) & 1;
  found.number = static_cast<std::uint64_t>((product + (1ULL << 63) - 1 + odd) >> 64);
  if (found.number == kWholePowersOf10[digits]) {
    found.number /= 10;
    ++exponent;
  }
  found.exponent = exponent;
  return true;
}

[[gnu::always_inline]] inline bool FindDigits(Digits& found, double magnitude, int digits) {
  WholeDigits whole;
  if (!FindWholeDigits(whole, magnitude, digits)) return false;
  found.exponent = whole.exponent;
  SetDigits(found, whole.number, digits);
  return true;
}

/// The same for every finite number. Kept apart, so that the short way needs no room for its text.
[[gnu::noinline]] Digits FindDigitsAnywhere(double magnitude, int digits) {
  // "d.ddde-ddd"
  char text[Decimal::kDigits64 + 10];
  const auto end = std::to_chars(text, std::end(text), magnitude, std::chars_format::scientific, digits - 1).ptr;
  const char* const sign = text + digits + 2;
  Digits found{};
  std::from_chars(sign + 1, end, found.exponent);
  if (*sign == '-') found.exponent = -found.exponent;
  text[1] = text[0];
  std::fill(text + 1 + digits, text + 1 + sizeof found.text, '0');
  std::memcpy(&found.text, text + 1, sizeof found.text);
  found.count = digits;
  while (text[found.count] == '0') --found.count;
  return found;
}

}  // namespace

Decimal ToDecimal(double value, int digits) {
  Decimal decimal;
  decimal.negative = std::signbit(value);
  if (value == 0) return decimal;
  const double magnitude = std::abs(value);
  Digits found;
  if (!FindDigits(found, magnitude, digits)) found = FindDigitsAnywhere(magnitude, digits);
  static_assert(sizeof decimal.digits == sizeof found.text);
  std::memcpy(decimal.digits, &found.text, sizeof found.text);
  decimal.count = found.count;
  decimal.exponent = found.exponent;
  return decimal;
}

namespace {

char* CopyText(char* out, std::string_view text) {
  return std::copy(text.begin(), text.end(), out);
}

/// All 16 characters: a copy of known size takes two instructions.
void CopyDigits(char* out, Wide text) {
  std::memcpy(out, &text, sizeof text);
}

/// "123", "12.5", "1200"
char* WritePlainAboveOne(char* out, const Digits& number) {
  const int whole = number.exponent + 1;
  CopyDigits(out, number.text);
  if (number.count <= whole) return out + whole;
  out[whole] = '.';
  CopyDigits(out + whole + 1, number.text >> (8 * whole));
  return out + number.count + 1;
}

/// "0.00125"
char* WritePlainBelowOne(char* out, const Digits& number) {
  CopyText(out, "0.000");
  out += 1 - number.exponent;
  CopyDigits(out, number.text);
  return out + number.count;
}

/// "1.5E-05"
[[gnu::noinline]] char* WriteExponentForm(char* out, const Digits& number) {
  out = WritePlainAboveOne(out, {.text = number.text, .count = number.count, .exponent = 0});
  out = CopyText(out, number.exponent < 0 ? "E-" : "E+");
  const int exponent = std::abs(number.exponent);
  if (exponent < 10) *out++ = '0';
  return std::to_chars(out, out + 3, exponent).ptr;
}

[[gnu::always_inline]] inline char* WriteText(char* out, double value, int digits) {
  Digits number;
  if (!FindDigits(number, std::abs(value), digits)) {
    if (!std::isfinite(value)) return CopyText(out, std::isnan(value) ? "nan" : value < 0 ? "-inf" : "inf");
    if (value == 0) return CopyText(out, "0");
    number = FindDigitsAnywhere(std::abs(value), digits);
  }
  if (value < 0) *out++ = '-';
  if (number.exponent < -4 || number.exponent >= digits) return WriteExponentForm(out, number);
  return number.exponent < 0 ? WritePlainBelowOne(out, number) : WritePlainAboveOne(out, number);
}

}  // namespace

char* WriteNumberText(char* out, double value) {
  return WriteText(out, value, Decimal::kDigits64);
}

char* WriteNumberText(char* out, float value) {
  return WriteText(out, static_cast<double>(value), Decimal::kDigits32);
}

namespace {

[[gnu::noinline]] double ThroughAnyText(double value) {
  char text[kNumberTextSize];
  return Val({text, WriteNumberText(text, value)});
}

}  // namespace

double ThroughNumberText(double value) {
  constexpr int kDigits = Decimal::kDigits64;
  WholeDigits whole;
  if (!FindWholeDigits(whole, std::abs(value), kDigits)) return ThroughAnyText(value);
  const int places = kDigits - 1 - whole.exponent;
  if (places < 0 || places > kLastPowerOfTen) return ThroughAnyText(value);
  // Digits and power are exact, so that the quotient is rounded once, as the text's number is.
  const double magnitude = static_cast<double>(static_cast<std::int64_t>(whole.number)) / PowerOfTen(places);
  return std::copysign(magnitude, value);
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
