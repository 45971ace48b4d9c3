#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "log/log_layout.h"
#include "log/log_row.h"
#include "log/row_blocks.h"
#include "log/row_filter.h"
#include "log/row_finder.h"
#include "log/row_positions.h"
#include "log/row_source.h"
#include "log/row_tally.h"
#include "log/summary_rows.h"
#include "platform/database/connection.h"

namespace velk {

/// Reads the rows of a log, of one that is being recorded too: any number of readers, in this program and in others.
/// Nothing is held between calls that could disturb the recording. The file is opened read-only; one that a program
/// left behind when it died is read with all its rows.
///
/// Rows go by their key, the ID; in a file without that by the order in which they were written. Each call raises a
/// RuntimeError that names the file where it can't be read.
class LogReader {
 public:
  /// Raises NoSuchTable for a database without logData, and what Connection::Open raises.
  explicit LogReader(std::string path);

  const std::string& Path() const { return path_; }
  /// Names of the columns that hold channels, in order: those besides ID, Date and Time, until Arrange tells others.
  const std::vector<std::string>& Channels() const { return channels_; }
  /// A channel by the name of its column, in any case (ASCII), counted from 0; -1 where there is none.
  int ChannelOf(const std::string& name) const;
  bool HasId() const { return layout_.hasId; }
  /// Names of all columns, in order.
  const std::vector<std::string>& Columns() const { return layout_.columns; }

  /// From here on the channels are these columns, counted from 0 among those that hold channels, in this order. Rows
  /// have the values of all of them. Raises SubscriptOutOfRange.
  void Arrange(const std::vector<int>& columns);

  /// The channels that rows have values of from here on, counted from 0, in this order; all of them at first. Few are
  /// read much faster than 64.
  void Choose(std::vector<int> channels);

  /// The first rows that pass the filter, `count` of them at most, in the order of their keys.
  std::vector<LogRow> Page(const RowFilter& filter, int count);
  /// The keys between which the rows of a filter lie, for pages to follow; nothing where there is no row.
  std::optional<KeySpan> Find(const RowFilter& filter);
  /// As above, of the rows within a span of keys.
  std::vector<LogRow> Page(const RowFilter& filter, const KeySpan& span, int count);

  /// Nothing where there is no such row.
  std::optional<LogRow> First();
  std::optional<LogRow> Last();
  std::optional<LogRow> ByKey(std::int64_t key);
  /// The row whose time is nearest to a date-time; of two the earlier one.
  std::optional<LogRow> Nearest(double time);

  // Positions count all rows in the order of their keys, from 1. Rows that are recorded meanwhile are seen; those that
  // were deleted only by Refresh.
  std::int64_t Count();
  std::optional<LogRow> ByPosition(std::int64_t position);
  /// 0 for a key that no row has.
  std::int64_t PositionOf(std::int64_t key);
  void Refresh() {
    positions_.Forget();
    tally_ = {};
  }
  /// How many rows there are, without reading all of the file for that: each call counts up to `most` rows on, and
  /// until the last one is reached the distance of keys stands for the others.
  std::int64_t Tally(int most);

  /// All fields of the rows of these keys, as they stand in the file; none for a row that is not there.
  std::vector<std::vector<FieldValue>> Fields(const std::vector<std::int64_t>& keys);
  /// The rows of these keys, in their order, but for those that are not there.
  void ReadKeys(const std::vector<std::int64_t>& keys, RowBlock& block);
  /// The keys of all rows in order of time, those of the same time in the order of their keys. `step` is told every
  /// thousand rows how many were read; it may let events run, and throw to leave it.
  std::vector<std::int64_t> KeysByTime(const std::function<void(std::int64_t read)>& step);
  /// Walks through one column, counted from 0 among all, in the order of keys.
  void ReadColumn(int column, const std::function<void(std::int64_t key, const FieldValue& value)>& visit);

  /// The comments of the report beside the rows, as ReadComments gives them.
  std::vector<ReportComment> Comments(const RowFilter& filter);

  /// The rows of a filter one after the other; not beyond the life of the reader.
  std::unique_ptr<RowSource> Rows(const RowFilter& filter = {});
  /// The same within a span of keys.
  std::unique_ptr<RowSource> Rows(const RowFilter& filter, const KeySpan& span);
  /// All rows within a span of keys, for who walks through millions of them.
  RowBlocks Blocks(const KeySpan& span);

 private:
  class Access;

  std::vector<std::int64_t> KeysSortedByTime(const std::function<void(std::int64_t read)>& step);
  std::optional<LogRow> One(const std::string& condition, std::int64_t key);
  LogRow RowOf(const Command& command) const;
  void ChooseAll();

  std::string path_;
  std::shared_ptr<Connection> connection_;  ///< kept between calls only while nobody records to the file
  LogLayout layout_;
  RowFinder finder_;
  RowPositions positions_;
  RowTally tally_;
  std::vector<std::string> channels_;
  std::vector<int> chosen_;
  std::string columns_;  ///< key, date, time and the chosen channels, as they stand in a statement
};

}  // namespace velk
