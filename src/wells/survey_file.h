#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/operator_text.h"
#include "wells/trajectory.h"

namespace velk {

/// A stretch of a well over which the sizes of its hole stay.
struct WellSection {
  double start = 0, end = 0;             ///< depths
  double firstSize = 0, secondSize = 0;  ///< diameters, inches
  bool operator==(const WellSection&) const = default;
};

inline constexpr std::size_t kMostSections = 20;
/// Rows that a well file may have in any case.
inline constexpr std::size_t kWellFileRows = 1000;

/// What a file of a survey holds, as far as it could be read.
struct SurveyFile {
  std::vector<SurveyStation> rows;
  std::optional<std::int16_t> units;  ///< 0 to 2; nothing where the file has none, or one that is no unit
  std::vector<WellSection> sections;  ///< of a well file
  OperatorText fault;                 ///< what the operator is to know of it; empty where all was read
};

/// A .d15 file: the number of rows on a line of its own, the rows with their three numbers, and the unit code, which
/// may be missing. Numbers stand apart by commas, blanks or line ends.
SurveyFile ReadSurveyText(std::string_view bytes);

/// A .dt5 file: the same with five numbers a row, the last two being the sizes of the hole. Of more than `capacity`
/// rows those beyond are not read.
SurveyFile ReadWellText(std::string_view bytes, std::size_t capacity = kWellFileRows);

/// A .d15 file with its line ends. A positive number has a blank on either side.
std::string SurveyText(std::span<const SurveyStation> rows, std::int16_t units);

/// A .dt5 file by the letters of its name, else a .d15 file. Raises what keeps a file from being read.
SurveyFile ReadSurveyFile(const std::string& path, std::size_t wellCapacity);

/// Whether a file's name says that it is a .dt5 file.
bool IsWellFile(std::string_view path);

}  // namespace velk
