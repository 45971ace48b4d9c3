#include "platform/drawing/units.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

struct Case {
  double length;
  Unit from;
  double expected;
  Unit to;
};

TEST(Units, ConvertLengths) {
  const Case cases[] = {
      {1440, Unit::Twip, 25.4, Unit::Millimetre},
      {1440, Unit::Twip, 72, Unit::Point},
      {1440, Unit::Twip, 96, Unit::Pixel},
      {15, Unit::Twip, 1, Unit::Pixel},
      {20, Unit::Twip, 1, Unit::Point},
      {254, Unit::Millimetre, 14400, Unit::Twip},
      {210, Unit::Millimetre, 595.2756, Unit::Point},  // A4 is 595 by 842 points
      {297, Unit::Millimetre, 841.8898, Unit::Point},
      {0.25, Unit::Millimetre, 0.944882, Unit::Pixel},
      {12, Unit::Point, 16, Unit::Pixel},
      {3, Unit::Pixel, 45, Unit::Twip},
      {-7, Unit::Point, -140, Unit::Twip},
      {0, Unit::Pixel, 0, Unit::Millimetre},
      {3.5, Unit::Millimetre, 3.5, Unit::Millimetre},
  };
  for (const Case& c : cases)
    EXPECT_NEAR(Convert(c.length, c.from, c.to), c.expected, 1e-4)
        << c.length << " of unit " << static_cast<int>(c.from) << " to " << static_cast<int>(c.to);
}

}  // namespace
}  // namespace velk
