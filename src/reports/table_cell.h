#pragma once

#include <string>

namespace velk {

/// A number with as many places as its size needs: three up to 10, two up to 100, one up to 1000, and none beyond,
/// where thousands are grouped.
std::string FormatByMagnitude(double value);

/// What is printed of a number that a grid shows: the same number by its magnitude. What is no number stays as it is
/// shown.
std::string PrintedNumber(const std::string& shown);

}  // namespace velk
