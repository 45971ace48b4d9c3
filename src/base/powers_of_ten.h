#pragma once

#include <cstddef>

namespace velk {

/// 1E-12 to 1E22: those below 1 to the nearest, the others exact.
inline constexpr int kLeastPowerOfTen = -12;
inline constexpr int kLastPowerOfTen = 22;
inline constexpr double kPowersOfTen[] = {1e-12, 1e-11, 1e-10, 1e-9, 1e-8, 1e-7, 1e-6, 1e-5, 1e-4, 1e-3, 1e-2, 1e-1,
                                          1e0,   1e1,   1e2,   1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                          1e12,  1e13,  1e14,  1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// 10^power, which is in the table.
constexpr double PowerOfTen(std::ptrdiff_t power) {
  return kPowersOfTen[power - kLeastPowerOfTen];
}

}  // namespace velk
