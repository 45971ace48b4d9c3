#include "wells/trajectory.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <future>

#include "base/errors.h"

namespace velk {

namespace {

/// A radius beyond this belongs to a segment that is straight but for noise.
constexpr double kStraightRadius = 1e12;

struct Turn {
  double sine, cosine;
};

Turn TurnOf(double angle) {
  Turn turn;
  sincos(angle, &turn.sine, &turn.cosine);  // of the C library: the same bits as by two calls
  return turn;
}

/// The angle whose half is made of two halves: the mean of two angles by the halves of each.
double SumOf(const Turn& a, const Turn& b) {
  const double sine = a.sine * b.cosine + a.cosine * b.sine;
  const double cosine = a.cosine * b.cosine - a.sine * b.sine;
  // Rounding can take the sine beyond 1.
  const double rest = 1 - sine * sine;
  const double root = rest > 0 ? std::sqrt(rest) : 0;
  const double angle = std::atan(root != 0 ? sine / root : 100000 * sine);
  if (cosine > 0) return sine >= 0 ? angle : angle + kWellTwoPi;
  return kWellPi - angle;
}

bool IsAcrossNorth(double a1, double a2) {
  return std::fabs(a1 - a2) > kWellPi;
}

double MeanAcrossNorth(double a1, double a2) {
  if (a2 < kWellPi)
    a2 += kWellTwoPi;
  else
    a1 += kWellTwoPi;
  return SumOf(TurnOf(a1 / 2), TurnOf(a2 / 2));
}

/// As Divide, for loops.
inline double Quotient(double a, double b) {
  const double quotient = a / b;
  return std::isfinite(quotient) ? quotient : Divide(a, b);
}

/// 0 where the segment is straight. A turn at an inclination that stays counts as straight.
double CurvatureRadius(double length, double inclinationChange, double azimuthChange) {
  if (inclinationChange == 0) return 0;
  const double turn = azimuthChange * (1 - std::cos(inclinationChange));
  const double radius = Quotient(length, std::sqrt(inclinationChange * inclinationChange + turn * turn));
  return radius > kStraightRadius ? 0 : radius;
}

double DogLegOf(double radius) {
  return Quotient(18000, radius * kWellPi);
}

PathStation Surveyed(const SurveyStation& row) {
  PathStation station;
  station.depth = row.depth;
  station.inclination = WellRadians(row.inclination);
  station.azimuth = WellRadians(row.azimuth);
  return station;
}

/// An azimuth between two, by the chord between their points on the circle; all in degrees.
double AzimuthOnChord(double from, double to, double share) {
  const Turn a = TurnOf(WellRadians(from)), b = TurnOf(WellRadians(to));
  const double sine = a.sine + share * (b.sine - a.sine);
  const double cosine = a.cosine + share * (b.cosine - a.cosine);
  const double rest = 1 - sine * sine;
  if (rest < 0) throw RuntimeError(ErrorNumber::InvalidArgument);
  const double angle = WellDegrees(std::atan(Divide(sine, std::sqrt(rest))));
  if (cosine < 0) return 180 - angle;
  return sine >= 0 ? angle : 360 + angle;
}

/// The station at a depth between two rows.
PathStation Interpolated(const SurveyStation& above, const SurveyStation& below, double depth) {
  const double share = Divide(depth - above.depth, below.depth - above.depth);
  PathStation station;
  station.depth = depth;
  station.inclination = WellRadians(above.inclination + share * (below.inclination - above.inclination));
  double azimuth = below.azimuth;
  // A vertical hole has no azimuth.
  if (above.inclination != 0) {
    const double change = below.azimuth - above.azimuth;
    azimuth =
        std::fabs(change) <= 1 ? above.azimuth + share * change : AzimuthOnChord(above.azimuth, below.azimuth, share);
  }
  station.azimuth = WellRadians(azimuth);
  return station;
}

/// How many depths the grid has down to the last one, which is the survey's own.
int GridCount(double lastDepth, std::int16_t interval) {
  const int steps = ToInt16(std::floor(lastDepth / interval));
  const int depth = ToInt16(static_cast<double>(steps) * interval);
  const int count = ToInt16(depth < lastDepth ? steps + 2 : steps + 1);
  if (count < 1) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  return count;
}

/// The stations of the survey and those of the grid in the order of their depth, with their directions.
std::vector<PathStation> MergeWithGrid(std::span<const SurveyStation> survey, std::int16_t interval) {
  const double lastDepth = survey.back().depth;
  const int count = GridCount(lastDepth, interval);
  if (count > 1 && survey.size() < 2) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  std::vector<PathStation> stations;
  stations.reserve(static_cast<std::size_t>(count) + survey.size());
  stations.emplace_back();
  std::size_t row = 1;
  for (int place = 1; place < count;) {
    const double depth = place == count - 1 ? lastDepth : static_cast<double>(place) * interval;
    const double surveyed = survey[row].depth;
    if (surveyed > depth) {
      stations.push_back(Interpolated(survey[row - 1], survey[row], depth));
    } else {
      stations.push_back(Surveyed(survey[row++]));
    }
    if (surveyed >= depth) ++place;
  }
  ToInt16(static_cast<double>(stations.size()));
  // Of rows that share the last depth, the last one counts.
  stations.back() = Surveyed(survey.back());
  return stations;
}

/// The segments that end at some stations of a path whose directions are known. Each is computed in passes: calls that
/// don't wait for each other's results run side by side in the processor. What two segments share of a station is
/// computed once.
class Segments {
 public:
  /// So many segments stay in the processor's own memory.
  static constexpr std::size_t kMost = 128;

