#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velk {

/// The name of a last column that holds the operator's comments and no numbers.
inline constexpr const char* kCommentColumn = "TheComment";

/// What the first line of a file tells: fields between commas, without any quoting. A file whose first field is "date",
/// in any case, begins with a line of names; any other one with its first row, a time and numbers.
struct CsvShape {
  bool hasHeader = false;
  std::string DateColumnName;  ///< as the line has it; empty without a column of dates
  std::string TimeColumnName;
  int ColumnCount = 0;                   ///< of parameters and comments
  std::vector<std::string> ColumnNames;  ///< so many; one without a name is "Parameter " and its number
  double EstimatedRows = 0;
  bool hasStrayNames = false;  ///< it holds names, but doesn't begin with a date and a time
  bool hasSemicolons = false;  ///< it is divided by ";": there is no comma in it

  /// Columns of the file ahead of the parameters: date and time, or the time alone.
  int ColumnsAhead() const { return hasHeader ? 2 : 1; }
};

/// Analyses the first line of a file, as UTF-8, that is so many bytes long. Of a line without names the time counts as
/// a parameter too: the last parameter finds no field in the rows.
CsvShape AnalyseFirstLine(std::string_view line, double fileBytes);

/// How many rows a file has, if all of its lines are as long as the first one.
double EstimateRows(double fileBytes, std::size_t lineBytes);

/// Takes the field at the front of a line off, with its comma.
std::string_view TakeField(std::string_view& line);
/// Whether a line holds nothing but blanks.
bool IsBlankLine(std::string_view line);

}  // namespace velk
