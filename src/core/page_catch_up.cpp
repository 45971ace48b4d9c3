#include "core/page_catch_up.h"

#include <algorithm>
#include <cmath>

#include "graphs/chart_measures.h"
#include "graphs/coordinates.h"
#include "model/graph_map.h"
#include "model/graph_window.h"

namespace velk {

namespace {

/// Wherever an origin starts from, behind so many blocks it stands where it would have come to anyway.
constexpr double kMostCarried = 500'000;
constexpr double kMostDrawn = 1'000;

/// The blocks of two pages: each scroll takes half a page away.
double BlocksToDraw(const ChartMeasures& measures) {
  const double onPage = measures.MaximumTime / (measures.pixeldivide * measures.pixelslength);
  return std::min(2 * std::ceil(onPage) + 2, kMostDrawn);
}

void TurnTo(Session& session, double pageTime) {
  if (session.Times.GraphPageTime == pageTime) return;
  session.Times.GraphPageTime = pageTime;
  ++session.PagesTurned;
}

void CarryBlock(Session& session, const ChartMeasures& measures, double length) {
  TimeBase& times = session.Times;
  const double blockEnd = times.GraphEndTime + length;
  const float bottom = TimeToY(blockEnd, times.GraphPageTime, measures.pixeldivide, times.GraphTimeStep);
  if (static_cast<double>(bottom) >= PlotHeight(measures))
    TurnTo(session, OriginBehindScroll(times.GraphPageTime, times.GraphEndTime));
  times.GraphEndTime = blockEnd;
}

void DrawBlock(Session& session, double length) {
  const double start = session.Times.GraphEndTime;
  ForEachGraphWindow(session, [&](GraphWindow& window) { window.Picture2_Update(start, start + length); });
  FollowFirstPage(session);
  session.Times.GraphEndTime = start + length;
}

}  // namespace

void FollowFirstPage(Session& session) {
  for (int k = 1; k <= session.GraphCount; ++k) {
    const GraphWindow* window = session.GraphForms[session.GraphList[k]];
    if (!window) continue;
    if (window->TimeOrigin() != 0) TurnTo(session, window->TimeOrigin());
    return;
  }
}

void CatchUpPage(Session& session, double samplingRate) {
  TimeBase& times = session.Times;
  const ChartMeasures measures = MeasuresOf(session);
  const double length = samplingRate * session.pixelslength;
  double behind = std::floor((session.SampleTime - times.GraphEndTime) / length);
  if (!(behind >= 1) || times.GraphEndTime + length == times.GraphEndTime) return;

  double drawn = BlocksToDraw(measures);
  if (behind > drawn + kMostCarried) {
    times.GraphEndTime = times.GraphPageTime = session.SampleTime - (drawn + kMostCarried) * length;
    behind = drawn + kMostCarried;
  }
  for (; behind > drawn; --behind) CarryBlock(session, measures, length);
  for (; drawn > 0 && session.SampleTime >= times.GraphEndTime + length; --drawn) DrawBlock(session, length);
}

}  // namespace velk
