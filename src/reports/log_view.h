#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "log/log_reader.h"
#include "log/row_edits.h"
#include "platform/dialogs/long_task.h"
#include "reports/event_search.h"
#include "reports/row_order.h"
#include "reports/table_layout.h"

namespace velk {

/// The rows of a log as they were when it was opened, for who works through them: a range of time, in an order of his.
/// Rows are read when they are asked for, a block at a time. Raises what LogReader raises; what takes a task may be
/// cancelled, and then nothing has changed.
class LogView {
 public:
  LogView(const std::string& path, LongTask& task);

  const std::string& Path() const { return reader_.Path(); }
  const std::vector<std::string>& Columns() const { return reader_.Columns(); }
  CellKind KindOf(int column) const;
  /// Whether a column numbers the rows: whole numbers, which are no values.
  bool IsIdentity(int column) const;
  /// Names of the columns that hold channels, in order.
  const std::vector<std::string>& Channels() const { return reader_.Channels(); }

  /// Date-times of the first and of the last row of the file, nothing for an empty one.
  std::optional<double> FirstTime() const { return first_; }
  std::optional<double> LastTime() const { return last_; }

  // Rows count from 0.
  int Count() const { return order_.Count(); }
  const RowOrder& Order() const { return order_; }
  /// The fields of a row, until the next call; empty where somebody else has deleted it.
  const std::vector<FieldValue>& Fields(int row);
  /// False for a row that somebody else has deleted since the log was opened.
  bool IsInFile(int row) { return TimeAt(order_.PlaceAt(row)).has_value(); }
  /// A field by the name of its column; Null where there is no such column.
  FieldValue FieldOf(int row, const std::string& column);
  /// NaN for a row without a time.
  double TimeOf(int row);
  /// The column that is shown as a cell, as a grid shows it: see CellText.
  std::string Text(int row, int column);

  /// Shows the rows between two date-times, both included.
  void SetRange(double from, double to);
  /// Shows the rows in the order of a column.
  void SortBy(int column, bool descending, LongTask& task);

  /// The row that "Go" stops at: walking from `row` towards a time, the first one that reaches or passes it, or the
  /// last of the way. Needs a row.
  int RowAtTime(int row, double time, LongTask& task);
  /// The first row behind `row` in which a channel jumps, with `row` and the next one for a beginning; nothing where
  /// none does. `watched` are channels, counted from 0. Where the task is cancelled, `reached` is where it was.
  std::optional<int> FindEvent(int row, EventSearch search, const std::vector<int>& watched, LongTask& task,
                               int& reached);

  /// A row was deleted from the file, with all its fields: columns that are sorted later still know where it belongs.
  void Remove(Place place, std::vector<FieldValue> fields);
  /// It is back, under this key.
  void Restore(Place place, std::int64_t key);

 private:
  using Fields64 = std::vector<std::vector<FieldValue>>;

  std::optional<double> TimeAt(Place place);
  double TimeNear(int row, int first);
  Place FirstPlace(double time, bool behind);
  std::optional<int> FindByKey(int row, EventSearch& search, const std::vector<int>& watched, LongTask& task,
                               int& reached);
  std::optional<int> FindOneByOne(int row, EventSearch& search, const std::vector<int>& watched, LongTask& task,
                                  int& reached);
  SortedPlaces ReadSorted(int column, LongTask& task);

  LogReader reader_;
  RowOrder order_;
  std::optional<double> first_, last_;
  std::map<int, std::unique_ptr<SortedPlaces>> sorted_;  ///< by column: the second time it is there at once
  std::map<Place, std::vector<FieldValue>> removed_;     ///< what the rows had that Remove was told of
  std::map<int, Fields64> blocks_;  ///< what was read of the rows shown, by the number of the block
};

/// How a grid shows a field: dates, times, numbers with thousands grouped and three places; whole ones for the
/// identity. What is none of these stands as it is.
std::string CellText(const FieldValue& field, CellKind kind, bool isIdentity);

}  // namespace velk
