#include "base/colour.h"

namespace velk {

namespace {

constexpr int kSteps = 64;

/// The colour so many steps on its way to black or to white.
std::int32_t Moved(std::int32_t colour, bool lighter, int steps) {
  const auto channel = [=](int c) { return lighter ? c + (255 - c) * steps / kSteps : c - c * steps / kSteps; };
  return Rgb(channel(Red(colour)), channel(Green(colour)), channel(Blue(colour)));
}

}  // namespace

std::int32_t ReadableOn(std::int32_t colour, std::int32_t ground, double contrast) {
  const bool lighter = Contrast(colour::White, ground) > Contrast(colour::Black, ground);
  for (int steps = 0; steps < kSteps; ++steps) {
    const std::int32_t moved = Moved(colour, lighter, steps);
    if (Contrast(moved, ground) >= contrast) return moved;
  }
  return lighter ? colour::White : colour::Black;
}

}  // namespace velk
