#include "exchange/csv_table.h"

#include <algorithm>
#include <limits>

#include "exchange/csv_times.h"
#include "platform/files/line_reader.h"

namespace velk {

CsvTable::CsvTable(CsvFile& file) : ColumnNames(file.Shape().ColumnNames), file_(file) {
}

int CsvTable::Rows() const {
  const std::int64_t rows = file_.Lines() - FirstLine() - static_cast<std::int64_t>(deleted_.size());
  return static_cast<int>(std::clamp<std::int64_t>(rows, 0, std::numeric_limits<int>::max()));
}

int CsvTable::Columns() const {
  return file_.Shape().ColumnsAhead() + static_cast<int>(ColumnNames.size());
}

std::string CsvTable::Heading(int column) const {
  const CsvShape& shape = file_.Shape();
  const int ahead = shape.ColumnsAhead();
  if (column >= ahead) return ColumnNames[static_cast<std::size_t>(column - ahead)];
  if (!shape.hasHeader) return "Time";
  return column == 0 ? shape.DateColumnName : shape.TimeColumnName;
}

std::string CsvTable::Cell(int row, int column) {
  std::string_view line = file_.Line(LineOf(row));
  for (int i = 0; i < column && !line.empty(); ++i) TakeField(line);
  const std::string_view field = TakeField(line);
  if (column == 0 && file_.Shape().hasHeader) {
    if (const auto day = CsvDay(field)) return CsvDayText(*day);
  } else if (column == 0) {
    if (const auto seconds = CsvSeconds(field)) return CsvTimeText(*seconds);
  }
  return std::string(field);
}

void CsvTable::Delete(const std::vector<int>& rows) {
  std::vector<std::int64_t> lines;
  lines.reserve(rows.size());
  for (const int row : rows) lines.push_back(LineOf(row));
  deleted_.insert(deleted_.end(), lines.begin(), lines.end());
  std::sort(deleted_.begin(), deleted_.end());
  deleted_.erase(std::unique(deleted_.begin(), deleted_.end()), deleted_.end());
}

/// Each deleted line at or before a row's pushes it one on.
std::int64_t CsvTable::LineOf(int row) const {
  const std::int64_t line = FirstLine() + row;
  std::size_t low = 0, high = deleted_.size();
  while (low < high) {
    const std::size_t middle = (low + high) / 2;
    if (deleted_[middle] - static_cast<std::int64_t>(middle) <= line)
      low = middle + 1;
    else
      high = middle;
  }
  return line + static_cast<std::int64_t>(low);
}

std::string CsvTable::JobStartDate() const {
  if (!file_.Shape().hasHeader) return {};
  LineReader lines(file_.Bytes(), file_.TextStart());
  if (!lines.Next() || !lines.Next()) return {};
  const std::string second = ToUtf8(lines.Line(), file_.Page());
  std::string_view rest = second;
  return std::string(TakeField(rest));
}

}  // namespace velk
