#include "graphs/history_page.h"

#include <cmath>
#include <limits>
#include <utility>

#include "base/dates.h"
#include "base/errors.h"
#include "graphs/texts.h"
#include "log/page_rows.h"

namespace velk {

namespace {

constexpr double kBesideAxis = 150;  ///< twips from the axis to a text on the plot
constexpr std::int32_t kMuted = 0x70665B;
constexpr int kEach = std::numeric_limits<int>::max();  ///< of the rows

/// Rows of strangers may have no time.
bool HasTime(const RowSource& rows) {
  return IsDateTime(rows.Row().time);
}

bool NextWithTime(RowSource& rows) {
  while (rows.Next())
    if (HasTime(rows)) return true;
  return false;
}

}  // namespace

HistoryPage::HistoryPage(const Session& session, const ParameterCurves& curves, const ChartMeasures& measures,
                         const Language& language, ChartSurfaces surfaces)
    : session_(session),
      curves_(curves),
      language_(language),
      surfaces_(surfaces),
      chart_(times_, measures, curves, language, surfaces) {
}

void HistoryPage::FollowTimes() {
  times_.GraphTimeStep = session_.Times.GraphTimeStep;
  times_.BlockPairsPerPage = session_.Times.BlockPairsPerPage;
}

void HistoryPage::Picture2_Update2(double from) {
  FollowTimes();
  chart_.SetTimeOrigin(CutToMinute(from));
  chart_.Picture2_Update2(from);
}

void HistoryPage::PlotOldData(LogReader& log, double from, double to) {
  FollowTimes();
  page_ = {from, to, false};
  fails_.fill(false);
  reachesEnd_ = false;
  walk_ = Begin(log, kAll);
  if (!walk_) return;
  chart_.SetTimeOrigin(CutToMinute(walk_->time));
  GoOn(log);
}

void HistoryPage::GoOn(LogReader& log) {
  if (!walk_) return;
  log.Choose(walk_->values.Channels());  // other charts read by the same reader in between
  if (!PlotRows(*walk_, kRowsAtOnce)) return;
  Leave();
  SayWhatMidnightHides(page_.from, page_.to);
}

void HistoryPage::ReplotFromLog(LogReader& log, double from, double to, double origin) {
  FollowTimes();
  Leave();
  page_ = {from, to, true};
  fails_.fill(false);
  chart_.SetTimeOrigin(origin);
  const auto walk = Begin(log, kAll);
  if (!walk) return;
  PlotRows(*walk, kEach);
  SayWhatMidnightHides(from, to);
}

int HistoryPage::TakeLeftOut() {
  for (int slot = 1; slot <= curves_.Count(); ++slot)
    if (std::exchange(fails_[slot], false)) return slot;
  return 0;
}

void HistoryPage::PlotValue2(LogReader& log, int slot) {
  if (slot > curves_.Count()) return;
  if (const auto walk = Begin(log, slot)) PlotRows(*walk, kEach);
}

/// At the first row of the page that has a time; null where there is none.
std::unique_ptr<HistoryPage::Walk> HistoryPage::Begin(LogReader& log, int only) const {
  auto walk = std::make_unique<Walk>(Walk{RowValues(session_, curves_, log.Channels().size()), only});
  log.Choose(walk->values.Channels());
  walk->rows = page_.isLive ? RowsFrom(log, page_.from, page_.to) : RowsOfPage(log, page_.from, page_.to);
  if (!walk->rows || !(HasTime(*walk->rows) || NextWithTime(*walk->rows))) return nullptr;
  walk->time = walk->rows->Row().time;
  walk->values.Take(walk->rows->Row());
  for (int slot = 1; slot <= curves_.Count(); ++slot) walk->previous[slot] = walk->values.Of(slot);
  return walk;
}

/// So many rows at most; gives whether they were the last ones.
bool HistoryPage::PlotRows(Walk& walk, int most) {
  for (int row = 0; row < most; ++row) {
    if (walk.time > page_.to || !NextWithTime(*walk.rows)) return true;
    PlotRow(walk, walk.rows->Row().time);
    if (SecondsBetween(walk.time, page_.to) == 0) reachesEnd_ = true;
  }
  return false;
}

/// From the row before to this one. Where one slot alone is drawn, a segment that fails raises.
void HistoryPage::PlotRow(Walk& walk, double next) {
  const int first = walk.only == kAll ? 1 : walk.only, last = walk.only == kAll ? curves_.Count() : walk.only;
  walk.values.Take(walk.rows->Row());
  for (int slot = first; slot <= last; ++slot) {
    const float value = walk.values.Of(slot);
    const float before = std::exchange(walk.previous[slot], value);
    if (fails_[slot] || std::isnan(value) || std::isnan(before)) continue;
    try {
      PlotSegment(slot, walk.time, next, before, value);
    } catch (const RuntimeError&) {
      if (walk.only != kAll) throw;
      fails_[slot] = true;
    }
  }
  walk.time = next;
}

void HistoryPage::PlotSegment(int slot, double time, double next, float previous, float value) {
  const Parameter& curve = curves_.Curve(slot);
  chart_.PlotValue(time, next, previous, value, curve.min, curve.max, curve.color, curve.Wrapping);
}

/// Day and time of day are asked for apart: rows behind 00:00 are on the next page.
void HistoryPage::SayWhatMidnightHides(double from, double to) {
  const double midnight = DatePart(to);
  if (DatePart(from) == midnight || to <= midnight) return;
  const float y = chart_.YOf(midnight);
  if (std::isnan(y)) return;
  surfaces_.Pic2.Print(kLeftMargin + kBesideAxis, y, language_.In(text::BehindMidnight), kMuted);
}

}  // namespace velk
