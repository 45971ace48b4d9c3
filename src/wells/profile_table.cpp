#include "wells/profile_table.h"

#include <algorithm>

#include "base/numbers.h"
#include "base/text.h"
#include "wells/texts.h"

namespace velk {

namespace {

constexpr int kFewestTableRows = 16;
constexpr MessageText kHeadings[kProfileColumns] = {
    text::HeadingDepth,       text::ProfileTvd,     text::ProfileNorth,  text::ProfileEast,
    text::HeadingInclination, text::HeadingAzimuth, text::ProfileDogLeg,
};

}  // namespace

double ProfileTable::Factor() const {
  if (system_ == kMetric) return units_.MetricFactor[kLengthSlot];
  return system_ == kUserDefined ? units_.UserFactor[kLengthSlot] : 1;
}

int ProfileTable::RowCount() const {
  return std::max(kFewestTableRows, StationCount() + kProfileHeadRows);
}

std::string ProfileTable::Cell(int row, int column, const Language& language) const {
  if (row == 0) return language.In(kHeadings[column]);
  if (row == 1) return language.In(Unit(column));
  const auto station = static_cast<std::size_t>(row - kProfileHeadRows);
  return station < path_.stations.size() ? Value(path_.stations[station], column) : std::string();
}

OperatorText ProfileTable::Unit(int column) const {
  if (column < 4) return DepthUnitLabel(units_, system_);
  return column < 6 ? AngleUnitLabel(units_, system_) : OperatorText(text::ProfileDogLegUnit);
}

std::string ProfileTable::Value(const PathStation& station, int column) const {
  const double lengths[] = {station.depth, station.tvd, station.north, station.east};
  if (column < 4) return Format(lengths[column] * Factor(), "#####0");
  const double angles[] = {WellDegrees(station.inclination), WellDegrees(station.azimuth), station.dogLeg};
  return Format(angles[column - 4], "##0.00");
}

std::array<std::string, 3> ProfileLabels(const Language& language) {
  return {language.In(text::ClientName), language.In(text::WellName), language.In(text::JobDescription)};
}

std::string ProfileText(const ProfileTable& table, const ProfileHead& head, const Language& language) {
  const auto labels = ProfileLabels(language);
  std::string text;
  for (std::size_t i = 0; i < labels.size(); ++i)
    text += (i == 0 ? "" : ",") + ReplaceAll(labels[i] + " " + head.values[i], ",", " ");
  text += "\r\n";
  for (int row = 0; row < table.RowCount(); ++row) {
    for (int column = 0; column < kProfileColumns; ++column)
      text += ReplaceAll(table.Cell(row, column, language), ",", " ") + ",";
    text += "\r\n";
  }
  return text;
}

}  // namespace velk
