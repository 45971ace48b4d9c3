// Eight bytes of a number, then a picture of numbers or dates: whatever a settings file holds can be shown.

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "base/dates.h"
#include "base/errors.h"
#include "base/numbers.h"

using namespace velk;

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

bool HasNonZeroDigit(std::string_view text) {
  return text.find_first_of("123456789") != std::string_view::npos;
}

/// A picture of digits, point and thousands alone shows a number that reads back within half of its last place.
void CheckPlain(double value, std::string_view picture, std::string shown) {
  const std::size_t point = picture.find('.');
  const bool plain = picture.find_first_not_of("0#.") == std::string_view::npos &&
                     picture.find_first_of("0#") != std::string_view::npos &&
                     (point == std::string_view::npos || picture.find('.', point + 1) == std::string_view::npos);
  if (!plain) return;
  const std::size_t places = point == std::string_view::npos ? 0 : picture.size() - point - 1;
  const double half = 0.5 * std::pow(10.0, -static_cast<double>(places));
  const double again = Val(shown);
  if (std::isfinite(again)) Require(std::abs(again - value) <= half * (1 + 1e-9) + 1e-14 * std::abs(value) + 1e-300);
  Require(shown.empty() || shown[0] != '-' || HasNonZeroDigit(shown));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  double value = 0;
  if (size < sizeof value) return 0;
  std::memcpy(&value, data, sizeof value);
  const std::string picture(data + sizeof value, data + size);

  const std::string shown = Format(value, picture);
  std::string appended = "x";
  FormatTo(appended, value, picture);
  Require(appended == "x" + shown);
  if (std::isfinite(value)) CheckPlain(value, picture, shown);
  if (!std::isfinite(value)) Require(shown == "nan" || shown == "inf" || shown == "-inf");

  try {
    FormatDate(value, picture);
    Require(IsDateTime(value));
  } catch (const RuntimeError& error) {
    Require(error.Number() == ErrorNumber::InvalidArgument && !IsDateTime(value));
  }
  return 0;
}
