#include <cmath>

#include "base/colour.h"
#include "base/dates.h"
#include "base/errors.h"
#include "graphs/chart_grid.h"
#include "graphs/strip_chart.h"

namespace velk {

namespace {

/// The labels of a page stand between these, above and below.
constexpr double kPageEdge = 35;
constexpr double kMinute = 1.0 / 1440;
constexpr int kMinutesPerLabel = 2;
constexpr int kRowsPerLabel = 3;

}  // namespace

void StripChart::Picture2_Update2(double from) {
  RetainedSurface& plot = surfaces_.Pic2;
  RetainedSurface& axis = surfaces_.Picture3;
  const double height = plot.Height(), top = kPageEdge;
  const double labels = times_.BlockPairsPerPage * 2;
  const double labelStep = Divide(height - 2 * kPageEdge, labels);
  const double rowStep = Divide(height - top, labels * kRowsPerLabel);

  plot.Cls();
  axis.Cls();
  for (int i = 1; i <= BoundedCount(labels, height); ++i)
    PrintTimeLabel(axis, from + i * kMinutesPerLabel * kMinute, top + labelStep * i);
  const std::string date = FormatDate(from + kMinute, "dd-mmm-yyyy");
  axis.Print(axis.Width() - 1.05 * axis.TextWidth(date), top + labelStep / 2 - axis.TextHeight(date) / 2, date,
             colour::Black);

  plot.SetPenWidth(1);
  plot.Line(kLeftMargin, top, kLeftMargin, height, colour::Black);
  plot.Line(kLeftMargin - kAxisTick, height / 2, kLeftMargin, height / 2, colour::Black);
  DrawColumns(plot, top, height);
  DrawRows(plot, top, rowStep, BoundedCount(labels * kRowsPerLabel, height));
}

}  // namespace velk
