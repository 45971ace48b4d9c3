#include "reports/row_order.h"

#include <algorithm>

namespace velk {

namespace {

constexpr std::size_t kSortedAtOnce = std::size_t{1} << 16;

}  // namespace

void ColumnSort::Take(Place place, const FieldValue& value) {
  if (const auto* number = std::get_if<double>(&value)) return items_.push_back({*number, place, kNumber});
  if (const auto* whole = std::get_if<std::int64_t>(&value))
    return items_.push_back({static_cast<double>(*whole), place, kNumber});
  if (const auto* text = std::get_if<std::string>(&value)) {
    items_.push_back({0, place, static_cast<std::int32_t>(texts_.size())});
    texts_.push_back(*text);
    return;
  }
  items_.push_back({0, place, kEmpty});
}

bool ColumnSort::IsLess(const Item& a, const Item& b) const {
  const bool texts = a.text >= 0 && b.text >= 0;
  if (texts) return texts_[static_cast<std::size_t>(a.text)] < texts_[static_cast<std::size_t>(b.text)];
  if (a.text == b.text) return a.number < b.number;
  return a.text < b.text;
}

bool ColumnSort::IsBefore(const Item& a, const Item& b) const {
  if (IsLess(a, b)) return true;
  return !IsLess(b, a) && a.place < b.place;
}

/// In pieces, so that events run in between: each piece by itself, then two and two together.
SortedPlaces ColumnSort::Sort(const std::function<void(double done, double of)>& step) {
  const auto before = [this](const Item& a, const Item& b) { return IsBefore(a, b); };
  const std::size_t count = items_.size();
  const auto at = [&](std::size_t index) {
    return items_.begin() + static_cast<std::ptrdiff_t>(std::min(index, count));
  };
  double passes = 1, done = 0;
  for (std::size_t piece = kSortedAtOnce; piece < count; piece *= 2) ++passes;
  const auto worked = [&](std::size_t rows) {
    done += static_cast<double>(rows);
    step(done, passes * static_cast<double>(count));
  };
  for (std::size_t i = 0; i < count; i += kSortedAtOnce) {
    std::sort(at(i), at(i + kSortedAtOnce), before);
    worked(kSortedAtOnce);
  }
  for (std::size_t piece = kSortedAtOnce; piece < count; piece *= 2)
    for (std::size_t i = 0; i < count; i += 2 * piece) {
      std::inplace_merge(at(i), at(i + piece), at(i + 2 * piece), before);
      worked(2 * piece);
    }
  SortedPlaces sorted;
  sorted.places.reserve(count);
  sorted.sameAsBefore.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    sorted.places.push_back(items_[i].place);
    sorted.sameAsBefore.push_back(i > 0 && !IsLess(items_[i - 1], items_[i]));
  }
  return sorted;
}

RowOrder::RowOrder(std::vector<std::int64_t> keysByTime)
    : keys_(std::move(keysByTime)), gone_(keys_.size(), false), end_(static_cast<Place>(keys_.size())) {
  Fill();
}

int RowOrder::RowOf(Place place) const {
  const auto found = IsByTime() ? std::lower_bound(shown_.begin(), shown_.end(), place)
                                : std::find(shown_.begin(), shown_.end(), place);
  return found == shown_.end() || *found != place ? -1 : static_cast<int>(found - shown_.begin());
}

void RowOrder::SetRange(Place first, Place end) {
  first_ = first;
  end_ = end;
  Fill();
}

void RowOrder::SortBy(const SortedPlaces* sorted, bool descending) {
  sorted_ = sorted;
  descending_ = descending;
  Fill();
}

void RowOrder::Remove(Place place) {
  gone_[place] = true;
  const int row = RowOf(place);
  if (row >= 0) shown_.erase(shown_.begin() + row);
}

void RowOrder::Restore(Place place, std::int64_t key) {
  gone_[place] = false;
  keys_[place] = key;
  Fill();
}

void RowOrder::Fill() {
  shown_.clear();
  shown_.reserve(end_ - first_);
  if (sorted_) return FillSorted();
  for (Place place = first_; place < end_; ++place)
    if (!gone_[place]) shown_.push_back(place);
}

/// Rows of the same value stay in order of time, whichever way the values go.
void RowOrder::FillSorted() {
  const std::vector<Place>& places = sorted_->places;
  const auto show = [&](std::size_t index) {
    if (IsShown(places[index])) shown_.push_back(places[index]);
  };
  if (!descending_) {
    for (std::size_t i = 0; i < places.size(); ++i) show(i);
    return;
  }
  for (std::size_t end = places.size(); end > 0;) {
    std::size_t begin = end - 1;
    while (begin > 0 && sorted_->sameAsBefore[begin]) --begin;
    for (std::size_t i = begin; i < end; ++i) show(i);
    end = begin;
  }
}

}  // namespace velk
