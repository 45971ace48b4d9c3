#pragma once

#include <span>
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

  /// Adds a curve's segment between two records; the second point alone where they lie 100 s or more apart, and where
  /// the first has no value or no time. A second value or time that is no number, and a curve without a scale, add
  /// nothing.
  void PlotLine(int slot, double firstTime, double secondTime, float firstValue, float secondValue);
  /// Adds the next record, with a value a curve: the same as a PlotLine of each from the record before, which the first
  /// one has none of. Records that share a row of dots cost next to nothing; what they come to is there behind Finish.
  void Take(double time, std::span<const float> values);
  void Finish();
  /// Draws on a surface in millimetres, curve by curve; `pen` in pixels of 96 dots an inch.
  void Draw(Surface& surface, double pen) const;
  std::size_t LineCount() const;

 private:
  struct Plotted {
    Scale scale;
    bool wraps;
    DotCurve dots;
    double perUnit = 0;                ///< millimetres; 0 for a scale without length
    float plainMin = 1, plainMax = 0;  ///< values that one segment alone leads to, from any of them
    float previous = 0;
    // The values of the records since the last segment that left the row of dots.
    bool isOpen = false, hasRun = false;
    float least = 0, most = 0;
  };

  double X(const Plotted& curve, double value) const { return kCurveLeft + (value - curve.scale.min) * curve.perUnit; }
  double Y(double time) const { return layout_.plotTop + (time - times_.start) * perDay_; }
  void CloseRun(Plotted& curve);

  const CurveSource& curves_;
  PageLayout layout_;
  PageTimes times_;
  double perDay_;  ///< millimetres
  double dots_;    ///< a millimetre
  std::vector<Plotted> plotted_;
  double previousTime_;     ///< of the last record; NaN before the first
  double previousRow_ = 0;  ///< the row of dots that it lies in
};

/// Dots an inch of a printer by its PrinterPixelsPerUnit: with them a curve's places, in millimetres, are what that
/// number and 26.25 make of them in the printer's dots.
double PaperDots(double printerPixelsPerUnit);

/// Width of a curve's pen in pixels of 96 dots an inch.
double PenOf(PageTarget target);

/// Adds the records of a log from the page's start to its end. Raises what reading the log raises, and TaskCancelled.
void DrawCurves(PageCurves& to, LogReader& log, const Session& session, const ParameterCurves& curves,
                const PageTimes& times, LongTask& task);

}  // namespace velk
