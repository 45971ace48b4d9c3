#pragma once

#include <memory>
#include <string>
#include <vector>

#include "exchange/csv_rows.h"
#include "platform/database/command.h"

namespace velk {

/// Writes rows that were read into logData, and the comments among them into the report.
class RowInserter {
 public:
  /// Raises NoSuchTable without the tables. `comments` is the comments column of the report.
  RowInserter(const std::shared_ptr<Connection>& log, const CsvPlan& plan, const std::string& comments);

  /// ImportGridRows.
  void InsertRows(const CsvRows& rows);
  /// ImportGridComments: a line for each comment that differs from the one before it; empty ones don't count.
  void InsertComments(const CsvRows& rows);

 private:
  void Insert(Command& command, const CsvRows& rows, std::size_t first, std::size_t count) const;

  const std::size_t channels_;
  bool holdsComments_ = false;  ///< logData has their column
  std::unique_ptr<Command> row_;
  std::unique_ptr<Command> rows_;  ///< the same for several rows
  std::unique_ptr<Command> comment_;
  std::vector<std::size_t> reported_;  ///< channels that the report has columns of, from 0 on
  std::string lastComment_;
};

}  // namespace velk
