#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "base/language.h"
#include "graphs/chart_measures.h"
#include "graphs/coordinates.h"
#include "graphs/curve_source.h"
#include "graphs/wrapping.h"
#include "model/time_base.h"
#include "platform/drawing/retained_surface.h"

namespace velk {

/// x of the time axis, in twips.
inline constexpr double kLeftMargin = 966;
/// Length of the marks on the axis.
inline constexpr double kAxisTick = 100;
/// Height of one curve's row in the header.
inline constexpr double kHeaderRowHeight = 250;

/// What a chart shows its picture on.
struct ChartSurfaces {
  RetainedSurface& Picture1;  ///< header band
  RetainedSurface& Pic2;      ///< plot: time runs down, values across
  RetainedSurface& Picture3;  ///< axis strip left of the curves
};

/// A strip chart without a window: coordinates, frames of blocks, curve segments and the header. Times are date-times,
/// places twips.
///
/// Each operation works out all that can fail before it draws: one that raises a RuntimeError has changed nothing
/// and can be run again. A step that gives no number, or one beyond the 32-bit range, leaves without drawing.
class StripChart {
 public:
  /// `times` gives the time scale and the page start, which charts may share, and takes what the chart finds out of
  /// them; `curves` gives the header's rows. These, the language and the surfaces outlive the chart.
  StripChart(TimeBase& times, const ChartMeasures& measures, const CurveSource& curves, const Language& language,
             ChartSurfaces surfaces);

  /// From now on blocks and curves are drawn here: on hidden surfaces while other times stand on the visible ones. The
  /// header and the frame of a page always go to the visible ones.
  void SetTargets(RetainedSurface& plotTarget, RetainedSurface& axisTarget);

  /// Draws the frame of one block. A block that would pass the bottom first moves the origin half way to the block's
  /// start, and the picture up by as much, to a whole dot: behind some blocks that is half a page.
  void Picture2_Update(double blockStart, double blockEnd);
  /// Prints the date of `blockEnd` beside the block.
  void WriteDate(double blockStart, double blockEnd);
  /// Draws one segment of a curve, or a dot behind a gap of 15 seconds. Allocates nothing; raises DivisionByZero for
  /// an empty scale.
  void PlotValue(double previousTime, double time, float previousValue, float value, double min, double max,
                 std::int32_t colour, bool wrapping);

  /// Draws the header band: a row a curve, then the corner above the axis.
  void InitialHeader();
  /// Draws the empty frame of the whole page: after the plot got another size. Its rows begin at the times of the
  /// blocks.
  void RedrawFrame();
  /// Prints times and dates of the axis again where they stand: its surface was cleared, or has another size.
  void PrintAxisAgain();
  /// Draws the frame of a whole page that begins at `from`, on the visible surfaces, both cleared. Its labels stand two
  /// minutes apart, whatever the length of a row. Needs BlockPairsPerPage.
  void Picture2_Update2(double from);
  /// Works out TimeBase::BlockPairsPerPage: another template may have brought other measures.
  void SetBlockPairsPerPage();

  /// Time at y = 0; 0 until something was drawn.
  double TimeOrigin() const { return timeOrigin_; }
  void SetTimeOrigin(double time) { timeOrigin_ = time; }
  /// y of a time on the page; NaN where it has none. Raises DivisionByZero without a row length.
  float YOf(double time) const;
  /// Where blocks and curves go at present.
  RetainedSurface& PlotTarget() { return *PlotTarget_; }
  double HeaderHeight() const { return curves_.Count() * kHeaderRowHeight; }

 private:
  /// Where a block stands once it is drawn.
  struct Block {
    double start, end;
    double origin;
    float y1, y2;
    bool scrolls;
  };

  /// What stands on the axis since it was last cleared.
  struct AxisMark {
    double y;  ///< of its middle
    std::string text;
    bool isDate;  ///< beside the axis, across the strip; else a time
    bool hasTick;
  };

  /// Where the two ends of a segment stand down the page; all curves of a sample share them.
  struct Span {
    double from = 0, to = 0, origin = 0, step = std::numeric_limits<double>::quiet_NaN();
    float y1 = 0, y2 = 0;
    bool isDrawn = false;  ///< both ends have a place
    bool isGap = false;
  };

  const Span& SpanOf(double previousTime, double time, double origin) {
    const bool isThis =
        span_.from == previousTime && span_.to == time && span_.origin == origin && span_.step == times_.GraphTimeStep;
    return isThis ? span_ : TakeSpan(previousTime, time, origin);
  }
  const Span& TakeSpan(double previousTime, double time, double origin);
  bool PlotPass(const Span& span, double previous, double value, Scale scale, int penWidth, std::int32_t colour);
  void PlotMoved(const Span& span, float previousValue, float value, Scale scale, std::int32_t colour);
  float Y(double time, double origin) const;
  Block Place(double blockStart, double blockEnd, double pageTime) const;
  void Scroll(const Block& block, double originBefore);
  void DrawBlockFrame(const Block& block);
  void PrintTime(double time, double y, bool hasTick);
  void PrintDate(double date, float y1, float y2);
  void PrintMark(const AxisMark& mark);
  double FirstRow(double rowStep) const;
  void DrawHeaderRow(int slot, double width);
  void DrawHeaderCorner(double width);

  double BlockPairs() const;

  TimeBase& times_;
  const ChartMeasures measures_;
  const CurveSource& curves_;
  const Language& language_;
  ChartSurfaces surfaces_;
  RetainedSurface* PlotTarget_;
  RetainedSurface* AxisTarget_;
  double timeOrigin_ = 0;
  bool gridRedrawn_ = false;  ///< a resize has drawn the row grid of the page; the blocks skip theirs until it scrolls
  ScaleCache scales_;
  Span span_;
  std::vector<AxisMark> axisMarks_;
};

/// Whether a curve stays open between two samples: 15 whole seconds or more, counted as boundaries crossed.
bool IsGap(double previousTime, double time);

}  // namespace velk
