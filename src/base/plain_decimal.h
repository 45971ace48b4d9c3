#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace velk {

struct PlainDecimal {
  double value = 0;
  std::size_t length = 0;  ///< characters that it takes; 0 where there is none
};

/// The number at the very front of a text that is digits with one point at most, behind one sign at most; "-0" is minus
/// zero. None where digits are missing or are more than 15, zeros in front included. What instruments send is nearly
/// always such a number, and it is read in a fraction of the time of from_chars, with the same result: digits and power
/// of ten are whole numbers that a double holds, so their quotient is the double nearest to the number.
inline PlainDecimal ReadPlainDecimal(std::string_view text) {
  static constexpr std::array<double, 16> kPowersOf10 = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                         1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  const char* read = text.data();
  const char* const end = read + text.size();
  std::uint64_t digits = 0;
  const auto readDigits = [&] {
    const char* const from = read;
    for (; read != end && *read >= '0' && *read <= '9'; ++read)
      digits = digits * 10 + static_cast<unsigned>(*read - '0');
    return static_cast<std::size_t>(read - from);
  };
  const bool negative = read != end && *read == '-';
  if (negative || (read != end && *read == '+')) ++read;
  std::size_t count = readDigits();
  std::size_t decimals = 0;
  if (read != end && *read == '.') {
    ++read;
    decimals = readDigits();
    count += decimals;
  }
  if (count == 0 || count >= kPowersOf10.size()) return {};
  const double value = static_cast<double>(static_cast<std::int64_t>(digits)) / kPowersOf10[decimals];
  return {negative ? -value : value, static_cast<std::size_t>(read - text.data())};
}

}  // namespace velk
