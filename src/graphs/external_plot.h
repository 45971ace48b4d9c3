#pragma once

#include <deque>
#include <functional>
#include <vector>

#include "exchange/import_data.h"
#include "graphs/chart_measures.h"
#include "graphs/external_curves.h"
#include "graphs/strip_chart.h"
#include "model/time_base.h"

namespace velk {

/// The live page of a chart that follows another program's table: which of the rows that a poll brings are new, and how
/// they come onto the page. It keeps the rows of the page, so that it can be drawn again without the table.
class ExternalPlot {
 public:
  /// All outlive the plot. A row of the chart is `sampleSeconds` long.
  ExternalPlot(TimeBase& times, StripChart& chart, const CurveSource& curves, const ChartMeasures& measures,
               double sampleSeconds);

  /// Begins at the minute of `now`: nothing was read yet.
  void IntilizeTime(double now);
  double FormStart() const { return formStart_; }
  /// The time of the last row that was drawn; that of the start before the first.
  double LastRead() const { return lastRead_; }
  /// Whether a row was drawn.
  bool HasRows() const { return hasPrevious_; }
  /// Days of one block.
  double BlockLength() const { return times_.GraphTimeStep * measures_.pixelslength; }

  /// A poll begins, which reads from LastRead on: rows of that second were drawn already.
  void BeginPoll() { toSkip_ = drawnAtLast_; }
  /// Draws rows of the poll in order of time, those that were not drawn yet. Gives how many.
  int PlotData(std::vector<ForeignRow> rows);

  /// A row reaches the block that begins at `start`: its frame is to be drawn.
  std::function<void(double start, double end)> onBlock;
  /// The latest value of a curve; NaN where its row has none.
  std::function<void(int slot, double value)> onValue;

  /// The rows of the page, the last one ahead of it included.
  const std::deque<ForeignRow>& Rows() const { return rows_; }

  /// The slot of a curve that could not be drawn, once; 0 where there is no other.
  int TakeLeftOut();
  /// The curves were edited: what could not be drawn is tried again.
  void FollowCurves() { fails_.assign(static_cast<std::size_t>(curves_.Count()) + 1, Fault::None); }

 private:
  enum class Fault : char { None, New, Told };

  bool IsNew(const ForeignRow& row);
  void PlotRow(const ForeignRow& row);
  void DrawBlocks(double time);
  void PlotSegment(int slot, const ForeignRow& row);

  TimeBase& times_;
  StripChart& chart_;
  const CurveSource& curves_;
  const ChartMeasures measures_;
  double formStart_ = 0;
  double lastRead_ = 0;
  int drawnAtLast_ = 0;  ///< rows of the second of LastRead
  int toSkip_ = 0;       ///< of these, how many the poll has still to bring
  bool hasPrevious_ = false;
  std::vector<double> previous_;
  std::deque<ForeignRow> rows_;
  std::vector<Fault> fails_;  ///< by slot
};

/// Draws rows that stand on a page over it: a curve at a time, from row to row. Gives the slots that can't be drawn.
std::vector<int> PlotRows(StripChart& chart, const CurveSource& curves, const std::vector<ForeignRow>& rows);

}  // namespace velk
