#pragma once

#include <cmath>
#include <vector>

#include "wells/trajectory.h"

namespace velk::test {

/// The path by the method's own steps, one after the other, in arrays counted from 1 that grow in the middle: slow, and
/// with nothing shared between segments. For surveys that raise nothing.
class LiteralTrajectory {
 public:
  explicit LiteralTrajectory(const std::vector<SurveyStation>& survey, int interval) : rows_(1) {
    rows_.insert(rows_.end(), survey.begin(), survey.end());
    MakeGrid(interval);
    Walk();
    Integrate();
  }

  std::vector<PathStation> Stations() const { return {stations_.begin() + 1, stations_.end()}; }
  double maxTvd = 0;

 private:
  static constexpr double kPi = 3.14159265358979;
  static constexpr double kTwoPi = 6.28318530717958;

  void MakeGrid(int interval) {
    const double last = rows_.back().depth;
    const int n = static_cast<int>(std::floor(last / interval)) + 1;
    const int count = interval * (n - 1) < last ? n + 1 : n;
    stations_.resize(static_cast<std::size_t>(count) + 1);
    for (int i = 2; i <= count - 1; ++i) stations_[i].depth = (i - 1) * interval;
    stations_[count].depth = last;
  }

  void Walk() {
    std::size_t s = 2, j = 2;
    while (j <= stations_.size() - 1) {
      if (rows_[s].depth == stations_[j].depth) {
        Copy(s++, j++);
      } else if (rows_[s].depth < stations_[j].depth) {
        stations_.insert(stations_.begin() + static_cast<std::ptrdiff_t>(j), PathStation{});
        Copy(s++, j++);
      } else {
        Interpolate(s, j++);
      }
    }
    Copy(rows_.size() - 1, stations_.size() - 1);
  }

  void Copy(std::size_t s, std::size_t j) {
    stations_[j].depth = rows_[s].depth;
    stations_[j].inclination = rows_[s].inclination * kPi / 180;
    stations_[j].azimuth = rows_[s].azimuth * kPi / 180;
  }

  void Interpolate(std::size_t s, std::size_t j) {
    const SurveyStation &a = rows_[s - 1], &b = rows_[s];
    const double f = (stations_[j].depth - a.depth) / (b.depth - a.depth);
    stations_[j].inclination = (a.inclination + f * (b.inclination - a.inclination)) * kPi / 180;
    double azimuth = b.azimuth;
    if (a.inclination != 0 && std::fabs(b.azimuth - a.azimuth) <= 1) {
      azimuth = a.azimuth + f * (b.azimuth - a.azimuth);
    } else if (a.inclination != 0) {
      const double a1 = a.azimuth * kPi / 180, a2 = b.azimuth * kPi / 180;
      const double sn = std::sin(a1) + f * (std::sin(a2) - std::sin(a1));
      const double cs = std::cos(a1) + f * (std::cos(a2) - std::cos(a1));
      const double t = std::atan(sn / std::sqrt(1 - sn * sn)) * 180 / kPi;
      if (sn >= 0 && cs >= 0) azimuth = t;
      if (sn >= 0 && cs < 0) azimuth = 180 - t;
      if (sn < 0 && cs >= 0) azimuth = 360 + t;
      if (sn < 0 && cs < 0) azimuth = 180 - t;
    }
    stations_[j].azimuth = azimuth * kPi / 180;
  }

  static double Mean(double a1, double a2) {
    if (std::fabs(a1 - a2) > kPi) {
      if (a2 < kPi)
        a2 += kTwoPi;
      else
        a1 += kTwoPi;
    }
    a1 /= 2;
    a2 /= 2;
    const double s = std::sin(a1) * std::cos(a2) + std::cos(a1) * std::sin(a2);
    const double c = std::cos(a1) * std::cos(a2) - std::sin(a1) * std::sin(a2);
    const double t = s * s > 1 ? 0 : std::sqrt(1 - s * s);
    const double result = t != 0 ? std::atan(s / t) : std::atan(100000 * s);
    if (s >= 0 && c > 0) return result;
    if (s < 0 && c > 0) return result + kTwoPi;
    return kPi - result;
  }

  void Integrate() {
    for (std::size_t k = 2; k < stations_.size(); ++k) {
      const PathStation& above = stations_[k - 1];
      PathStation& here = stations_[k];
      const double dMD = here.depth - above.depth;
      const double ia = (above.inclination + here.inclination) / 2;
      const double aa =
          here.inclination != 0 && above.inclination == 0 ? here.azimuth : Mean(above.azimuth, here.azimuth);
      const double dI = here.inclination - above.inclination, dA = here.azimuth - above.azimuth;
      here.radius = 0;
      if (dI != 0) here.radius = dMD / std::sqrt(dI * dI + dA * (1 - std::cos(dI)) * (dA * (1 - std::cos(dI))));
      if (here.radius > 1e12) here.radius = 0;
      here.east = above.east + std::sin(ia) * std::sin(aa) * dMD;
      here.north = above.north + std::sin(ia) * std::cos(aa) * dMD;
      if (here.radius == 0) {
        here.tvd = above.tvd + std::cos(ia) * dMD;
        here.dogLeg = 0;
      } else {
        here.dogLeg = 18000 / (here.radius * kPi);
        const double dT = (std::sin(here.inclination) - std::sin(above.inclination)) * here.radius;
        here.tvd = dI < 0 ? above.tvd - dT : above.tvd + dT;
      }
      if (here.tvd > maxTvd) maxTvd = here.tvd;
    }
  }

  std::vector<SurveyStation> rows_;
  std::vector<PathStation> stations_;
};

}  // namespace velk::test