  /// `stations` begin with the one above the first segment. Gives the others all but their places, and for these how
  /// far they lie from the station above.
  void Measure(std::span<PathStation> stations) {
    for (std::size_t i = 0; i < stations.size(); ++i) {
      half_[i] = TurnOf(stations[i].azimuth / 2);
      sine_[i] = std::sin(stations[i].inclination);
    }
    for (std::size_t i = 1; i < stations.size(); ++i) azimuth_[i] = AzimuthOf(stations[i - 1], stations[i], i);
    for (std::size_t i = 1; i < stations.size(); ++i) {
      inclination_[i] = (stations[i - 1].inclination + stations[i].inclination) / 2;
      across_[i] = std::sin(inclination_[i]);
    }
    for (std::size_t i = 1; i < stations.size(); ++i) GoAcross(stations[i - 1], stations[i], i);
    for (std::size_t i = 1; i < stations.size(); ++i) GoDown(stations[i - 1], stations[i], i);
  }

 private:
  double AzimuthOf(const PathStation& above, const PathStation& station, std::size_t i) const {
    if (station.inclination != 0 && above.inclination == 0) return station.azimuth;
    if (IsAcrossNorth(above.azimuth, station.azimuth)) return MeanAcrossNorth(above.azimuth, station.azimuth);
    return SumOf(half_[i - 1], half_[i]);
  }

  void GoAcross(const PathStation& above, PathStation& station, std::size_t i) const {
    const Turn turn = TurnOf(azimuth_[i]);
    const double length = station.depth - above.depth;
    station.east = across_[i] * turn.sine * length;
    station.north = across_[i] * turn.cosine * length;
  }

  void GoDown(const PathStation& above, PathStation& station, std::size_t i) const {
    const double length = station.depth - above.depth;
    const double bend = station.inclination - above.inclination;
    station.radius = CurvatureRadius(length, bend, station.azimuth - above.azimuth);
    if (station.radius == 0) {
      station.tvd = std::cos(inclination_[i]) * length;
      return;
    }
    station.dogLeg = DogLegOf(station.radius);
    const double down = (sine_[i] - sine_[i - 1]) * station.radius;
    station.tvd = bend < 0 ? -down : down;
  }

  std::array<Turn, kMost + 1> half_;                              ///< of half the azimuth of each station
  std::array<double, kMost + 1> sine_;                            ///< of its inclination
  std::array<double, kMost + 1> azimuth_, inclination_, across_;  ///< of the segment that ends there
};

void MeasureSegments(std::span<PathStation> stations) {
  Segments segments;
  for (std::size_t first = 0; first + 1 < stations.size(); first += Segments::kMost)
    segments.Measure(stations.subspan(first, std::min(Segments::kMost + 1, stations.size() - first)));
}

/// Completes the stations behind the first one, which is complete. Half of a long path is measured beside the other.
void Integrate(std::span<PathStation> stations) {
  constexpr std::size_t kLongPath = 4000;
  const bool isLong = stations.size() >= kLongPath;
  const std::size_t middle = isLong ? stations.size() / 2 : stations.size() - 1;
  // The first one of each half is only read.
  auto below = std::async(isLong ? std::launch::async | std::launch::deferred : std::launch::deferred,
                          [&] { MeasureSegments(stations.subspan(middle)); });
  MeasureSegments(stations.first(middle + 1));
  below.get();
  for (std::size_t i = 1; i < stations.size(); ++i) {
    stations[i].east += stations[i - 1].east;
    stations[i].north += stations[i - 1].north;
    stations[i].tvd += stations[i - 1].tvd;
  }
}

void RequireFinite(double a, double b, double c) {
  if (!std::isfinite(a) || !std::isfinite(b) || !std::isfinite(c)) throw RuntimeError(ErrorNumber::Overflow);
}

}  // namespace

double MeanAzimuth(double a1, double a2) {
  return IsAcrossNorth(a1, a2) ? MeanAcrossNorth(a1, a2) : SumOf(TurnOf(a1 / 2), TurnOf(a2 / 2));
}

double SegmentDogLeg(const SurveyStation& previous, const SurveyStation& current) {
  if (current.depth == previous.depth) return 0;
  const double inclination1 = kWellPi / 2 - WellRadians(previous.inclination);
  const double inclination2 = kWellPi / 2 - WellRadians(current.inclination);
  const double azimuthChange = WellRadians(current.azimuth) - WellRadians(previous.azimuth);
  const double radius =
      CurvatureRadius(std::fabs(current.depth - previous.depth), inclination2 - inclination1, azimuthChange);
  return radius == 0 ? 0 : DogLegOf(radius);
}

WellPath CalculateTrajectory(std::span<const SurveyStation> survey, std::int16_t& interval) {
  if (survey.empty()) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  ToInt16(static_cast<double>(survey.size()));
  for (const SurveyStation& row : survey) RequireFinite(row.depth, row.inclination, row.azimuth);
  if (interval < 1) interval = kDefaultInterval;
  WellPath path{MergeWithGrid(survey, interval), 0};
  Integrate(path.stations);
  for (const PathStation& station : path.stations) path.maxTvd = std::max(path.maxTvd, station.tvd);
  const PathStation& end = path.stations.back();
  RequireFinite(end.east, end.north, end.tvd);
  return path;
}

}  // namespace velk
