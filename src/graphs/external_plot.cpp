#include "graphs/external_plot.h"

#include <algorithm>
#include <cmath>

#include "base/dates.h"
#include "base/errors.h"
#include "graphs/coordinates.h"

namespace velk {

namespace {

/// Behind a longer gap the page begins anew, so many blocks ahead of the row.
constexpr double kMostBlocks = 1000;
constexpr double kBlocksAhead = 4;

bool IsEarlier(const ForeignRow& a, const ForeignRow& b) {
  return a.time < b.time;
}

/// One segment of a curve; none to or from a missing value.
void PlotBetween(StripChart& chart, const Parameter& curve, double time, double next, double before, double value) {
  const float first = NarrowOrNan(before), second = NarrowOrNan(value);
  if (std::isnan(first) || std::isnan(second)) return;
  chart.PlotValue(time, next, first, second, curve.min, curve.max, curve.color, curve.Wrapping);
}

}  // namespace

ExternalPlot::ExternalPlot(TimeBase& times, StripChart& chart, const CurveSource& curves, const ChartMeasures& measures,
                           double sampleSeconds)
    : times_(times), chart_(chart), curves_(curves), measures_(measures) {
  constexpr double kSecondsPerDay = 86400;
  times_.GraphTimeStep = sampleSeconds / kSecondsPerDay;
  FollowCurves();
}

void ExternalPlot::IntilizeTime(double now) {
  formStart_ = lastRead_ = CutToMinute(now);
  times_.GraphPageTime = times_.GraphEndTime = times_.LastPlotTime = formStart_;
  chart_.SetTimeOrigin(formStart_);
  drawnAtLast_ = toSkip_ = 0;
  hasPrevious_ = false;
  rows_.clear();
}

int ExternalPlot::PlotData(std::vector<ForeignRow> rows) {
  std::stable_sort(rows.begin(), rows.end(), IsEarlier);
  int drawn = 0;
  for (ForeignRow& row : rows) {
    if (!IsNew(row)) continue;
    PlotRow(row);
    rows_.push_back(std::move(row));
    ++drawn;
  }
  return drawn;
}

bool ExternalPlot::IsNew(const ForeignRow& row) {
  if (row.time < lastRead_) return false;
  if (row.time > lastRead_) {
    drawnAtLast_ = toSkip_ = 0;
    lastRead_ = row.time;
  } else if (toSkip_ > 0) {
    --toSkip_;
    return false;
  }
  ++drawnAtLast_;
  return true;
}

void ExternalPlot::PlotRow(const ForeignRow& row) {
  DrawBlocks(row.time);
  if (!hasPrevious_) {
    times_.LastPlotTime = row.time;
    previous_ = row.values;
    hasPrevious_ = true;
  }
  for (int slot = 1; slot <= curves_.Count(); ++slot) {
    if (onValue) onValue(slot, row.values[static_cast<std::size_t>(slot) - 1]);
    PlotSegment(slot, row);
  }
  times_.LastPlotTime = row.time;
  previous_ = row.values;
}

void ExternalPlot::PlotSegment(int slot, const ForeignRow& row) {
  Fault& fault = fails_[static_cast<std::size_t>(slot)];
  if (fault != Fault::None) return;
  const auto place = static_cast<std::size_t>(slot) - 1;
  try {
    PlotBetween(chart_, curves_.Curve(slot), times_.LastPlotTime, row.time, previous_[place], row.values[place]);
  } catch (const RuntimeError&) {
    fault = Fault::New;
  }
}

/// Frames are drawn block by block up to the row's own.
void ExternalPlot::DrawBlocks(double time) {
  const double length = BlockLength();
  if (!(length > 0)) return;
  const double behind = std::floor((time - times_.GraphEndTime) / length);
  if (behind > kMostBlocks) {
    times_.GraphEndTime += (behind - kBlocksAhead) * length;
    times_.GraphPageTime = times_.GraphEndTime;
  }
  while (time >= times_.GraphEndTime) {
    const double start = times_.GraphEndTime;
    times_.GraphEndTime = start + length;
    if (onBlock) onBlock(start, times_.GraphEndTime);
    if (chart_.TimeOrigin() != 0) times_.GraphPageTime = chart_.TimeOrigin();
    // A length that is nothing beside the time would never end.
    if (times_.GraphEndTime == start) return;
  }
  while (rows_.size() > 1 && rows_[1].time < times_.GraphPageTime) rows_.pop_front();
}

int ExternalPlot::TakeLeftOut() {
  for (std::size_t slot = 1; slot < fails_.size(); ++slot) {
    if (fails_[slot] != Fault::New) continue;
    fails_[slot] = Fault::Told;
    return static_cast<int>(slot);
  }
  return 0;
}

std::vector<int> PlotRows(StripChart& chart, const CurveSource& curves, const std::vector<ForeignRow>& rows) {
  std::vector<int> leftOut;
  for (int slot = 1; slot <= curves.Count(); ++slot) {
    const auto place = static_cast<std::size_t>(slot) - 1;
    try {
      for (std::size_t i = 1; i < rows.size(); ++i)
        PlotBetween(chart, curves.Curve(slot), rows[i - 1].time, rows[i].time, rows[i - 1].values[place],
                    rows[i].values[place]);
    } catch (const RuntimeError&) {
      leftOut.push_back(slot);
    }
  }
  return leftOut;
}

}  // namespace velk
