#pragma once

#include <cstdint>
#include <optional>

#include "log/log_layout.h"
#include "log/row_filter.h"
#include "platform/database/command.h"
#include "platform/database/connection.h"

namespace velk {

/// Finds the rows of a time without reading what lies between: by the index over Date and Time, or in a file without
/// one by bisection over the keys. That needs rows in order of time, so such a file is read through once, at the first
/// search; where its rows stand in another order, every search gives all rows, for the filter to choose from.
class RowFinder {
 public:
  explicit RowFinder(LogLayout layout) : layout_(std::move(layout)) {}

  /// The keys between which all rows that pass the filter lie, and as few others as can be told; nothing where no row
  /// passes. The end stays open without `to`: what is recorded later belongs to it. Where the clock was set back, rows
  /// of the time before count from the first one in order of time.
  std::optional<KeySpan> Find(Connection& connection, const RowFilter& filter);

  /// The key of the last row at or before a date-time.
  std::optional<std::int64_t> LastUpTo(Connection& connection, double time);

  /// The condition of a filter in a statement, beginning with " AND "; empty for all rows.
  static std::string Condition(const RowFilter& filter);
  /// Binds what the condition asks for, from `index` on; gives the index behind.
  static int Bind(Command& command, int index, const RowFilter& filter);

 private:
  std::optional<KeySpan> FindByIndex(Connection& connection, const RowFilter& filter);
  std::optional<KeySpan> FindDays(Connection& connection, const RowFilter& filter);
  std::optional<std::int64_t> FirstBySteps(Connection& connection, double from);
  std::optional<std::int64_t> OneKey(Connection& connection, const std::string& condition, double time);
  std::optional<KeySpan> FindByBisection(Connection& connection, const RowFilter& filter);
  std::optional<KeySpan> AllRows(Connection& connection) const;
  bool StandsInOrder(Connection& connection);

  LogLayout layout_;
  // What is known of the order of a file without an index.
  bool inOrder_ = true;
  std::optional<std::int64_t> checkedTo_;
  double checkedDate_ = 0;
  double checkedTime_ = 0;
};

}  // namespace velk
