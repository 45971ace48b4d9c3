#include "graphs/strip_chart.h"

#include <algorithm>
#include <cmath>

#include "base/colour.h"
#include "base/dates.h"
#include "base/errors.h"
#include "graphs/chart_grid.h"
#include "graphs/wrapping.h"

namespace velk {

namespace {

constexpr int kRowsPerBlock = 6;
constexpr int kRowsPerPairBlock = 3;  ///< on a page that was drawn at once
constexpr double kDotRadius = 3;
constexpr double kSecondsPerDay = 86400;

}  // namespace

bool IsGap(double previousTime, double time) {
  const double seconds = (time - previousTime) * kSecondsPerDay;
  if (seconds < 14) return false;
  return seconds >= 16 || SecondsBetween(previousTime, time) >= 15;
}

StripChart::StripChart(TimeBase& times, const ChartMeasures& measures, const CurveSource& curves,
                       const Language& language, ChartSurfaces surfaces)
    : times_(times),
      measures_(measures),
      curves_(curves),
      language_(language),
      surfaces_(surfaces),
      PlotTarget_(&surfaces_.Pic2),
      AxisTarget_(&surfaces_.Picture3) {
}

void StripChart::SetTargets(RetainedSurface& plotTarget, RetainedSurface& axisTarget) {
  PlotTarget_ = &plotTarget;
  AxisTarget_ = &axisTarget;
}

double StripChart::BlockPairs() const {
  return Divide(measures_.MaximumTime, measures_.pixeldivide * measures_.pixelslength * 2);
}

float StripChart::YOf(double time) const {
  return Y(time, timeOrigin_);
}

float StripChart::Y(double time, double origin) const {
  return TimeToY(time, origin, measures_.pixeldivide, times_.GraphTimeStep);
}

void StripChart::SetBlockPairsPerPage() {
  times_.BlockPairsPerPage = BlockPairs();
}

/// Gives whether the ends have a place.
inline bool StripChart::PlotPass(const Span& span, double previous, double value, Scale scale, int penWidth,
                                 std::int32_t colour) {
  RetainedSurface& plot = *PlotTarget_;
  const double width = plot.Width();
  const float x1 = ValueToX(previous, scale, kLeftMargin, width);
  const float x2 = ValueToX(value, scale, kLeftMargin, width);
  if (std::isnan(x1) || std::isnan(x2)) return false;
  timeOrigin_ = span.origin;
  plot.SetPenWidth(penWidth);
  if (span.isGap)
    plot.Circle(x2, span.y2, kDotRadius, colour);
  else
    plot.Line(x1, span.y1, x2, span.y2, colour);
  return true;
}

void StripChart::PlotValue(double previousTime, double time, float previousValue, float value, double min, double max,
                           std::int32_t colour, bool wrapping) {
  const double origin = timeOrigin_ != 0 ? timeOrigin_ : CutToMinute(previousTime);
  const Span& span = SpanOf(previousTime, time, origin);
  if (!span.isDrawn) return;
  const Scale scale = scales_.Limits(min, max);
  const WrappingPass first{static_cast<double>(previousValue), static_cast<double>(value)};
  if (PlotPass(span, first.previous, first.value, scale, first.penWidth, colour) && wrapping)
    PlotMoved(span, previousValue, value, scale, colour);
}

/// The passes behind the first.
void StripChart::PlotMoved(const Span& span, float previousValue, float value, Scale scale, std::int32_t colour) {
  WrappingPasses passes(previousValue, value, scale, true);
  WrappingPass pass;
  passes.Next(pass);  // the first
  while (passes.Next(pass) && PlotPass(span, pass.previous, pass.value, scale, pass.penWidth, colour)) {
  }
}

const StripChart::Span& StripChart::TakeSpan(double previousTime, double time, double origin) {
  const float y1 = Y(previousTime, origin), y2 = Y(time, origin);
  const bool isDrawn = !std::isnan(y1) && !std::isnan(y2);
  span_ = {previousTime, time, origin, times_.GraphTimeStep, y1, y2, isDrawn, isDrawn && IsGap(previousTime, time)};
  return span_;
}

StripChart::Block StripChart::Place(double blockStart, double blockEnd, double pageTime) const {
  Block block{blockStart, blockEnd, pageTime, Y(blockStart, pageTime), Y(blockEnd, pageTime), false};
  if (static_cast<double>(block.y2) >= PlotTarget_->Height()) {
    block.scrolls = true;
    block.origin = OriginBehindScroll(pageTime, blockStart);
    block.y1 = Y(blockStart, block.origin);
    block.y2 = Y(blockEnd, block.origin);
  }
  return block;
}

void StripChart::Picture2_Update(double blockStart, double blockEnd) {
  const double pageTime = times_.GraphPageTime != 0 ? times_.GraphPageTime : CutToMinute(blockStart);
  const Block block = Place(blockStart, blockEnd, pageTime);
  if (std::isnan(block.y1) || std::isnan(block.y2)) return;
  if (block.scrolls) times_.BlockPairsPerPage = BlockPairs();

  // The page may have moved on without this chart, behind a gap.
  const double before = timeOrigin_ != 0 ? timeOrigin_ : pageTime;
  times_.GraphPageTime = pageTime;
  timeOrigin_ = block.origin;
  PlotTarget_->SetPenWidth(1);
  AxisTarget_->SetPenWidth(1);
  if (block.scrolls || block.origin != before) Scroll(block, before);
  DrawBlockFrame(block);
  if (std::floor(blockEnd) - std::floor(blockStart) > 0) PrintDate(blockEnd, block.y1, block.y2);
}

/// Each time keeps its place: what stands on the paper beside another time would be a wrong number.
void StripChart::Scroll(const Block& block, double originBefore) {
  const double moved = static_cast<double>(Y(block.origin, originBefore));
  const double dots = std::round(moved * PlotTarget_->PixelHeight() / PlotTarget_->Height());
  if (dots >= 0)
    PlotTarget_->ScrollUp(static_cast<int>(std::min<double>(dots, PlotTarget_->PixelHeight())));
  else
    PlotTarget_->Cls();
  gridRedrawn_ = false;
  AxisTarget_->Cls();
  axisMarks_.clear();
  const double length = block.end - block.start;
  for (int i = 1; i <= BoundedCount(times_.BlockPairsPerPage, AxisTarget_->Height()); ++i) {
    const double time = block.start - (i - 1) * length;
    PrintTime(time, static_cast<double>(Y(time, block.origin)), false);
  }
  PrintDate(block.end, block.y1, block.y2);
}

void StripChart::DrawBlockFrame(const Block& block) {
  const double y1 = static_cast<double>(block.y1), y2 = static_cast<double>(block.y2);
  PlotTarget_->Line(kLeftMargin, y1, kLeftMargin, y2, colour::Black);
  PlotTarget_->Line(kLeftMargin - kAxisTick, y2, kLeftMargin, y2, colour::Black);
  DrawColumns(*PlotTarget_, y1, y2);
  if (!gridRedrawn_) DrawRows(*PlotTarget_, y1, (y2 - y1) / kRowsPerBlock, kRowsPerBlock);
  PrintTime(block.end, y2, true);
}

void StripChart::WriteDate(double blockStart, double blockEnd) {
  const double origin = timeOrigin_ != 0 ? timeOrigin_ : times_.GraphPageTime;
  const float y1 = Y(blockStart, origin), y2 = Y(blockEnd, origin);
  if (std::isnan(y1) || std::isnan(y2)) return;
  timeOrigin_ = origin;
  PrintDate(blockEnd, y1, y2);
}

void StripChart::PrintTime(double time, double y, bool hasTick) {
  axisMarks_.push_back({y, FormatDate(time, "hh:mm"), false, hasTick});
  PrintMark(axisMarks_.back());
}

void StripChart::PrintDate(double date, float y1, float y2) {
  axisMarks_.push_back(
      {(static_cast<double>(y1) + static_cast<double>(y2)) / 2, FormatDate(date, "dd-mmm-yyyy"), true, false});
  PrintMark(axisMarks_.back());
}

void StripChart::PrintMark(const AxisMark& mark) {
  RetainedSurface& axis = *AxisTarget_;
  if (mark.hasTick) axis.Line(axis.Width() - kAxisTick, mark.y, axis.Width(), mark.y, colour::Black);
  const double right = mark.isDate ? kLeftMargin : kLeftMargin - kAxisTick;
  axis.Print(right - 1.05 * axis.TextWidth(mark.text), mark.y - axis.TextHeight(mark.text) / 2, mark.text,
             colour::Black);
}

void StripChart::PrintAxisAgain() {
  AxisTarget_->Cls();
  AxisTarget_->SetPenWidth(1);
  for (const AxisMark& mark : axisMarks_) PrintMark(mark);
}

/// Where the rows of a page begin, at its top or above: a black one stands at the start of each block.
double StripChart::FirstRow(double rowStep) const {
  const double blocks = kRowsPerPairBlock * rowStep;
  if (timeOrigin_ == 0 || times_.GraphEndTime == 0 || !(blocks > 0)) return 0;
  const double y = static_cast<double>(Y(times_.GraphEndTime, timeOrigin_));
  if (std::isnan(y)) return 0;
  const double behind = std::fmod(y, blocks);
  // Times have 32 bits on the way to a place: a thousandth of a twip is none.
  if (std::abs(behind) < 0.001 || std::abs(behind - blocks) < 0.001) return 0;
  return behind > 0 ? behind - blocks : behind;
}

void StripChart::RedrawFrame() {
  SetBlockPairsPerPage();
  RetainedSurface& plot = surfaces_.Pic2;
  const double height = plot.Height();
  const double rows = times_.BlockPairsPerPage * 2 * kRowsPerPairBlock;
  const double step = Divide(height, rows);

  gridRedrawn_ = true;
  plot.Cls();
  plot.SetPenWidth(1);
  plot.Line(kLeftMargin, 0, kLeftMargin, height, colour::Black);
  plot.Line(kLeftMargin - kAxisTick, height / 2, kLeftMargin, height / 2, colour::Black);
  DrawColumns(plot, 0, height);
  const double first = FirstRow(step);
  DrawRows(plot, first, step, BoundedCount((height - first) / step, height));
}

}  // namespace velk
