#pragma once

#include <cmath>
#include <cstdint>

namespace velk {

// A colour is a 32-bit number 0x00bbggrr, as settings and log files hold it.
constexpr std::int32_t Rgb(int red, int green, int blue) {
  return blue << 16 | green << 8 | red;
}

namespace colour {
inline constexpr std::int32_t Black = 0x000000;
inline constexpr std::int32_t White = 0xFFFFFF;
inline constexpr std::int32_t Grid = 0xC0C0C0;
inline constexpr std::int32_t Alarm = Rgb(0xC8, 0x10, 0x2E);
inline constexpr std::int32_t Muted = Rgb(0x5B, 0x66, 0x70);
// The same in the dark.
inline constexpr std::int32_t NightPaper = Rgb(0x14, 0x18, 0x1D);
inline constexpr std::int32_t NightRules = Rgb(0xAE, 0xB7, 0xC0);
inline constexpr std::int32_t NightGrid = Rgb(0x3A, 0x44, 0x4E);
inline constexpr std::int32_t NightPlate = Rgb(0x2A, 0x31, 0x38);
inline constexpr std::int32_t NightAlarm = Rgb(0xFF, 0x5A, 0x5F);
inline constexpr std::int32_t NightMuted = Rgb(0x9A, 0xA5, 0xB0);
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

/// `colour` itself where it stands out from `ground` by this contrast; else darker, on a dark ground lighter, until it
/// does. Its hue stays.
std::int32_t ReadableOn(std::int32_t colour, std::int32_t ground, double contrast);

}  // namespace velk
