#include "graphs/header_zones.h"

#include "graphs/strip_chart.h"

namespace velk {

namespace {

constexpr double kMinimumShare = 0.35;
constexpr double kMaximumShare = 0.65;

HeaderZone ZoneAt(double x, double width) {
  const double room = width - kLeftMargin;
  if (x < kLeftMargin) return HeaderZone::None;
  if (x <= kLeftMargin + kMinimumShare * room) return HeaderZone::Minimum;
  return x >= kLeftMargin + kMaximumShare * room ? HeaderZone::Maximum : HeaderZone::Colour;
}

}  // namespace

HeaderPlace HeaderPlaceAt(double x, double y, double width, int curves) {
  if (y < 0 || y >= curves * kHeaderRowHeight) return {};
  const HeaderZone zone = ZoneAt(x, width);
  if (zone == HeaderZone::None) return {};
  return {static_cast<int>(y / kHeaderRowHeight) + 1, zone};
}

}  // namespace velk
