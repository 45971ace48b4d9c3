// Any bytes as a text file that becomes a log: its first line is analysed, its lines are indexed and shown in a grid,
// its rows are read as an import reads them. What the grid shows and what the import reads agree.

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "exchange/csv_rows.h"
#include "exchange/csv_table.h"

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

/// A file in memory that holds the bytes of a run.
class MemoryFile {
 public:
  MemoryFile() : descriptor_(memfd_create("fuzz_csv", MFD_CLOEXEC)) {}
  std::string Fill(const std::uint8_t* data, std::size_t size) const {
    Require(ftruncate(descriptor_, 0) == 0);
    Require(pwrite(descriptor_, data, size, 0) == static_cast<ssize_t>(size));
    return "/proc/self/fd/" + std::to_string(descriptor_);
  }

 private:
  int descriptor_;
};

void LookAt(velk::CsvTable& table) {
  std::int64_t shown = 0;
  for (int row = 0; row < table.Rows(); ++row)
    for (int column = 0; column < std::min(table.Columns(), 8); ++column)
      shown += static_cast<std::int64_t>(table.Cell(row, column).size());
  Require(shown >= 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const MemoryFile memory;
  velk::CsvFile file(memory.Fill(data, size), size % 2 == 0 ? velk::CodePage::Cyrillic : velk::CodePage::Western);
  while (file.Index(16)) {
  }
  velk::CsvTable table(file);
  Require(file.Shape().ColumnCount >= 0);
  Require(table.ColumnNames.size() == static_cast<std::size_t>(file.Shape().ColumnCount));
  LookAt(table);

  const velk::CsvPlan plan = velk::PlanOf(file.Shape(), table.ColumnNames);
  velk::CsvRowReader reader(file, plan);
  velk::CsvRows rows;
  std::int64_t count = 0;
  while (reader.Read(rows, 7)) {
    count += static_cast<std::int64_t>(rows.Count());
    Require(rows.times.size() == rows.Count());
    Require(rows.values.size() == rows.Count() * plan.names.size());
    Require(rows.comments.size() == (plan.commentField < 0 ? 0 : rows.Count()));
    for (const double time : rows.times) Require(time >= 0 && time < 1);
    for (const double value : rows.values) Require(!std::isnan(value));
  }
  if (reader.BadLine() == 0)
    Require(count == table.Rows());
  else
    Require(count < table.Rows());
  return 0;
}
