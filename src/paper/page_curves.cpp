#include "paper/page_curves.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "graphs/row_values.h"
#include "graphs/wrapping.h"
#include "platform/drawing/units.h"

namespace velk {

namespace {

/// Records 100 s apart have a gap between them; times of whole seconds can miss that by their last bits.
constexpr double kGap = 99.9995 / 86400;
/// PrinterPixelsPerUnit divided by it are the dots of a millimetre: a sheet of 210 mm counts as 8 inches.
constexpr double kUnitsOfMillimetre = 26.25;
/// On paper a pen is 0.025 of PrinterPixelsPerUnit wide.
constexpr double kPaperPen = 0.025 * kUnitsOfMillimetre;
constexpr double kPreviewPen = 3;

}  // namespace

double PaperDots(double printerPixelsPerUnit) {
  return printerPixelsPerUnit / kUnitsOfMillimetre * PerInch(Unit::Millimetre);
}

double PenOf(PageTarget target) {
  return target == PageTarget::Paper ? Convert(kPaperPen, Unit::Millimetre, Unit::Pixel) : kPreviewPen;
}

PageCurves::PageCurves(const CurveSource& curves, const PageLayout& layout, const PageTimes& times, double dotsPerInch)
    : curves_(curves),
      layout_(layout),
      times_(times),
      perDay_((layout.bottom - layout.plotTop) / (times.End() - times.start)),
      dots_(dotsPerInch / PerInch(Unit::Millimetre)),
      previousTime_(std::nan("")) {
  constexpr float kAny = std::numeric_limits<float>::max();
  for (int slot = 1; slot <= curves.Count(); ++slot) {
    const Parameter& shown = curves.Curve(slot);
    const Scale scale = ScaleLimits(shown.min, shown.max);
    const double range = static_cast<double>(scale.max) - static_cast<double>(scale.min);
    Plotted curve{.scale = scale, .wraps = shown.Wrapping, .dots = DotCurve(dots_, kSheetHeight)};
    if (range != 0) {
      curve.perUnit = (kFrameRight - kCurveLeft) / range;
      curve.plainMin = curve.wraps ? scale.min : -kAny;
      curve.plainMax = curve.wraps ? scale.max : kAny;
    }
    plotted_.push_back(std::move(curve));
  }
}

void PageCurves::PlotLine(int slot, double firstTime, double secondTime, float firstValue, float secondValue) {
  Plotted& curve = plotted_[static_cast<std::size_t>(slot - 1)];
  if (curve.perUnit == 0) return;
  const bool joined = std::abs(secondTime - firstTime) < kGap && std::isfinite(firstValue);
  if (!std::isfinite(secondValue)) return;
  const double y1 = Y(joined ? firstTime : secondTime), y2 = Y(secondTime);
  WrappingPasses passes(joined ? firstValue : secondValue, secondValue, curve.scale, curve.wraps);
  for (WrappingPass pass; passes.Next(pass);)
    curve.dots.Add(ClipLine({X(curve, pass.previous), y1, X(curve, pass.value), y2}, kCurveLeft, kFrameRight));
}

/// Segments that stay in one row of dots are one run from the least to the most of their values: each begins where the
/// one before it ended.
void PageCurves::Take(double time, std::span<const float> values) {
  const double row = std::nearbyint(Y(time) * dots_);
  const bool sameRow = row == previousRow_ && std::abs(time - previousTime_) < kGap;
  for (std::size_t i = 0; i < plotted_.size(); ++i) {
    Plotted& curve = plotted_[i];
    const float value = values[i];
    const bool isPlain = value >= curve.plainMin && value <= curve.plainMax;
    if (sameRow && isPlain && curve.isOpen) {
      curve.least = std::min(curve.least, value);
      curve.most = std::max(curve.most, value);
      curve.hasRun = true;
    } else {
      CloseRun(curve);
      PlotLine(static_cast<int>(i) + 1, previousTime_, time, curve.previous, value);
      curve.isOpen = isPlain;
      curve.least = curve.most = value;
    }
    curve.previous = value;
  }
  previousTime_ = time;
  previousRow_ = row;
}

void PageCurves::CloseRun(Plotted& curve) {
  if (!curve.hasRun) return;
  const double y = Y(previousTime_);
  curve.dots.Add(ClipLine({X(curve, curve.least), y, X(curve, curve.most), y}, kCurveLeft, kFrameRight));
  curve.hasRun = false;
}

void PageCurves::Finish() {
  for (Plotted& curve : plotted_) CloseRun(curve);
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
  const auto span = log.Find(times.Around());
  if (!span) return;
  RowBlocks blocks = log.Blocks(*span);
  RowBlock block;
  std::vector<float> shown(static_cast<std::size_t>(curves.Count()));
  double reached = times.start;
  const auto step = [&] { task.Step(reached - times.start, times.End() - times.start); };
  while (blocks.Next(block, step)) {
    for (std::size_t row = 0; row < block.Count(); ++row) {
      const double time = block.times[row];
      if (!times.Covers(time)) continue;
      values.Take(block.Values(row));
      for (int slot = 1; slot <= curves.Count(); ++slot) shown[static_cast<std::size_t>(slot) - 1] = values.Of(slot);
      to.Take(time, shown);
      reached = time;
    }
    step();
  }
  to.Finish();
}

}  // namespace velk
