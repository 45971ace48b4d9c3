#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/database/command.h"

namespace velk {

/// A row of a log by its number, from 0, in order of time.
using Place = std::uint32_t;

/// All rows of a log in the order of one column. Rows with the same value stand in order of time.
struct SortedPlaces {
  std::vector<Place> places;
  std::vector<bool> sameAsBefore;  ///< of each, whether it has the value of the one before
};

/// Puts the values of a column in order: empty ones, numbers, texts.
class ColumnSort {
 public:
  explicit ColumnSort(std::size_t rows) { items_.reserve(rows); }

  void Take(Place place, const FieldValue& value);
  /// `step` is told every few milliseconds how much is done; it may let events run, and throw to leave the work.
  SortedPlaces Sort(const std::function<void(double done, double of)>& step);

 private:
  struct Item {
    double number;
    Place place;
    std::int32_t text;  ///< in texts_; kNumber and kEmpty otherwise
  };
  static constexpr std::int32_t kEmpty = -2, kNumber = -1;

  bool IsLess(const Item& a, const Item& b) const;
  bool IsBefore(const Item& a, const Item& b) const;

  std::vector<Item> items_;
  std::vector<std::string> texts_;
};

/// Which rows of a log are shown, and in which order.
class RowOrder {
 public:
  RowOrder() = default;
  /// All rows, in order of time.
  explicit RowOrder(std::vector<std::int64_t> keysByTime);

  const std::vector<std::int64_t>& Keys() const { return keys_; }

  // Rows that are shown count from 0.
  int Count() const { return static_cast<int>(shown_.size()); }
  Place PlaceAt(int row) const { return shown_[static_cast<std::size_t>(row)]; }
  std::int64_t KeyAt(int row) const { return keys_[PlaceAt(row)]; }
  /// Where a place is shown; -1 where it isn't.
  int RowOf(Place place) const;

  /// Shows the places from `first` up to one ahead of `end`.
  void SetRange(Place first, Place end);
  /// Shows them in the order of a column; null for the order of time. `sorted` outlives the order.
  void SortBy(const SortedPlaces* sorted, bool descending);
  bool IsByTime() const { return sorted_ == nullptr; }

  bool IsGone(Place place) const { return gone_[place]; }
  void Remove(Place place);
  /// Takes a removal back; the row has this key from here on.
  void Restore(Place place, std::int64_t key);

 private:
  void Fill();
  void FillSorted();
  bool IsShown(Place place) const { return place >= first_ && place < end_ && !gone_[place]; }

  std::vector<std::int64_t> keys_;
  std::vector<bool> gone_;
  Place first_ = 0, end_ = 0;
  const SortedPlaces* sorted_ = nullptr;
  bool descending_ = false;
  std::vector<Place> shown_;
};

}  // namespace velk
