#include "graphs/chart_measures.h"

#include <cmath>

#include "model/session.h"

namespace velk {

double PlotHeight(const ChartMeasures& measures) {
  return std::floor(measures.MaximumTime / 3) * 3;
}

ChartMeasures MeasuresOf(const Session& session) {
  return {session.MaximumTime, session.pixelslength, session.pixeldivide};
}

}  // namespace velk
