#pragma once

#include <cstdint>
#include <string>

#include "base/language.h"
#include "exchange/csv_rows.h"
#include "platform/dialogs/long_task.h"

namespace velk {

/// What an import has come to.
struct CsvImportResult {
  std::int64_t rows = 0;
  std::int64_t badLine = 0;  ///< the line whose date or time is none, which ended it, counted from 1; 0: none did
};

/// Makes a log of the rows of a file: tables, graph settings, and a line in the report for each new comment. Until it
/// is complete there is no file of that name, or, where it replaces one, that stays. Raises FileAlreadyOpen where that
/// one is being recorded to, what reading and writing raise, and TaskCancelled.
CsvImportResult ImportIntoNewLog(const CsvFile& file, const CsvPlan& plan, const std::string& path, bool replaces,
                                 const Language& language, LongTask& task);

/// Appends them to a log whose columns are those of the plan. Raises as above; what was appended until then stays.
CsvImportResult AppendToLog(const CsvFile& file, const CsvPlan& plan, const std::string& path, const Language& language,
                            LongTask& task);

}  // namespace velk
