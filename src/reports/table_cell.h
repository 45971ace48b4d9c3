#pragma once

#include <string>

namespace velk {

/// A number with as many places as its size needs: three up to 10, two up to 100, one up to 1000, and none beyond,
/// where thousands are grouped.
std::string FormatByMagnitude(double value);

}  // namespace velk
