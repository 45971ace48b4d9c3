#include "reports/event_search.h"

namespace velk {

bool EventSearch::Push(const std::vector<double>& values) {
  bool jumps = false;
  if (taken_ >= before_.size())
    for (std::size_t i = 0; i < values.size() && !jumps; ++i)
      jumps = Jumps((before_[0][i] + before_[1][i]) / 2, values[i]);
  before_[taken_ % before_.size()] = values;
  ++taken_;
  return jumps;
}

bool EventSearch::Jumps(double mean, double value) const {
  if (mean > 0) return value > factor_ * mean || value < mean / factor_;
  if (mean < 0) return value < factor_ * mean || value > mean / factor_;
  return false;
}

}  // namespace velk
