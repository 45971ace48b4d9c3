#pragma once

namespace velk {

/// What places and sizes on a surface are counted in. A pixel is that of a screen of 96 dots an inch, whatever the
/// device has.
enum class Unit { Twip, Millimetre, Point, Pixel };

/// How many of a unit make an inch: 1440 twips are 25.4 mm, 72 points, 96 pixels.
constexpr double PerInch(Unit unit) {
  switch (unit) {
    case Unit::Twip:
      return 1440;
    case Unit::Millimetre:
      return 25.4;
    case Unit::Point:
      return 72;
    case Unit::Pixel:
      return 96;
  }
  return 0;
}

/// The same length in another unit.
constexpr double Convert(double length, Unit from, Unit to) {
  return length * PerInch(to) / PerInch(from);
}

/// Logical units of a pixel.
inline constexpr double kTwipsPerPixel = Convert(1, Unit::Pixel, Unit::Twip);

}  // namespace velk
