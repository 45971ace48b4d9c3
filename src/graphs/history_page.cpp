#include "graphs/history_page.h"

#include <cmath>
#include <utility>

#include "base/dates.h"
#include "base/errors.h"
#include "graphs/texts.h"
#include "log/page_rows.h"

namespace velk {

namespace {

constexpr double kBesideAxis = 150;  ///< twips from the axis to a text on the plot
constexpr std::int32_t kMuted = 0x70665B;
constexpr int kAll = 0;  ///< in place of a slot

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

bool HistoryPage::PlotOldData(LogReader& log, double from, double to) {
  FollowTimes();
  page_ = {from, to, false};
  fails_.fill(false);
  RowValues values(session_, curves_, log.Channels().size());
  const auto rows = RowsOf(log, values);
  if (!rows) return false;
  chart_.SetTimeOrigin(CutToMinute(rows->Row().time));
  const bool reachesEnd = PlotRows(*rows, values, kAll);
  SayWhatMidnightHides(from, to);
  return reachesEnd;
}

void HistoryPage::ReplotFromLog(LogReader& log, double from, double to, double origin) {
  FollowTimes();
  page_ = {from, to, true};
  fails_.fill(false);
  chart_.SetTimeOrigin(origin);
  RowValues values(session_, curves_, log.Channels().size());
  const auto rows = RowsOf(log, values);
  if (!rows) return;
  PlotRows(*rows, values, kAll);
  SayWhatMidnightHides(from, to);
}

int HistoryPage::TakeLeftOut() {
  for (int slot = 1; slot <= curves_.Count(); ++slot)
    if (std::exchange(fails_[slot], false)) return slot;
  return 0;
}

void HistoryPage::PlotValue2(LogReader& log, int slot) {
  if (slot > curves_.Count()) return;
  RowValues values(session_, curves_, log.Channels().size());
  if (const auto rows = RowsOf(log, values)) PlotRows(*rows, values, slot);
}

/// The rows of the page from the first one on that has a time; null where there is none.
std::unique_ptr<RowSource> HistoryPage::RowsOf(LogReader& log, const RowValues& values) const {
  log.Choose(values.Channels());
  auto rows = page_.isLive ? RowsFrom(log, page_.from, page_.to) : RowsOfPage(log, page_.from, page_.to);
  return rows && (HasTime(*rows) || NextWithTime(*rows)) ? std::move(rows) : nullptr;
}

/// Without `only`, a curve that can't be drawn is left out; with it, that raises.
bool HistoryPage::PlotRows(RowSource& rows, RowValues& values, int only) {
  const int first = only == kAll ? 1 : only, last = only == kAll ? curves_.Count() : only;
  double time = rows.Row().time;
  std::array<float, kSlots> previous{};
  values.Take(rows.Row());
  for (int slot = first; slot <= last; ++slot) previous[slot] = values.Of(slot);
  bool reachesEnd = false;
  while (time <= page_.to && NextWithTime(rows)) {
    const double next = rows.Row().time;
    values.Take(rows.Row());
    for (int slot = first; slot <= last; ++slot) {
      const float value = values.Of(slot);
      const float before = std::exchange(previous[slot], value);
      if (fails_[slot] || std::isnan(value) || std::isnan(before)) continue;
      try {
        PlotSegment(slot, time, next, before, value);
      } catch (const RuntimeError&) {
        if (only != kAll) throw;
        fails_[slot] = true;
      }
    }
    time = next;
    if (SecondsBetween(time, page_.to) == 0) reachesEnd = true;
  }
  return reachesEnd;
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
