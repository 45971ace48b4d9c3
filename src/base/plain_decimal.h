#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/powers_of_ten.h"

namespace velk {

/// Reads digits with one point at most, without a sign, at the very front of a text. Gives what is behind them; null,
/// and no value, where there is none or where they are too many for this way. Nearly every number is one of these, and
/// is read in a fraction of the time of from_chars, with the same result: the digits as one whole number and the power
/// of ten are numbers that a double holds, so their quotient is the double nearest to the number.
inline const char* ReadPlainMagnitude(const char* begin, const char* end, double& value) {
  constexpr std::size_t kMostDigits = 19;  // of more the number might have run over
  constexpr std::uint64_t kLargestExact = 1ULL << 53;
  std::uint64_t number = 0;
  const auto readDigits = [&](const char* read) {
    for (; read != end; ++read) {
      const unsigned digit = static_cast<unsigned char>(*read) - unsigned{'0'};
      if (digit > 9) break;
      number = number * 10 + digit;
    }
    return read;
  };
  const char* read = readDigits(begin);
  auto digits = static_cast<std::size_t>(read - begin);
  std::size_t places = 0;
  if (read != end && *read == '.') {
    const char* const fraction = read + 1;
    read = readDigits(fraction);
    places = static_cast<std::size_t>(read - fraction);
    digits += places;
  }
  if (digits == 0 || digits > kMostDigits || number > kLargestExact) return nullptr;
  value = static_cast<double>(static_cast<std::int64_t>(number));
  if (places > 0) value /= PowerOfTen(static_cast<std::ptrdiff_t>(places));
  return read;
}

struct PlainDecimal {
  double value = 0;
  std::size_t length = 0;  ///< characters that it takes; 0 where there is none
};

/// What ReadPlainMagnitude reads behind one sign at most; "-0" is minus zero.
inline PlainDecimal ReadPlainDecimal(std::string_view text) {
  const char* const begin = text.data();
  const char* const end = begin + text.size();
  const bool negative = begin != end && *begin == '-';
  const bool hasSign = negative || (begin != end && *begin == '+');
  double value = 0;
  const char* const behind = ReadPlainMagnitude(begin + (hasSign ? 1 : 0), end, value);
  if (behind == nullptr) return {};
  return {negative ? -value : value, static_cast<std::size_t>(behind - begin)};
}

}  // namespace velk
