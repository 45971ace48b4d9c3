#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/csv_file.h"
#include "platform/files/line_reader.h"

namespace velk {

/// What of a file becomes rows of a log.
struct CsvPlan {
  std::vector<std::string> names;          ///< of the parameters, as the operator left them
  std::vector<int> fields;                 ///< the place of each in a line, counted from 0, ascending
  int commentField = -1;                   ///< the place of the comments; -1: there are none
  double startDay = 0;                     ///< of the first row, where the file tells times only
  std::vector<std::int64_t> deletedLines;  ///< counted from 0, ascending
};

/// All columns of a file under these names; the last one, where it is called TheComment, as comments.
CsvPlan PlanOf(const CsvShape& shape, const std::vector<std::string>& names);

/// Rows that were read, column by column.
struct CsvRows {
  std::vector<double> days;
  std::vector<double> times;
  std::vector<double> values;         ///< those of one row behind the other
  std::vector<std::string> comments;  ///< none where the plan has none

  std::size_t Count() const { return days.size(); }
  void Clear();
};

/// The numeric value of a field: the number at its front, 0 where there is none.
double CsvNumber(std::string_view field);

/// Reads the rows of a file from the front to the end, or to the first one whose date or time is none. Blank lines at
/// the end are no rows.
class CsvRowReader {
 public:
  /// Both outlive it.
  CsvRowReader(const CsvFile& file, const CsvPlan& plan);

  /// Replaces `rows` by the next ones, at most so many; false where there are none. Raises DeviceIOError.
  bool Read(CsvRows& rows, std::size_t most);
  /// The line that ended the rows, counted from 1; 0 where none did.
  std::int64_t BadLine() const { return badLine_; }
  std::int64_t BytesRead() const { return lines_.End(); }

 private:
  bool IsRow();
  bool TakeRow(CsvRows& rows);
  bool TakeTime(std::string_view& rest, CsvRows& rows);

  const CsvPlan& plan_;
  const CodePage page_;
  const bool hasDates_;
  LineReader lines_;
  std::vector<int> slots_;  ///< by the place of a field: its parameter from 0 on, or -1
  std::int64_t line_ = 0;   ///< lines gone by
  std::size_t deleted_ = 0;
  std::int64_t blank_ = 0;  ///< the first of the blank lines behind the last row, counted from 1; 0: there is none
  std::int64_t badLine_ = 0;
  std::string dayText_;  ///< as the row before had it
  double day_ = 0;
  int seconds_ = -1;
};

}  // namespace velk
