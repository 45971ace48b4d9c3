#include <gtest/gtest.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <cmath>
#include <vector>

#include "wells/trajectory.h"

namespace velk {
namespace {

struct Point {
  double depth, tvd, east, north;
};

/// The textbooks' path, by the arc between two directions.
std::vector<Point> MinimumCurvature(const std::vector<SurveyStation>& survey) {
  std::vector<Point> path{{0, 0, 0, 0}};
  constexpr double kRadian = M_PI / 180;
  for (std::size_t i = 1; i < survey.size(); ++i) {
    const double i1 = survey[i - 1].inclination * kRadian, i2 = survey[i].inclination * kRadian;
    const double a1 = survey[i - 1].azimuth * kRadian, a2 = survey[i].azimuth * kRadian;
    const double cosine = std::cos(i2 - i1) - std::sin(i1) * std::sin(i2) * (1 - std::cos(a2 - a1));
    const double bend = std::acos(std::clamp(cosine, -1.0, 1.0));
    const double ratio = bend < 1e-9 ? 1 : 2 / bend * std::tan(bend / 2);
    const double half = (survey[i].depth - survey[i - 1].depth) / 2 * ratio;
    const Point& above = path.back();
    path.push_back({survey[i].depth, above.tvd + half * (std::cos(i1) + std::cos(i2)),
                    above.east + half * (std::sin(i1) * std::sin(a1) + std::sin(i2) * std::sin(a2)),
                    above.north + half * (std::sin(i1) * std::cos(a1) + std::sin(i2) * std::cos(a2))});
  }
  return path;
}

/// How far the method's stations may lie from the textbooks' in each well, in its unit: the displacement by the average
/// angle along the way, and the depth by the change of inclination alone. Found by another program of the method.
struct Difference {
  const char* well;
  double across, down;
};
constexpr Difference kDifferences[] = {
    {"wellpathpy-deviation", 0.24, 0.30},
    {"wellpathpy-well9", 1.13, 0.07},
    {"wellpathpy-well10", 1.40, 0.07},
    {"welly-colorado-400844163", 2.17, 0.22},
    {"welly-Well_1515", 0.08, 0.01},
    {"welly-P-130", 1.39, 0.15},
    {"iscwsa-clearance-Reference-well", 0.04, 0.01},
    {"iscwsa-clearance-02---well", 0.04, 0.01},
    {"iscwsa-clearance-10---well", 0.21, 0.09},
};

std::vector<SurveyStation> RowsOf(const QJsonObject& well) {
  std::vector<SurveyStation> rows;
  for (const auto row : well["rows"].toArray()) {
    const QJsonArray numbers = row.toArray();
    rows.push_back({numbers[0].toDouble(), numbers[1].toDouble(), numbers[2].toDouble()});
  }
  return rows;
}

TEST(PublishedSurveys, LieWhereTheTextbooksPutThemButForTheMethod) {
  QFile file(VELK_SOURCE_DIR "/tests/data/published_surveys.json");
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QJsonArray wells = QJsonDocument::fromJson(file.readAll()).array();
  ASSERT_EQ(static_cast<std::size_t>(wells.size()), std::size(kDifferences));
  for (int well = 0; well < wells.size(); ++well) {
    const Difference& difference = kDifferences[well];
    SCOPED_TRACE(difference.well);
    ASSERT_EQ(wells[well].toObject()["name"].toString(), difference.well);
    const std::vector<SurveyStation> rows = RowsOf(wells[well].toObject());
    std::int16_t interval = 100;
    const WellPath path = CalculateTrajectory(rows, interval);
    auto station = path.stations.begin();
    for (const Point& point : MinimumCurvature(rows)) {
      while (station != path.stations.end() && station->depth < point.depth) ++station;
      ASSERT_TRUE(station != path.stations.end() && station->depth == point.depth);
      EXPECT_LE(std::hypot(station->east - point.east, station->north - point.north), difference.across);
      EXPECT_LE(std::fabs(station->tvd - point.tvd), difference.down);
    }
  }
}

}  // namespace
}  // namespace velk
