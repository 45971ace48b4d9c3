// Any bytes as a number: Val never throws, agrees with the stricter readers, and what it reads survives being shown.

#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "base/errors.h"
#include "base/numbers.h"

using namespace velk;

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

enum class Outcome { Value, TypeMismatch, Overflow };

Outcome Read(std::string_view text, double& value) {
  try {
    value = ToDouble(text);
    return Outcome::Value;
  } catch (const RuntimeError& error) {
    Require(error.Number() == ErrorNumber::TypeMismatch || error.Number() == ErrorNumber::Overflow);
    return error.Number() == ErrorNumber::Overflow ? Outcome::Overflow : Outcome::TypeMismatch;
  }
}

/// 15 digits tell a number to half a unit of the 15th, which is 5e-15 of it at most. Reading them back rounds once
/// more, to the grain of the float: 1.2e-16 of it, or the smallest float.
bool SameIn15Digits(double a, double b) {
  return std::abs(a - b) <= 5.2e-15 * std::abs(a) + 1e-323;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(data, data + size);
  const double value = Val(text);
  Require(!std::isnan(value));

  double whole = 0;
  const Outcome outcome = Read(text, whole);
  Require(IsNumeric(text) == (outcome == Outcome::Value));
  if (outcome == Outcome::Value) Require(whole == value && std::signbit(whole) == std::signbit(value));
  if (outcome == Outcome::Overflow) Require(std::isinf(value));

  if (std::isfinite(value)) {
    const std::string shown = NumberText(value);
    const double again = Val(shown);
    // The largest floats may round up beyond the range.
    Require(SameIn15Digits(value, again) || (std::isinf(again) && std::abs(value) > 1.797693134862315e308));
    if (std::isfinite(again)) Require(NumberText(again) == shown);
  }
  return 0;
}
