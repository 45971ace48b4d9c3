#include "graphs/history_page.h"

#include <array>
#include <cmath>

#include "base/dates.h"
#include "graphs/texts.h"
#include "log/page_rows.h"

namespace velk {

namespace {

constexpr double kBesideAxis = 150;  ///< twips from the axis to a text on the plot
constexpr std::int32_t kMuted = 0x70665B;

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
  RowValues values(session_, curves_, log.Channels().size());
  log.Choose(values.Channels());
  const auto rows = RowsOfPage(log, from, to);
  if (!rows || !(HasTime(*rows) || NextWithTime(*rows))) return false;
  chart_.SetTimeOrigin(CutToMinute(rows->Row().time));
  const bool reachesEnd = PlotRows(*rows, values, to);
  SayWhatMidnightHides(from, to);
  return reachesEnd;
}

void HistoryPage::ReplotFromLog(LogReader& log, double from, double to, double origin) {
  FollowTimes();
  chart_.SetTimeOrigin(origin);
  RowValues values(session_, curves_, log.Channels().size());
  log.Choose(values.Channels());
  const auto rows = RowsFrom(log, from, to);
  if (!rows || !(HasTime(*rows) || NextWithTime(*rows))) return;
  PlotRows(*rows, values, to);
  SayWhatMidnightHides(from, to);
}

bool HistoryPage::PlotRows(RowSource& rows, RowValues& values, double to) {
  double time = rows.Row().time;
  std::array<float, kSlots> previous{};
  values.Take(rows.Row());
  for (int slot = 1; slot <= curves_.Count(); ++slot) previous[slot] = values.Of(slot);
  bool reachesEnd = false;
  while (time <= to && NextWithTime(rows)) {
    const double next = rows.Row().time;
    values.Take(rows.Row());
    for (int slot = 1; slot <= curves_.Count(); ++slot) {
      const Parameter& curve = curves_.Curve(slot);
      const float value = values.Of(slot);
      if (!std::isnan(value) && !std::isnan(previous[slot]))
        chart_.PlotValue(time, next, previous[slot], value, curve.min, curve.max, curve.color, curve.Wrapping);
      previous[slot] = value;
    }
    time = next;
    if (SecondsBetween(time, to) == 0) reachesEnd = true;
  }
  return reachesEnd;
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
