#include "reports/event_search.h"

namespace velk {

bool EventSearch::Push(std::span<const double> values) {
  unsigned jumps = 0;
  if (taken_ >= before_.size()) {
    // Without branches, so that several channels are compared at a time.
    for (std::size_t i = 0; i < values.size(); ++i) {
      const double mean = (before_[0][i] + before_[1][i]) / 2;
      const double far = factor_ * mean, near = mean / factor_, value = values[i];
      const unsigned above = static_cast<unsigned>(mean > 0) & (unsigned{value > far} | unsigned{value < near});
      const unsigned below = static_cast<unsigned>(mean < 0) & (unsigned{value < far} | unsigned{value > near});
      jumps |= above | below;
    }
  }
  before_[taken_ % before_.size()].assign(values.begin(), values.end());
  ++taken_;
  return jumps != 0;
}

}  // namespace velk
