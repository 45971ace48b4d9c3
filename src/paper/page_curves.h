#pragma once

#include <vector>

#include "graphs/coordinates.h"
#include "graphs/curve_source.h"
#include "graphs/parameter_curves.h"
#include "log/log_reader.h"
#include "model/session.h"
#include "paper/dot_curve.h"
#include "paper/page_layout.h"
#include "paper/page_times.h"
#include "platform/dialogs/long_task.h"

namespace velk {

/// The curves of a page, between its times and its frame.
class PageCurves {
 public:
  /// The curves outlive this. They are drawn for a device of so many dots an inch.
  PageCurves(const CurveSource& curves, const PageLayout& layout, const PageTimes& times, double dotsPerInch);

  /// Adds a curve's segment between two records; the second point alone where they lie 100 s or more apart. Values and
  /// times that are no number, and a curve without a scale, add nothing.
  void PlotLine(int slot, double firstTime, double secondTime, float firstValue, float secondValue);
  /// Draws on a surface in millimetres, curve by curve; `pen` in pixels of 96 dots an inch.
  void Draw(Surface& surface, double pen) const;
  std::size_t LineCount() const;

 private:
  struct Plotted {
    Scale scale;
    bool wraps;
    DotCurve dots;
  };

  const CurveSource& curves_;
  PageLayout layout_;
  PageTimes times_;
  double perDay_;  ///< millimetres
  std::vector<Plotted> plotted_;
};

/// Width of a curve's pen in pixels of 96 dots an inch.
double PenOf(PageTarget target);

/// Adds the records of a log from the page's start to its end. Raises what reading the log raises, and TaskCancelled.
void DrawCurves(PageCurves& to, LogReader& log, const Session& session, const ParameterCurves& curves,
                const PageTimes& times, LongTask& task);

}  // namespace velk
