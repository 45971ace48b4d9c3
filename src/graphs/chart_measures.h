#pragma once

namespace velk {

struct Session;

/// How long and how fine a chart's page is. A chart keeps what it was made with.
struct ChartMeasures {
  double MaximumTime = 3600;  ///< height of the plot surface in twips
  double pixelslength = 120;  ///< samples in a block
  double pixeldivide = 15;    ///< twips that a sample goes down the page
};

/// Height of the plot in twips: MaximumTime, cut to a multiple of 3.
double PlotHeight(const ChartMeasures& measures);

/// Those of the operator's settings.
ChartMeasures MeasuresOf(const Session& session);

}  // namespace velk
