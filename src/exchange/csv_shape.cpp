#include "exchange/csv_shape.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "base/text.h"
#include "exchange/csv_times.h"

namespace velk {

namespace {

// Columns are counted in 16 bits.
constexpr int kMostColumns = 32767;

bool FirstFieldIs(std::string_view line, std::string_view word) {
  return LowerCase(line.substr(0, line.find(','))) == word;
}

/// Whether a line that begins with no date holds words where a row has a time and numbers.
bool HoldsNames(std::string_view line) {
  if (line.empty() || CsvSeconds(line.substr(0, line.find(',')))) return false;
  while (!line.empty()) {
    const std::string field = Trim(TakeField(line));
    if (!field.empty() && !IsNumeric(field) && !CsvSeconds(field) && !CsvDay(field)) return true;
  }
  return false;
}

/// The names as they stand, one fewer where the line ends ahead of the last one.
void TakeNames(CsvShape& shape, std::string_view rest) {
  for (int i = 1; i <= shape.ColumnCount; ++i) {
    if (rest.empty()) {
      --shape.ColumnCount;
      break;
    }
    shape.ColumnNames.emplace_back(TakeField(rest));
  }
  shape.ColumnNames.resize(static_cast<std::size_t>(shape.ColumnCount));
}

/// In a line of names the first column behind the time is number 0, without such a line number 1.
void NumberNames(CsvShape& shape) {
  int number = shape.hasHeader ? 0 : 1;
  for (std::string& name : shape.ColumnNames) {
    if (name.empty() || !shape.hasHeader) name = "Parameter " + std::to_string(number);
    ++number;
  }
}

}  // namespace

std::string_view TakeField(std::string_view& line) {
  const std::size_t comma = line.find(',');
  const std::string_view field = line.substr(0, comma);
  line.remove_prefix(comma == std::string_view::npos ? line.size() : comma + 1);
  return field;
}

bool IsBlankLine(std::string_view line) {
  return line.find_first_not_of(" \t") == std::string_view::npos;
}

double EstimateRows(double fileBytes, std::size_t lineBytes) {
  return lineBytes == 0 ? 0 : std::floor(fileBytes / static_cast<double>(lineBytes));
}

CsvShape AnalyseFirstLine(std::string_view line, double fileBytes) {
  CsvShape shape;
  shape.EstimatedRows = EstimateRows(fileBytes, line.size());
  const auto commas = std::count(line.begin(), line.end(), ',');
  shape.hasSemicolons = commas == 0 && line.find(';') != std::string_view::npos;
  shape.ColumnCount = static_cast<int>(std::min<std::ptrdiff_t>(commas + 1, kMostColumns));
  std::string_view rest = line;
  if (FirstFieldIs(rest, "date")) {
    shape.hasHeader = true;
    shape.DateColumnName = TakeField(rest);
    --shape.ColumnCount;
  }
  if (FirstFieldIs(rest, "time")) shape.TimeColumnName = TakeField(rest);
  shape.hasStrayNames = shape.hasHeader ? shape.TimeColumnName.empty() : HoldsNames(line);
  TakeNames(shape, rest);
  NumberNames(shape);
  return shape;
}

}  // namespace velk
