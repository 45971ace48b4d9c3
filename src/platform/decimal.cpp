#include "platform/decimal.h"

#include <algorithm>
#include <charconv>

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

Decimal ToDecimal(double value, int digits) {
  // "-d.ddde-ddd"
  char text[Decimal::kDigits64 + 10];
  const auto end = std::to_chars(text, std::end(text), value, std::chars_format::scientific, digits - 1).ptr;
  const char* read = text;
  Decimal decimal;
  decimal.negative = *read == '-';
  if (decimal.negative) ++read;
  decimal.digits[0] = *read;
  std::copy_n(read + 2, digits - 1, decimal.digits + 1);
  decimal.count = digits;
  while (decimal.count > 0 && decimal.digits[decimal.count - 1] == '0') --decimal.count;
  const char* sign = read + digits + 2;
  std::from_chars(sign + 1, end, decimal.exponent);
  if (*sign == '-') decimal.exponent = -decimal.exponent;
  return decimal;
}

}  // namespace velk
