#include "reports/log_view.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "base/dates.h"
#include "base/errors.h"
#include "base/numbers.h"
#include "log/row_time.h"
#include "platform/database/catalog.h"
#include "reports/texts.h"

namespace velk {

namespace {

constexpr int kBlockRows = 64;
constexpr std::size_t kBlocksKept = 32;
constexpr int kRowsOfWalk = 256;
constexpr std::size_t kRowsOfStep = 16;
constexpr std::size_t kOrdersKept = 8;  ///< 10 MB each for a log of 2.6 million rows
constexpr double kReadingShare = 0.7;   ///< of a sort

}  // namespace

std::string CellText(const FieldValue& field, CellKind kind, bool isIdentity) {
  if (const auto* text = std::get_if<std::string>(&field); text && kind != CellKind::Date && kind != CellKind::Time)
    return *text;
  if (std::holds_alternative<std::monostate>(field)) return {};
  if (kind == CellKind::Date || kind == CellKind::Time) {
    const double moment = RowTime(field, field);
    if (IsDateTime(moment)) return FormatDate(moment, kind == CellKind::Date ? "dd-mmm-yyyy" : "hh:mm:ss");
    const auto* text = std::get_if<std::string>(&field);
    return text ? *text : std::string();
  }
  const auto* whole = std::get_if<std::int64_t>(&field);
  if (whole && isIdentity) return std::to_string(*whole);
  return Format(whole ? static_cast<double>(*whole) : std::get<double>(field), "#,##0.000");
}

LogView::LogView(const std::string& path, LongTask& task) : reader_(path) {
  task.Doing(text::ReadingLog);
  order_ = RowOrder(reader_.KeysByTime([&](std::int64_t read) { task.Step(static_cast<double>(read), 0); }));
  if (order_.Count() == 0) return;
  first_ = TimeOf(0);
  last_ = TimeOf(order_.Count() - 1);
}

CellKind LogView::KindOf(int column) const {
  const std::string& name = Columns()[static_cast<std::size_t>(column)];
  if (SameName(name, "Date")) return CellKind::Date;
  if (SameName(name, "Time")) return CellKind::Time;
  return CellKind::Number;
}

bool LogView::IsIdentity(int column) const {
  return SameName(Columns()[static_cast<std::size_t>(column)], "ID");
}

const std::vector<FieldValue>& LogView::Fields(int row) {
  const int block = row / kBlockRows;
  auto found = blocks_.find(block);
  if (found == blocks_.end()) {
    std::vector<std::int64_t> keys;
    const int end = std::min(order_.Count(), (block + 1) * kBlockRows);
    for (int i = block * kBlockRows; i < end; ++i) keys.push_back(order_.KeyAt(i));
    if (blocks_.size() >= kBlocksKept) blocks_.clear();
    found = blocks_.emplace(block, reader_.Fields(keys)).first;
  }
  return found->second[static_cast<std::size_t>(row % kBlockRows)];
}

FieldValue LogView::FieldOf(int row, const std::string& column) {
  const auto named =
      std::find_if(Columns().begin(), Columns().end(), [&](const std::string& name) { return SameName(name, column); });
  const std::vector<FieldValue>& fields = Fields(row);
  const auto index = static_cast<std::size_t>(named - Columns().begin());
  return index < fields.size() ? fields[index] : FieldValue();
}

std::string LogView::Text(int row, int column) {
  const std::vector<FieldValue>& fields = Fields(row);
  if (fields.empty()) return {};
  return CellText(fields[static_cast<std::size_t>(column)], KindOf(column), IsIdentity(column));
}

/// Nothing for a row that is not in the file: it was deleted, here or by somebody else.
std::optional<double> LogView::TimeAt(Place place) {
  if (order_.IsGone(place)) return std::nullopt;
  reader_.Choose({});
  const auto row = reader_.ByKey(order_.Keys()[place]);
  return row ? std::optional(row->time) : std::nullopt;
}

double LogView::TimeOf(int row) {
  return TimeAt(order_.PlaceAt(row)).value_or(std::nan(""));
}

/// The time of a row, or of the next one ahead of it that is in the file, down to `first`; NaN where there is none.
double LogView::TimeNear(int row, int first) {
  for (; row >= first; --row)
    if (const auto time = TimeAt(order_.PlaceAt(row))) return *time;
  return std::nan("");
}

// --- Range and order ---

/// The first place at a time or later (behind: later). Rows without a time stand first.
Place LogView::FirstPlace(double time, bool behind) {
  Place low = 0, high = static_cast<Place>(order_.Keys().size());
  while (low < high) {
    const Place middle = low + (high - low) / 2;
    Place there = middle;
    std::optional<double> known = TimeAt(there);
    while (!known && there > low) known = TimeAt(--there);
    const double at = known.value_or(std::nan(""));
    if (behind ? at > time : at >= time)
      high = there;
    else
      low = middle + 1;
  }
  return low;
}

void LogView::SetRange(double from, double to) {
  const Place first = FirstPlace(from, false);
  order_.SetRange(first, std::max(first, FirstPlace(to, true)));
  blocks_.clear();
}

void LogView::SortBy(int column, bool descending, LongTask& task) {
  if (!sorted_.contains(column)) {
    auto sorted = std::make_unique<SortedPlaces>(ReadSorted(column, task));
    if (sorted_.size() >= kOrdersKept) {
      order_.SortBy(nullptr, false);
      sorted_.clear();
    }
    sorted_[column] = std::move(sorted);
  }
  order_.SortBy(sorted_[column].get(), descending);
  blocks_.clear();
}

SortedPlaces LogView::ReadSorted(int column, LongTask& task) {
  task.Doing(text::SortingLog + Columns()[static_cast<std::size_t>(column)]);
  const std::vector<std::int64_t>& keys = order_.Keys();
  std::vector<Place> byKey;  // empty where the order of time is that of the keys
  if (!std::is_sorted(keys.begin(), keys.end())) {
    byKey.resize(keys.size());
    std::iota(byKey.begin(), byKey.end(), Place{0});
    std::sort(byKey.begin(), byKey.end(), [&](Place a, Place b) { return keys[a] < keys[b]; });
  }
  const auto placeOf = [&](std::size_t i) { return byKey.empty() ? static_cast<Place>(i) : byKey[i]; };
  ColumnSort sort(keys.size());
  const auto count = static_cast<double>(keys.size());
  std::size_t next = 0;
  // A row that was deleted here may come back, to where it belongs; one that somebody else deleted doesn't.
  const auto passDeleted = [&] {
    const auto removed = removed_.find(placeOf(next));
    if (removed != removed_.end()) sort.Take(removed->first, removed->second.at(static_cast<std::size_t>(column)));
    ++next;
  };
  reader_.ReadColumn(column, [&](std::int64_t key, const FieldValue& value) {
    while (next < keys.size() && keys[placeOf(next)] < key) passDeleted();
    if (next < keys.size() && keys[placeOf(next)] == key) sort.Take(placeOf(next++), value);
    if (next % kRowsOfWalk == 0) task.Step(kReadingShare * static_cast<double>(next), count);
  });
  while (next < keys.size()) passDeleted();
  return sort.Sort([&](double done, double of) { task.Step(kReadingShare + (1 - kReadingShare) * done / of, 1); });
}

// --- Walks ---

int LogView::RowAtTime(int row, double time, LongTask& task) {
  const bool back = time < TimeNear(row, 0);
  if (order_.IsByTime()) {
    int low = 0, high = order_.Count();
    while (low < high) {
      const int middle = low + (high - low) / 2;
      const double at = TimeNear(middle, low);
      if (back ? at > time : at >= time)
        high = middle;
      else
        low = middle + 1;
    }
    return back ? std::max(0, low - 1) : std::clamp(low, row, order_.Count() - 1);
  }
  const int step = back ? -1 : 1;
  for (int i = row + step;; i += step) {
    if (i < 0 || i >= order_.Count()) return i - step;
    task.Step(std::abs(i - row), order_.Count());
    const double at = TimeOf(i);
    if (back ? at <= time : at >= time) return i;
  }
}

std::optional<int> LogView::FindEvent(int row, EventSearch search, const std::vector<int>& watched, LongTask& task,
                                      int& reached) {
  reached = row;
  bool isByKey = true;
  for (int i = row + 1; i < order_.Count() && isByKey; ++i) isByKey = order_.KeyAt(i - 1) < order_.KeyAt(i);
  return isByKey ? FindByKey(row, search, watched, task, reached) : FindOneByOne(row, search, watched, task, reached);
}

/// Rows that stand in the order in which the file has them.
std::optional<int> LogView::FindByKey(int row, EventSearch& search, const std::vector<int>& watched, LongTask& task,
                                      int& reached) {
  const int count = order_.Count();
  const auto step = [&] { task.Step(reached - row, count - row); };
  reader_.Choose(watched);
  RowBlocks blocks = reader_.Blocks({order_.KeyAt(row), order_.KeyAt(count - 1)});
  RowBlock block;
  for (int next = row; blocks.Next(block, step);)
    for (std::size_t i = 0; i < block.Count(); ++i) {
      while (order_.KeyAt(next) < block.keys[i]) ++next;
      if (order_.KeyAt(next) != block.keys[i]) continue;  // of a time that is not shown
      reached = next;
      if (search.Push(block.Values(i))) return reached;
      if (i % kRowsOfStep == 0) step();
    }
  return std::nullopt;
}

std::optional<int> LogView::FindOneByOne(int row, EventSearch& search, const std::vector<int>& watched, LongTask& task,
                                         int& reached) {
  RowBlock block;
  for (int begin = row; begin < order_.Count(); begin += kRowsOfWalk) {
    std::vector<std::int64_t> keys;
    const int end = std::min(order_.Count(), begin + kRowsOfWalk);
    for (int i = begin; i < end; ++i) keys.push_back(order_.KeyAt(i));
    reader_.Choose(watched);  // events have run
    reader_.ReadKeys(keys, block);
    int next = begin;
    for (std::size_t i = 0; i < block.Count(); ++i) {
      while (order_.KeyAt(next) != block.keys[i]) ++next;  // deleted by somebody else
      reached = next;
      if (search.Push(block.Values(i))) return reached;
      if (i % kRowsOfStep == 0) task.Step(reached - row, order_.Count() - row);
    }
  }
  return std::nullopt;
}

// --- Rows that go and come back ---

void LogView::Remove(Place place, std::vector<FieldValue> fields) {
  order_.Remove(place);
  removed_[place] = std::move(fields);
  blocks_.clear();
}

void LogView::Restore(Place place, std::int64_t key) {
  order_.Restore(place, key);
  removed_.erase(place);
  blocks_.clear();
}

}  // namespace velk
