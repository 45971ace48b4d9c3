#include "graphs/external_follower.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "base/errors.h"

namespace velk {

namespace {

/// Rows that are drawn at a stretch.
constexpr std::size_t kRowsAtOnce = 2000;

bool ComesEarlier(const ForeignRow& a, const ForeignRow& b) {
  return a.time < b.time;
}

}  // namespace

void ExternalFollower::Begin(const LiveImport& live) {
  if (IsReading()) return;
  live_ = live;
  BeginAt(StartAt(plot_.LastRead()));
}

void ExternalFollower::BeginAt(const ForeignStart& start) {
  drawn_ = 0;
  later_.reset();
  plot_.BeginPoll();
  try {
    importReader_.Initialize(live_, tools_);
    read_ = importReader_.ReadData(start);
  } catch (const std::exception& error) {
    fault_ = TextOf(error);
  }
}

bool ExternalFollower::ReadPiece() {
  if (!IsReading()) return false;
  if (!read_) return Plot();
  try {
    const bool goesOn = read_->Read(waiting_);
    fault_ = {};
    if (goesOn) return false;
    later_ = read_->LaterDay();
  } catch (const std::exception& error) {
    Leave();
    fault_ = TextOf(error);
    return false;
  }
  read_.reset();
  if (!std::is_sorted(waiting_.begin(), waiting_.end(), ComesEarlier))
    std::stable_sort(waiting_.begin(), waiting_.end(), ComesEarlier);
  return Plot();
}

/// The next rows of a poll that has ended. A day is asked for by itself: where it brings nothing new, a later one may.
bool ExternalFollower::Plot() {
  const auto begin = waiting_.begin() + static_cast<std::ptrdiff_t>(plotted_);
  const auto count = std::min(waiting_.end() - begin, static_cast<std::ptrdiff_t>(kRowsAtOnce));
  plotted_ += static_cast<std::size_t>(count);
  const int drawn = plot_.PlotData({std::make_move_iterator(begin), std::make_move_iterator(begin + count)});
  drawn_ += drawn;
  if (plotted_ < waiting_.size()) return drawn > 0;
  Leave();
  if (drawn_ == 0 && later_) BeginAt({*later_, 0});
  return drawn > 0;
}

void ExternalFollower::Leave() {
  read_.reset();
  std::vector<ForeignRow>().swap(waiting_);
  plotted_ = 0;
}

}  // namespace velk
