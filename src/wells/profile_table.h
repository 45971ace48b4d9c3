#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "base/language.h"
#include "wells/trajectory.h"
#include "wells/well_units.h"

namespace velk {

inline constexpr int kProfileColumns = 7;
/// Rows of names and of units above the stations.
inline constexpr int kProfileHeadRows = 2;

/// The computed stations as a table: names, units, and a row for each station, empty rows behind few of them.
class ProfileTable {
 public:
  /// Both outlive the table.
  ProfileTable(const WellPath& path, const WellUnits& units) : path_(path), units_(units) {}

  /// The system that depths are shown in; the stations stay as they are.
  std::int16_t System() const { return system_; }
  void SetSystem(std::int16_t system) { system_ = system; }
  /// How many of the shown units make one of the stations'.
  double Factor() const;

  int RowCount() const;
  /// Rows that stations stand in.
  int StationCount() const { return static_cast<int>(path_.stations.size()); }
  /// A cell of any row, in the language of names and units.
  std::string Cell(int row, int column, const Language& language) const;

 private:
  OperatorText Unit(int column) const;
  std::string Value(const PathStation& station, int column) const;

  const WellPath& path_;
  const WellUnits& units_;
  std::int16_t system_ = kApiEnglish;
};

/// What stands above a table: where it was measured, and for whom.
struct ProfileHead {
  std::string project;                ///< the field
  std::string file;                   ///< name of the survey's file
  std::array<std::string, 3> values;  ///< client, well, job
};

/// "Client Name:", "Well Name:", "Job Description:".
std::array<std::string, 3> ProfileLabels(const Language& language);

/// A .out file: a line with the three texts of the head, then the table, each cell with a comma behind it. Commas
/// inside a text become blanks.
std::string ProfileText(const ProfileTable& table, const ProfileHead& head, const Language& language);

}  // namespace velk
