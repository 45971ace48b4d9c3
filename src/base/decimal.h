#pragma once

#include <string>

namespace velk {

/// A finite number as the decimal digits that the program shows: what NumberText and the pictures work on.
struct Decimal {
  /// 64-bit floats hold 15 decimal digits, 32-bit floats 7; further ones are noise of the binary form.
  static constexpr int kDigits64 = 15;
  static constexpr int kDigits32 = 7;

  bool negative = false;
  /// '0' to '9', the first one not '0'. One more than can be in use: they are copied as a block of known size.
  char digits[16] = {};
  int count = 0;     ///< digits in use, without trailing zeros; 0 for the number zero
  int exponent = 0;  ///< the power of ten that the first digit counts; 0 for zero

  bool IsZero() const { return count == 0; }
  /// The digit that counts 10^power.
  char DigitAt(int power) const;
  /// Rounds half away from zero to whole multiples of 10^power.
  void RoundTo(int power);
};

/// The nearest number of `digits` significant digits (at most 15), '0' behind those in use. `value` is finite.
Decimal ToDecimal(double value, int digits);

}  // namespace velk
