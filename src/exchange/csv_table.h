#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "exchange/csv_file.h"

namespace velk {

/// The rows of a file in a grid: a view over the file, with other names for its columns, and without the rows that were
/// deleted. More of them appear while the file is indexed.
class CsvTable {
 public:
  /// The file outlives it.
  explicit CsvTable(CsvFile& file);

  CsvFile& File() const { return file_; }
  /// Of the parameters, in order; whoever renames one writes here.
  std::vector<std::string> ColumnNames;

  int Rows() const;
  int Columns() const;
  std::string Heading(int column) const;
  /// The text of a field: a sound date of the first column as "dd-mmm-yyyy", in a file without names a time as
  /// "hh:mm:ss", anything else as it stands; empty where the row has no such field.
  std::string Cell(int row, int column);
  /// Takes rows out, by their numbers from 0 on, in any order.
  void Delete(const std::vector<int>& rows);

  /// Lines of the file that were deleted, counted from 0, in order.
  const std::vector<std::int64_t>& DeletedLines() const { return deleted_; }
  /// The date of the first row, as it stands in the file; empty where the file tells none.
  std::string JobStartDate() const;

 private:
  std::int64_t FirstLine() const { return file_.Shape().hasHeader ? 1 : 0; }
  std::int64_t LineOf(int row) const;

  CsvFile& file_;
  std::vector<std::int64_t> deleted_;
};

}  // namespace velk
