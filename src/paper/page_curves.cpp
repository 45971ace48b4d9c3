#include "paper/page_curves.h"

#include <array>
#include <cmath>

#include "graphs/row_values.h"
#include "graphs/wrapping.h"
#include "platform/drawing/units.h"

namespace velk {

namespace {

/// Records further apart than this have a gap between them.
constexpr double kGap = 100.0 / 86400;
/// On paper a pen is 0.025 of the printer's pixels for an inch, of which 26.25 make a millimetre.
constexpr double kPaperPen = 0.025 * 26.25;
constexpr double kPreviewPen = 3;

}  // namespace

double PenOf(PageTarget target) {
  return target == PageTarget::Paper ? Convert(kPaperPen, Unit::Millimetre, Unit::Pixel) : kPreviewPen;
}

PageCurves::PageCurves(const CurveSource& curves, const PageLayout& layout, const PageTimes& times, double dotsPerInch)
    : curves_(curves),
      layout_(layout),
      times_(times),
      perDay_((layout.bottom - layout.plotTop) / (times.End() - times.start)) {
  for (int slot = 1; slot <= curves.Count(); ++slot) {
    const Parameter& curve = curves.Curve(slot);
    plotted_.push_back({ScaleLimits(curve.min, curve.max), curve.Wrapping,
                        DotCurve(dotsPerInch / PerInch(Unit::Millimetre), kSheetHeight)});
  }
}

void PageCurves::PlotLine(int slot, double firstTime, double secondTime, float firstValue, float secondValue) {
  Plotted& curve = plotted_[static_cast<std::size_t>(slot - 1)];
  const double range = static_cast<double>(curve.scale.max) - static_cast<double>(curve.scale.min);
  if (range == 0) return;
  const double perUnit = (kFrameRight - kCurveLeft) / range;
  const auto x = [&](double value) { return kCurveLeft + (value - curve.scale.min) * perUnit; };
  const auto y = [&](double time) { return layout_.plotTop + (time - times_.start) * perDay_; };
  const bool joined = std::abs(secondTime - firstTime) < kGap;
  if (!std::isfinite(secondValue) || (joined && !std::isfinite(firstValue))) return;
  WrappingPasses passes(joined ? firstValue : secondValue, secondValue, curve.scale, curve.wraps);
  for (WrappingPass pass; passes.Next(pass);) {
    const PageSegment segment{x(pass.previous), y(joined ? firstTime : secondTime), x(pass.value), y(secondTime)};
    curve.dots.Add(ClipLine(segment, kCurveLeft, kFrameRight));
  }
}

void PageCurves::Draw(Surface& surface, double pen) const {
  surface.SetPenWidth(pen);
  for (std::size_t i = 0; i < plotted_.size(); ++i)
    plotted_[i].dots.Draw(surface, InkOf(curves_.Curve(static_cast<int>(i) + 1).color));
}

std::size_t PageCurves::LineCount() const {
  std::size_t count = 0;
  for (const Plotted& curve : plotted_) count += curve.dots.LineCount();
  return count;
}

void DrawCurves(PageCurves& to, LogReader& log, const Session& session, const ParameterCurves& curves,
                const PageTimes& times, LongTask& task) {
  RowValues values(session, curves, log.Channels().size());
  log.Choose(values.Channels());
  const auto rows = log.Rows({times.start, times.End(), RowFilter::Compare::Sum});
  std::array<float, kSlots> previous{};
  double previousTime = std::nan("");
  for (bool there = rows->First(); there; there = rows->Next()) {
    const double time = rows->Row().time;
    if (std::isnan(time)) continue;
    values.Take(rows->Row());
    for (int slot = 1; slot <= curves.Count(); ++slot) {
      const float value = values.Of(slot);
      if (!std::isnan(previousTime)) to.PlotLine(slot, previousTime, time, previous[slot], value);
      previous[slot] = value;
    }
    previousTime = time;
    task.Step(time - times.start, times.End() - times.start);
  }
}

}  // namespace velk
