#include "model/graph_map.h"

#include "model/graph_window.h"

namespace velk {

namespace {

bool IsCurve(const Parameter& parameter) {
  return parameter.GraphVisible && parameter.FormIndex >= 1 && parameter.FormIndex <= kMaxParameters;
}

bool StandsInGraphList(const Session& session, int graphNumber) {
  for (int k = 1; k <= session.GraphCount; ++k)
    if (session.GraphList[k] == graphNumber) return true;
  return false;
}

}  // namespace

void BuildGraphMap(Session& session, int count) {
  // All counts, not only the first `count`: a graph number may be higher than the number of parameters, and what an
  // earlier map left there would shift its curves.
  session.GraphCurveCount.fill(0);
  session.GraphCount = 0;
  for (auto& slot : session.GraphSlots) slot.fill(0);

  for (int i = 1; i <= count; ++i) {
    const Parameter& parameter = session.CurrentParameters[i];
    if (!IsCurve(parameter)) continue;
    const int graph = parameter.FormIndex;
    if (!StandsInGraphList(session, parameter.FormIndex)) {
      ++session.GraphCount;
      session.GraphList[session.GraphCount] = parameter.FormIndex;
    }
    ++session.GraphCurveCount[graph];
    session.GraphSlots[session.GraphCurveCount[graph]][graph] = static_cast<std::int16_t>(i);
  }
}

void RebuildGraphs(Session& session, GraphWindows& graphs) {
  BuildGraphMap(session, session.TotalParameters);
  graphs.CreateGraphWindows();
}

void ShowNonBlank(Session& session, int count) {
  for (int i = 1; i <= count; ++i) {
    Parameter& parameter = session.CurrentParameters[i];
    parameter.GraphVisible = parameter.name != kBlankName;
  }
}

void HideBlank(Session& session, int count) {
  for (int i = 1; i <= count; ++i) {
    Parameter& parameter = session.CurrentParameters[i];
    if (parameter.name == kBlankName) parameter.GraphVisible = false;
  }
}

int GraphSlotOf(const Session& session, int parameter, int graphNumber) {
  for (int slot = 1; slot <= session.GraphCurveCount[graphNumber]; ++slot)
    if (session.GraphSlots[slot][graphNumber] == parameter) return slot;
  return 0;
}

}  // namespace velk
