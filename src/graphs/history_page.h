#pragma once

#include <array>
#include <memory>

#include "graphs/parameter_curves.h"
#include "graphs/row_values.h"
#include "graphs/strip_chart.h"
#include "log/log_reader.h"
#include "model/session.h"

namespace velk {

/// The curves of a log on the visible surfaces of a chart: a page of history, or the live page drawn again. What the
/// chart itself draws meanwhile goes elsewhere; its times, its origin, the values and the statistics of the live
/// session stay as they are.
class HistoryPage {
 public:
  /// All that is given by reference outlives the page.
  HistoryPage(const Session& session, const ParameterCurves& curves, const ChartMeasures& measures,
              const Language& language, ChartSurfaces surfaces);

  /// Draws the empty frame of the page that begins at `from`; its origin is the minute of that until rows tell another.
  void Picture2_Update2(double from);
  /// Draws the curves of the rows from `from` to `to`. y 0 is the minute of the first row. Raises what reading the log
  /// raises; a curve that can't be drawn is left out. A fast job has more rows on a page than can be drawn while a
  /// sample waits: those beyond the first kRowsAtOnce are left to GoOn.
  void PlotOldData(LogReader& log, double from, double to);
  bool IsWhole() const { return walk_ == nullptr; }
  /// Draws the next kRowsAtOnce rows of that page, with the same reader. Raises as above; called again, it goes on.
  void GoOn(LogReader& log);
  /// What is not drawn yet of that page won't be.
  void Leave() { walk_.reset(); }
  /// Whether a row stood right at the end of that page.
  bool ReachesEnd() const { return reachesEnd_; }
  /// Draws the curves of the live page, whose y 0 is `origin`, again. Raises as above.
  void ReplotFromLog(LogReader& log, double from, double to, double origin);

  static constexpr int kRowsAtOnce = 2048;

  /// The slot of a curve that the last of these has left out; 0 where there is no other.
  int TakeLeftOut();
  /// Draws a curve that was left out. Raises what hinders that.
  void PlotValue2(LogReader& log, int slot);

  /// The chart of the page: its TimeOrigin is PageOrigin, the time at y 0.
  StripChart& Chart() { return chart_; }

 private:
  /// What was drawn last.
  struct Page {
    double from = 0, to = 0;
    bool isLive = false;
  };

  /// Along the rows of the page, from the first one that has a time on.
  struct Walk {
    RowValues values;
    int only;  ///< the one slot that is drawn, or kAll
    std::unique_ptr<RowSource> rows{};
    double time = 0;  ///< of the row before, and its values by slots
    std::array<float, kSlots> previous{};
  };

  static constexpr int kAll = 0;

  void FollowTimes();
  std::unique_ptr<Walk> Begin(LogReader& log, int only) const;
  bool PlotRows(Walk& walk, int most);
  void PlotRow(Walk& walk, double next);
  void PlotSegment(int slot, double time, double next, float previous, float value);
  void SayWhatMidnightHides(double from, double to);

  const Session& session_;
  const ParameterCurves& curves_;
  const Language& language_;
  ChartSurfaces surfaces_;
  TimeBase times_;  ///< the length of a row and of the page, as the session has them at each drawing
  StripChart chart_;
  Page page_;
  std::array<bool, kSlots> fails_{};  ///< the curves of the page that can't be drawn
  std::unique_ptr<Walk> walk_;        ///< along the rest of a page that is not whole
  bool reachesEnd_ = false;
};

}  // namespace velk
