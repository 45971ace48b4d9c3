#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/language.h"
#include "platform/dialogs/long_task.h"
#include "platform/printing/printer.h"
#include "reports/table_layout.h"

namespace velk {

/// The records of a table that is printed, apart from what a grid shows of them: its position stays.
class TableSource {
 public:
  virtual ~TableSource() = default;

  virtual const std::vector<PrintedColumn>& Columns() const = 0;
  /// Date-times of the first and of the last record.
  virtual double FirstTime() = 0;
  virtual double LastTime() = 0;
  virtual std::int64_t Count() = 0;
  /// Goes to the first record, and to the next one; false where there is none.
  virtual bool First() = 0;
  virtual bool Next() = 0;
  /// The value of a cell of the present record; nothing where it is no number.
  virtual std::optional<double> Number(int column) = 0;
  /// A cell of the present record as a grid shows it; empty for Null.
  virtual std::string Text(int column) = 0;
};

struct TablePrint {
  std::string title;
  int skipLines = 0;  ///< so many records are left out behind each that is printed
  double now = 0;     ///< the date of the head
  std::string family = "Small Fonts";
};

/// Prints a table on pages with a head each: numbers by their size, all else as it is shown, on several lines where it
/// is wider than its column. Raises what the printer and the source raise, and TaskCancelled; nothing is printed then.
void PrintGrid(Printer& printer, TableSource& source, const TablePrint& print, const Language& language,
               LongTask& task);

}  // namespace velk
