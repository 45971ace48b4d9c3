#pragma once

#include <cmath>
#include <cstdint>

namespace velk {

// A colour is a 32-bit number 0x00bbggrr, as settings and log files hold it.
namespace colour {
inline constexpr std::int32_t Black = 0x000000;
inline constexpr std::int32_t White = 0xFFFFFF;
inline constexpr std::int32_t Grid = 0xC0C0C0;
inline constexpr std::int32_t Dark = 0x201C18;  ///< background for pale texts
}  // namespace colour

inline int Red(std::int32_t colour) {
  return colour & 0xFF;
}
inline int Green(std::int32_t colour) {
  return (colour >> 8) & 0xFF;
}
inline int Blue(std::int32_t colour) {
  return (colour >> 16) & 0xFF;
}

/// How bright a colour looks: 0 black, 1 white.
inline double Luminance(std::int32_t colour) {
  const auto linear = [](int channel) {
    const double c = channel / 255.0;
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(Red(colour)) + 0.7152 * linear(Green(colour)) + 0.0722 * linear(Blue(colour));
}

/// Contrast of two colours, 1 (the same) to 21 (black on white).
inline double Contrast(std::int32_t a, std::int32_t b) {
  const double first = Luminance(a), second = Luminance(b);
  const double high = first > second ? first : second, low = first > second ? second : first;
  return (high + 0.05) / (low + 0.05);
}

/// White, or a dark colour where a text of this colour could not be read on white.
inline std::int32_t LegibleBackground(std::int32_t text) {
  return Contrast(text, colour::White) < 3 ? colour::Dark : colour::White;
}

}  // namespace velk
