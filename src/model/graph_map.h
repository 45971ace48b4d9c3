#pragma once

#include "model/session.h"

namespace velk {

class GraphWindows;

/// Works out from CurrentParameters 1 to `count` which graph windows there are and which curve stands in which slot.
/// A parameter with FormIndex 0 or without GraphVisible is skipped; so is one with a FormIndex beyond 64.
void BuildGraphMap(Session& session, int count);

/// The graph map over CurrentParameters 1 to TotalParameters and its windows anew: whenever parameters come, go or
/// change their graph.
void RebuildGraphs(Session& session, GraphWindows& graphs);

/// Sets GraphVisible of CurrentParameters 1 to `count`: true unless the name is "BLANK".
void ShowNonBlank(Session& session, int count);

/// Clears GraphVisible of "BLANK" parameters and leaves the others.
void HideBlank(Session& session, int count);

/// Calls `f` with every open graph window, in order of their numbers. A window that `f` closes or opens further on is
/// left out or met as it then stands.
template <class Function>
void ForEachGraphWindow(const Session& session, Function&& f) {
  for (int graph = 1; graph <= kMaxParameters; ++graph)
    if (GraphWindow* window = session.GraphForms[graph]) f(*window);
}

/// The slot of a parameter on its graph, or 0 where it has none.
int GraphSlotOf(const Session& session, int parameter, int graphNumber);

}  // namespace velk
