#include "paper/dot_curve.h"

#include <algorithm>
#include <cmath>

namespace velk {

namespace {

/// A clock that jumps to and fro can make any number of steps between the same dots.
constexpr std::size_t kManySteps = 100'000;

}  // namespace

DotCurve::DotCurve(double dotsPerMillimetre, double height)
    : dots_(dotsPerMillimetre), rows_(static_cast<std::size_t>(std::ceil(height * dotsPerMillimetre)) + 1) {
}

void DotCurve::Add(const PageSegment& segment) {
  const double x1 = std::nearbyint(segment.x1 * dots_), y1 = std::nearbyint(segment.y1 * dots_);
  const double x2 = std::nearbyint(segment.x2 * dots_), y2 = std::nearbyint(segment.y2 * dots_);
  const double last = static_cast<double>(rows_.size() - 1);
  const bool onSheet = y1 >= 0 && y1 <= last && y2 >= 0 && y2 <= last;
  if (!onSheet || !(std::abs(x1) < 1e6 && std::abs(x2) < 1e6)) return;
  const Step step{static_cast<int>(x1), static_cast<int>(y1), static_cast<int>(x2), static_cast<int>(y2)};
  if (step.y1 == step.y2)
    AddRun(rows_[static_cast<std::size_t>(step.y1)], {std::min(step.x1, step.x2), std::max(step.x1, step.x2)});
  else
    AddStep(step);
}

/// Runs that share a dot become one.
void DotCurve::AddRun(std::vector<Run>& row, Run run) {
  const auto first = std::find_if(row.begin(), row.end(), [&](const Run& there) { return there.to >= run.from; });
  auto end = first;
  for (; end != row.end() && end->from <= run.to; ++end)
    run = {std::min(run.from, end->from), std::max(run.to, end->to)};
  if (first == end) {
    row.insert(first, run);
  } else {
    *first = run;
    row.erase(first + 1, end);
  }
}

void DotCurve::AddStep(const Step& step) {
  if (!steps_.empty() && steps_.back() == step) return;
  steps_.push_back(step);
  if (steps_.size() < 2 * sorted_ + kManySteps) return;
  std::sort(steps_.begin(), steps_.end());
  steps_.erase(std::unique(steps_.begin(), steps_.end()), steps_.end());
  sorted_ = steps_.size();
}

void DotCurve::Draw(Surface& surface, std::int32_t colour) const {
  for (std::size_t row = 0; row < rows_.size(); ++row)
    for (const Run& run : rows_[row]) {
      const double y = static_cast<double>(row) / dots_;
      surface.Line(run.from / dots_, y, run.to / dots_, y, colour);
    }
  for (const Step& step : steps_)
    surface.Line(step.x1 / dots_, step.y1 / dots_, step.x2 / dots_, step.y2 / dots_, colour);
}

std::size_t DotCurve::LineCount() const {
  std::size_t count = steps_.size();
  for (const std::vector<Run>& row : rows_) count += row.size();
  return count;
}

}  // namespace velk
