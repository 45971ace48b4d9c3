#include "graphs/external_follower.h"

#include <cstddef>
#include <utility>

#include "base/errors.h"

namespace velk {

namespace {

/// Rows of a poll that are drawn before it has ended.
constexpr std::size_t kMostWaiting = 20'000;

}  // namespace

void ExternalFollower::Begin(const LiveImport& live) {
  if (read_) return;
  live_ = live;
  BeginAt(StartAt(plot_.LastRead()));
}

void ExternalFollower::BeginAt(const ForeignStart& start) {
  drawn_ = 0;
  waiting_.clear();
  plot_.BeginPoll();
  try {
    importReader_.Initialize(live_, tools_);
    read_ = importReader_.ReadData(start);
  } catch (const std::exception& error) {
    fault_ = TextOf(error);
  }
}

bool ExternalFollower::ReadPiece() {
  if (!read_) return false;
  try {
    const bool goesOn = read_->Read(waiting_);
    fault_ = {};
    if (!goesOn) return End();
  } catch (const std::exception& error) {
    Leave();
    fault_ = TextOf(error);
    return false;
  }
  return waiting_.size() >= kMostWaiting && Plot();
}

/// A day is asked for by itself: where it brings nothing new, a later one may.
bool ExternalFollower::End() {
  const std::optional<double> later = read_->LaterDay();
  read_.reset();
  const bool isDrawn = Plot();
  if (drawn_ == 0 && later) BeginAt({*later, 0});
  return isDrawn;
}

bool ExternalFollower::Plot() {
  const int drawn = plot_.PlotData(std::exchange(waiting_, {}));
  drawn_ += drawn;
  return drawn > 0;
}

void ExternalFollower::Leave() {
  read_.reset();
  waiting_.clear();
}

}  // namespace velk
