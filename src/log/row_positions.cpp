#include "log/row_positions.h"

#include <algorithm>

#include "platform/database/command.h"

namespace velk {

void RowPositions::Follow(Connection& connection, const LogLayout& layout) {
  const std::string& key = layout.key;
  Command ends(connection, "SELECT (SELECT min(" + key + ") FROM logData), (SELECT max(" + key + ") FROM logData)");
  ends.Next();
  const FieldValue first = ends.Field(0);
  if (!std::holds_alternative<std::int64_t>(first)) return Forget();
  const std::int64_t last = ends.Integer(1);
  if (count_ != 0 && last <= last_) return;
  Command count(connection, "SELECT count(*) FROM logData" + (count_ == 0 ? "" : " WHERE " + key + " > ?"));
  if (count_ == 0)
    first_ = std::get<std::int64_t>(first);
  else
    count.Bind(1, last_);
  count.Next();
  count_ += count.Integer(0);
  last_ = last;
  if (!keys_.empty() || count_ != last_ - first_ + 1) ReadKeys(connection, layout);
}

void RowPositions::ReadKeys(Connection& connection, const LogLayout& layout) {
  std::string sql = "SELECT " + layout.key + " FROM logData";
  // The index is a small part of the file.
  if (!keys_.empty())
    sql += " WHERE " + layout.key + " > ?";
  else if (!layout.index.empty())
    sql += " INDEXED BY " + layout.index;
  Command command(connection, sql);
  if (!keys_.empty()) command.Bind(1, keys_.back());
  while (command.Next()) keys_.push_back(command.Integer(0));
  if (!std::is_sorted(keys_.begin(), keys_.end())) std::sort(keys_.begin(), keys_.end());
}

std::optional<std::int64_t> RowPositions::KeyAt(std::int64_t position) const {
  if (position < 1 || position > count_) return std::nullopt;
  return keys_.empty() ? first_ + position - 1 : keys_[static_cast<std::size_t>(position - 1)];
}

std::int64_t RowPositions::PositionOf(std::int64_t key) const {
  if (count_ == 0 || key < first_ || key > last_) return 0;
  if (keys_.empty()) return key - first_ + 1;
  const auto found = std::lower_bound(keys_.begin(), keys_.end(), key);
  return *found == key ? found - keys_.begin() + 1 : 0;
}

}  // namespace velk
