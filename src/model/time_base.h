#pragma once

namespace velk {

/// Where times stand on a chart's page. A chart is given one: the live charts share the session's, a chart of other
/// data has its own. Times are date-times in days.
struct TimeBase {
  double GraphTimeStep = 0;  ///< days of one sample row
  double GraphPageTime = 0;  ///< at the top of the plot
  double GraphEndTime = 0;   ///< start of the block that is to be drawn next
  double LastPlotTime = 0;   ///< of the last plotted sample
  double BlockPairsPerPage = 0;
};

}  // namespace velk
