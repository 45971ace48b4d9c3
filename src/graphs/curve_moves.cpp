#include "graphs/curve_moves.h"

#include <algorithm>

namespace velk {

namespace {

/// Takes a curve off its window, closes the gap and gives its parameter.
std::int16_t TakeOff(Session& session, int graph, int slot) {
  const std::int16_t parameter = session.GraphSlots[slot][graph];
  const int count = session.GraphCurveCount[graph]--;
  for (int i = slot; i < count; ++i) session.GraphSlots[i][graph] = session.GraphSlots[i + 1][graph];
  session.GraphSlots[count][graph] = 0;
  if (count > 1) return parameter;
  auto* const end = session.GraphList.data() + session.GraphCount + 1;
  auto* const place = std::remove(session.GraphList.data() + 1, end, static_cast<std::int16_t>(graph));
  session.GraphCount = static_cast<std::int16_t>(place - session.GraphList.data() - 1);
  return parameter;
}

void PutOn(Session& session, std::int16_t parameter, int graph) {
  session.CurrentParameters[parameter].FormIndex = static_cast<std::int16_t>(graph);
  const int slot = ++session.GraphCurveCount[graph];
  session.GraphSlots[slot][graph] = parameter;
  if (slot == 1) session.GraphList[++session.GraphCount] = static_cast<std::int16_t>(graph);
}

int OwnGraphOf(const Session& session, int parameter) {
  if (session.GraphCurveCount[parameter] == 0) return parameter;
  int graph = 1;
  while (session.GraphCurveCount[graph] > 0) ++graph;
  return graph;
}

}  // namespace

bool HasRoomForCurve(const Session& session, int graph) {
  return session.GraphCurveCount[graph] < kMaxParameters;
}

void MoveFirstCurve(Session& session, int from, int to) {
  if (session.GraphCurveCount[from] == 0) return;
  PutOn(session, TakeOff(session, from, 1), to);
}

int TakeCurveOut(Session& session, int graph, int slot) {
  const std::int16_t parameter = TakeOff(session, graph, slot);
  const int own = OwnGraphOf(session, parameter);
  PutOn(session, parameter, own);
  return own;
}

std::vector<std::string> CurveNames(const Session& session, int graph) {
  std::vector<std::string> names;
  for (int slot = 1; slot <= session.GraphCurveCount[graph]; ++slot)
    names.push_back(session.CurrentParameters[session.GraphSlots[slot][graph]].name);
  return names;
}

}  // namespace velk
