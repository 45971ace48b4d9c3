#include "graphs/chart_grid.h"

#include <algorithm>
#include <cmath>

#include "base/colour.h"
#include "base/dates.h"
#include "graphs/strip_chart.h"

namespace velk {

namespace {

constexpr int kColumns = 10;

}  // namespace

int BoundedCount(double count, double height) {
  return static_cast<int>(std::clamp(std::floor(count), 0.0, height));
}

void DrawColumns(Surface& plot, double y1, double y2) {
  const double step = (plot.Width() - kLeftMargin) / kColumns;
  for (int i = 1; i < kColumns; ++i) {
    const double x = kLeftMargin + i * step;
    plot.Line(x, y1, x, y2, colour::Grid);
  }
}

void DrawRows(Surface& plot, double top, double step, int count) {
  for (int i = 0; i <= count; ++i) {
    const double y = top + i * step;
    if (y < 0) continue;
    plot.Line(kLeftMargin, y, plot.Width(), y, i % 3 == 0 ? colour::Black : colour::Grid);
  }
}

void PrintTimeLabel(Surface& axis, double time, double y) {
  const std::string text = FormatDate(time, "hh:mm");
  axis.Print(kLeftMargin - kAxisTick - 1.05 * axis.TextWidth(text), y - axis.TextHeight(text) / 2, text, colour::Black);
}

}  // namespace velk
