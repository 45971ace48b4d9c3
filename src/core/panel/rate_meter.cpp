#include "core/panel/rate_meter.h"

namespace velk {

void RateMeter::Note(long long count, std::int64_t ticks, std::int64_t windowMs) {
  if (count == 0 || (!marks_.empty() && marks_.back().count == count)) return;
  marks_.push_back({count, ticks});
  while (marks_.size() > 2 && marks_[1].ticks <= ticks - windowMs) marks_.pop_front();
}

std::optional<double> RateMeter::PerSecond() const {
  if (marks_.size() < 2 || marks_.back().ticks <= marks_.front().ticks) return std::nullopt;
  const auto samples = static_cast<double>(marks_.back().count - marks_.front().count);
  return 1000 * samples / static_cast<double>(marks_.back().ticks - marks_.front().ticks);
}

}  // namespace velk
