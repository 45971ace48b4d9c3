#include "graphs/chart_measures.h"

#include "model/session.h"

namespace velk {

ChartMeasures MeasuresOf(const Session& session) {
  return {session.MaximumTime, session.pixelslength, session.pixeldivide};
}

}  // namespace velk
