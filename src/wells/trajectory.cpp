#include "wells/trajectory.h"

#include <algorithm>
#include <cmath>

#include "base/errors.h"

namespace velk {

namespace {

/// A radius beyond this belongs to a segment that is straight but for noise.
constexpr double kStraightRadius = 1e12;

struct Turn {
  double sine, cosine;
};

Turn TurnOf(double angle) {
  return {std::sin(angle), std::cos(angle)};
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

/// 0 where the segment is straight. A turn at an inclination that stays counts as straight.
double CurvatureRadius(double length, double inclinationChange, double azimuthChange) {
  if (inclinationChange == 0) return 0;
  const double turn = azimuthChange * (1 - std::cos(inclinationChange));
  const double radius = Divide(length, std::sqrt(inclinationChange * inclinationChange + turn * turn));
  return radius > kStraightRadius ? 0 : radius;
}

double DogLegOf(double radius) {
  return Divide(18000, radius * kWellPi);
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

/// Walks down a path. What two segments share of a station is computed once: each of these functions takes as long as
/// all the rest.
class Integrator {
 public:
  explicit Integrator(const PathStation& first)
      : half_(TurnOf(first.azimuth / 2)), sine_(std::sin(first.inclination)) {}

  /// Completes a station, whose direction is known, behind the complete one above it.
  void Next(const PathStation& above, PathStation& station) {
    const double length = station.depth - above.depth;
    const double inclination = (above.inclination + station.inclination) / 2;
    const double inclinationChange = station.inclination - above.inclination;
    const Turn azimuth = TurnOf(AzimuthOf(above, station));
    const double across = std::sin(inclination);
    station.east = above.east + across * azimuth.sine * length;
    station.north = above.north + across * azimuth.cosine * length;
    station.radius = CurvatureRadius(length, inclinationChange, station.azimuth - above.azimuth);
    const double sineAbove = sine_;
    if (inclinationChange != 0) sine_ = std::sin(station.inclination);
    if (station.radius == 0) {
      station.tvd = above.tvd + std::cos(inclination) * length;
      station.dogLeg = 0;
      return;
    }
    station.dogLeg = DogLegOf(station.radius);
    const double down = (sine_ - sineAbove) * station.radius;
    station.tvd = inclinationChange < 0 ? above.tvd - down : above.tvd + down;
  }

 private:
  double AzimuthOf(const PathStation& above, const PathStation& station) {
    const Turn halfAbove = half_;
    if (station.azimuth != above.azimuth) half_ = TurnOf(station.azimuth / 2);
    if (station.inclination != 0 && above.inclination == 0) return station.azimuth;
    if (IsAcrossNorth(above.azimuth, station.azimuth)) return MeanAcrossNorth(above.azimuth, station.azimuth);
    return SumOf(halfAbove, half_);
  }

  Turn half_;    ///< of half the last azimuth
  double sine_;  ///< of the last inclination
};

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
  Integrator integrator(path.stations.front());
  for (std::size_t i = 1; i < path.stations.size(); ++i) {
    integrator.Next(path.stations[i - 1], path.stations[i]);
    path.maxTvd = std::max(path.maxTvd, path.stations[i].tvd);
  }
  const PathStation& end = path.stations.back();
  RequireFinite(end.east, end.north, end.tvd);
  return path;
}

}  // namespace velk
