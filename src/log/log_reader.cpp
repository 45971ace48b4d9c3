#include "log/log_reader.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include "base/errors.h"
#include "log/key_order.h"
#include "log/log_rows.h"
#include "log/row_time.h"
#include "platform/database/catalog.h"

namespace velk {

namespace {

constexpr int kFieldsBeforeValues = 3;
constexpr std::size_t kRowsAStep = 1024;

}  // namespace

/// The file for the length of one call. A write-ahead log is let go of at once: whoever ends the recording folds it in.
class LogReader::Access {
 public:
  explicit Access(LogReader& reader) : connection_(reader.connection_) {
    if (connection_ && !connection_->IsSameFile(reader.path_)) connection_.reset();
    if (!connection_) connection_ = Connection::Open(reader.path_, OpenMode::ReadOnly);
  }
  ~Access() {
    if (connection_ && connection_->IsRecordedTo()) connection_.reset();
  }
  Access(const Access&) = delete;
  Access& operator=(const Access&) = delete;

  operator Connection&() const { return *connection_; }  // NOLINT(google-explicit-constructor)

 private:
  std::shared_ptr<Connection>& connection_;
};

LogReader::LogReader(std::string path)
    : path_(std::move(path)), layout_(ReadLogLayout(Access(*this))), finder_(layout_), channels_(layout_.channels) {
  ChooseAll();
}

void LogReader::Arrange(const std::vector<int>& columns) {
  std::vector<std::string> arranged;
  for (const int column : columns) {
    if (column < 0 || column >= static_cast<int>(layout_.channels.size()))
      throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    arranged.push_back(layout_.channels[static_cast<std::size_t>(column)]);
  }
  channels_ = std::move(arranged);
  ChooseAll();
}

void LogReader::ChooseAll() {
  std::vector<int> all(channels_.size());
  std::iota(all.begin(), all.end(), 0);
  Choose(std::move(all));
}

int LogReader::ChannelOf(const std::string& name) const {
  const auto found = std::find_if(channels_.begin(), channels_.end(),
                                  [&](const std::string& channel) { return SameName(channel, name); });
  return found == channels_.end() ? -1 : static_cast<int>(found - channels_.begin());
}

void LogReader::Choose(std::vector<int> channels) {
  columns_ = layout_.key + ", Date, Time";
  for (const int channel : channels) {
    if (channel < 0 || channel >= static_cast<int>(channels_.size()))
      throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    columns_ += ", " + QuoteName(channels_[static_cast<std::size_t>(channel)]);
  }
  chosen_ = std::move(channels);
}

std::vector<LogRow> LogReader::Page(const RowFilter& filter, int count) {
  const auto span = Find(filter);
  return span ? Page(filter, *span, count) : std::vector<LogRow>();
}

std::optional<KeySpan> LogReader::Find(const RowFilter& filter) {
  const Access file(*this);
  return finder_.Find(file, filter);
}

std::vector<LogRow> LogReader::Page(const RowFilter& filter, const KeySpan& span, int count) {
  const Access file(*this);
  // By key only: an index would be asked for all rows of the filter and sort them.
  Command command(file, "SELECT " + columns_ + " FROM logData NOT INDEXED WHERE " + layout_.key + " BETWEEN ? AND ?" +
                            RowFinder::Condition(filter) + " ORDER BY " + layout_.key + " LIMIT ?");
  command.Bind(1, span.first).Bind(2, span.last);
  command.Bind(RowFinder::Bind(command, 3, filter), std::int64_t{count});
  std::vector<LogRow> rows;
  rows.reserve(static_cast<std::size_t>(std::max(count, 0)));
  while (command.Next()) rows.push_back(RowOf(command));
  return rows;
}

LogRow LogReader::RowOf(const Command& command) const {
  LogRow row;
  row.key = command.Integer(0);
  row.time = RowTime(command, 1);
  row.values.reserve(chosen_.size());
  for (int i = 0; i < static_cast<int>(chosen_.size()); ++i)
    row.values.push_back(command.Number(i + kFieldsBeforeValues));
  return row;
}

std::optional<LogRow> LogReader::One(const std::string& condition, std::int64_t key) {
  const Access file(*this);
  Command command(file, "SELECT " + columns_ + " FROM logData NOT INDEXED WHERE " + layout_.key + condition);
  command.Bind(1, key);
  return command.Next() ? std::optional(RowOf(command)) : std::nullopt;
}

std::optional<LogRow> LogReader::First() {
  return One(" >= ? ORDER BY " + layout_.key + " LIMIT 1", std::numeric_limits<std::int64_t>::min());
}

std::optional<LogRow> LogReader::Last() {
  return One(" <= ? ORDER BY " + layout_.key + " DESC LIMIT 1", std::numeric_limits<std::int64_t>::max());
}

std::optional<LogRow> LogReader::ByKey(std::int64_t key) {
  return One(" = ?", key);
}

std::optional<LogRow> LogReader::Nearest(double time) {
  const auto before = finder_.LastUpTo(Access(*this), time);
  const std::vector<LogRow> behind = Page({time, {}, RowFilter::Compare::Sum}, 1);
  std::optional<LogRow> row = before ? ByKey(*before) : std::nullopt;
  if (!behind.empty() && (!row || behind[0].time - time < time - row->time)) row = behind[0];
  return row;
}

std::int64_t LogReader::Count() {
  positions_.Follow(Access(*this), layout_);
  return positions_.Count();
}

std::optional<LogRow> LogReader::ByPosition(std::int64_t position) {
  positions_.Follow(Access(*this), layout_);
  const auto key = positions_.KeyAt(position);
  return key ? ByKey(*key) : std::nullopt;
}

std::int64_t LogReader::PositionOf(std::int64_t key) {
  positions_.Follow(Access(*this), layout_);
  return positions_.PositionOf(key);
}

std::int64_t LogReader::Tally(int most) {
  return tally_.Follow(Access(*this), layout_.key, most);
}

std::vector<std::vector<FieldValue>> LogReader::Fields(const std::vector<std::int64_t>& keys) {
  const Access file(*this);
  Command command(file, "SELECT * FROM logData NOT INDEXED WHERE " + layout_.key + " = ?");
  std::vector<std::vector<FieldValue>> rows(keys.size());
  for (std::size_t row = 0; row < keys.size(); ++row) {
    command.Bind(1, keys[row]);
    if (!command.Next()) continue;
    rows[row].reserve(layout_.columns.size());
    for (int i = 0; i < command.ColumnCount(); ++i) rows[row].push_back(command.Field(i));
    command.Reset();
  }
  return rows;
}

void LogReader::ReadKeys(const std::vector<std::int64_t>& keys, RowBlock& block) {
  const Access file(*this);
  Command command(file, "SELECT " + columns_ + " FROM logData NOT INDEXED WHERE " + layout_.key + " = ?");
  block = {};
  block.channels = chosen_.size();
  for (const std::int64_t key : keys) {
    command.Bind(1, key);
    if (!command.Next()) continue;
    AddRow(command, chosen_.size(), block);
    command.Reset();
  }
}

// The walks below keep the file open by a pointer of their own: what runs in between may read other rows of it.

std::vector<std::int64_t> LogReader::KeysByTime(const std::function<void(std::int64_t read)>& step) {
  if (layout_.index.empty()) return KeysSortedByTime(step);
  const Access file(*this);
  const std::shared_ptr<Connection> held = connection_;
  return KeysByIndex(*held, layout_, step);
}

/// Without an index. Rows without a time come first.
std::vector<std::int64_t> LogReader::KeysSortedByTime(const std::function<void(std::int64_t read)>& step) {
  const Access file(*this);
  const std::shared_ptr<Connection> held = connection_;
  Command rows(*held, "SELECT " + layout_.key + ", Date, Time FROM logData ORDER BY " + layout_.key);
  std::vector<std::pair<double, std::int64_t>> times;
  while (rows.Next()) {
    const double time = RowTime(rows.Field(1), rows.Field(2));
    times.emplace_back(std::isnan(time) ? -std::numeric_limits<double>::infinity() : time, rows.Integer(0));
    if (times.size() % kRowsAStep == 0) step(static_cast<std::int64_t>(times.size()));
  }
  if (!std::is_sorted(times.begin(), times.end())) std::sort(times.begin(), times.end());
  std::vector<std::int64_t> keys;
  keys.reserve(times.size());
  for (const auto& row : times) keys.push_back(row.second);
  return keys;
}

void LogReader::ReadColumn(int column, const std::function<void(std::int64_t key, const FieldValue& value)>& visit) {
  const Access file(*this);
  const std::shared_ptr<Connection> held = connection_;
  Command rows(*held, "SELECT " + layout_.key + ", " + QuoteName(layout_.columns.at(static_cast<std::size_t>(column))) +
                          " FROM logData NOT INDEXED ORDER BY " + layout_.key);
  while (rows.Next()) visit(rows.Integer(0), rows.Field(1));
}

std::vector<ReportComment> LogReader::Comments(const RowFilter& filter) {
  return ReadComments(Access(*this), filter);
}

RowBlocks LogReader::Blocks(const KeySpan& span) {
  const Access file(*this);
  std::vector<std::string> names;
  for (const int channel : chosen_) names.push_back(channels_[static_cast<std::size_t>(channel)]);
  return RowBlocks({path_, columns_, layout_.key, names, connection_->IsRecordedTo()}, span);
}

std::unique_ptr<RowSource> LogReader::Rows(const RowFilter& filter) {
  return std::make_unique<LogRows>(*this, filter);
}

std::unique_ptr<RowSource> LogReader::Rows(const RowFilter& filter, const KeySpan& span) {
  return std::make_unique<LogRows>(*this, filter, span);
}

}  // namespace velk
