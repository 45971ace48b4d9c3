#include "graphs/strip_chart.h"

#include <cmath>

#include "base/colour.h"
#include "base/dates.h"
#include "base/errors.h"
#include "graphs/chart_grid.h"
#include "graphs/wrapping.h"

namespace velk {

namespace {

constexpr int kRowsPerBlock = 6;
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
  if (times_.BlockPairsPerPage == 0) times_.BlockPairsPerPage = BlockPairs();
}

void StripChart::PlotValue(double previousTime, double time, float previousValue, float value, double min, double max,
                           std::int32_t colour, bool wrapping) {
  const double origin = timeOrigin_ != 0 ? timeOrigin_ : CutToMinute(previousTime);
  const float y1 = Y(previousTime, origin), y2 = Y(time, origin);
  if (std::isnan(y1) || std::isnan(y2)) return;
  const Scale scale = scales_.Limits(min, max);
  const double width = PlotTarget_->Width();
  const bool gap = IsGap(previousTime, time);

  WrappingPasses passes(previousValue, value, scale, wrapping);
  for (WrappingPass pass; passes.Next(pass);) {
    const float x1 = ValueToX(pass.previous, scale, kLeftMargin, width);
    const float x2 = ValueToX(pass.value, scale, kLeftMargin, width);
    if (std::isnan(x1) || std::isnan(x2)) return;
    timeOrigin_ = origin;
    PlotTarget_->SetPenWidth(pass.penWidth);
    if (gap)
      PlotTarget_->Circle(x2, y2, kDotRadius, colour);
    else
      PlotTarget_->Line(x1, y1, x2, y2, colour);
  }
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

  times_.GraphPageTime = pageTime;
  timeOrigin_ = block.origin;
  PlotTarget_->SetPenWidth(1);
  AxisTarget_->SetPenWidth(1);
  if (block.scrolls) ScrollHalfPage(block);
  DrawBlockFrame(block);
  if (std::floor(blockEnd) - std::floor(blockStart) > 0) PrintDate(blockEnd, block.y1, block.y2);
}

void StripChart::ScrollHalfPage(const Block& block) {
  PlotTarget_->ScrollUp(PlotTarget_->PixelHeight() / 2);
  gridRedrawn_ = false;
  AxisTarget_->Cls();
  const double pairs = times_.BlockPairsPerPage;
  const double length = block.end - block.start;
  for (int i = 1; i <= BoundedCount(pairs, AxisTarget_->Height()); ++i)
    PrintTimeLabel(*AxisTarget_, block.start - (i - 1) * length,
                   (pairs - i + 1) * static_cast<double>(block.y2 - block.y1));
  PrintDate(block.end, block.y1, block.y2);
}

void StripChart::DrawBlockFrame(const Block& block) {
  const double y1 = static_cast<double>(block.y1), y2 = static_cast<double>(block.y2);
  PlotTarget_->Line(kLeftMargin, y1, kLeftMargin, y2, colour::Black);
  PlotTarget_->Line(kLeftMargin - kAxisTick, y2, kLeftMargin, y2, colour::Black);
  DrawColumns(*PlotTarget_, y1, y2);
  if (!gridRedrawn_) DrawRows(*PlotTarget_, y1, (y2 - y1) / kRowsPerBlock, kRowsPerBlock);
  const double axisWidth = AxisTarget_->Width();
  AxisTarget_->Line(axisWidth - kAxisTick, y2, axisWidth, y2, colour::Black);
  PrintTimeLabel(*AxisTarget_, block.end, y2);
}

void StripChart::WriteDate(double blockStart, double blockEnd) {
  const double origin = timeOrigin_ != 0 ? timeOrigin_ : times_.GraphPageTime;
  const float y1 = Y(blockStart, origin), y2 = Y(blockEnd, origin);
  if (std::isnan(y1) || std::isnan(y2)) return;
  timeOrigin_ = origin;
  PrintDate(blockEnd, y1, y2);
}

void StripChart::PrintDate(double date, float y1, float y2) {
  const std::string text = FormatDate(date, "dd-mmm-yyyy");
  const double middle = (static_cast<double>(y1) + static_cast<double>(y2)) / 2;
  AxisTarget_->Print(kLeftMargin - 1.05 * AxisTarget_->TextWidth(text), middle - AxisTarget_->TextHeight(text) / 2,
                     text, colour::Black);
}

void StripChart::RedrawFrame() {
  SetBlockPairsPerPage();
  RetainedSurface& plot = surfaces_.Pic2;
  const double height = plot.Height();
  const double rows = times_.BlockPairsPerPage * 2 * 3;
  const double step = Divide(height, rows);

  gridRedrawn_ = true;
  plot.Cls();
  plot.SetPenWidth(1);
  plot.Line(kLeftMargin, 0, kLeftMargin, height, colour::Black);
  plot.Line(kLeftMargin - kAxisTick, height / 2, kLeftMargin, height / 2, colour::Black);
  DrawColumns(plot, 0, height);
  DrawRows(plot, 0, step, BoundedCount(rows, height));
}

}  // namespace velk
