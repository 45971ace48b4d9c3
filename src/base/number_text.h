#pragma once

#include <cstddef>
#include <string>

namespace velk {

/// Text of a 64-bit float with 15, of a 32-bit float with 7 significant digits: plain decimal with a leading zero
/// ("0.5"), trailing zeros dropped; exponent form ("1E+20", "1.5E-05", at least two digits in the exponent) from 1E15
/// (32-bit: 1E7) up and below 1E-04. Minus zero gives "0".
std::string NumberText(double value);
std::string NumberText(float value);

/// Room to write one of these texts in. The longest, "-1.23456789012345E-308", takes 22; what is written behind the end
/// on the way has no meaning.
inline constexpr std::size_t kNumberTextSize = 40;

/// Writes NumberText(value) to `out`, which has room for kNumberTextSize characters, and gives its end. No zero behind
/// it. For formulas, which write numbers many times a sample.
char* WriteNumberText(char* out, double value);
char* WriteNumberText(char* out, float value);

/// Val(NumberText(value)), mostly without a text: what a number comes to that is kept with 15 digits.
double ThroughNumberText(double value);

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
