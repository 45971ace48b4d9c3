#pragma once

#include "formula/additional_parameters.h"
#include "model/graph_map.h"
#include "support/recording_graphs.h"
#include "support/recording_view.h"
#include "support/scripted_dialogs.h"

namespace velk::test {

/// A session with the inputs "Depth", "BLANK" and "Pump Rate" on graph 1, before any computed channel.
struct ComputedSession {
  ComputedSession() {
    state.NumberOfParameters = 3;
    state.TotalParameters = 3;
    const char* const names[] = {"Depth", kBlankName, "Pump Rate"};
    for (int i = 1; i <= 3; ++i) {
      state.CurrentParameters[i].name = names[i - 1];
      state.CurrentParameters[i].units = "m";
      state.CurrentParameters[i].FormIndex = 1;
      state.CurrentParameters[i].GraphVisible = i != 2;
      state.Parameters[i] = state.CurrentParameters[i];
    }
  }

  /// A computed channel behind the others.
  void Add(const std::string& formula, const std::string& name) {
    ReadFormulae(state, {dialogs, English(), {}}, formula);
    state.AdditionalParameters.back().name = name;
    state.CurrentParameters[state.TotalParameters].name = name;
  }

  Gate gate;
  ScriptedDialogs dialogs{gate};
  RecordingView view;
  RecordingGraphs graphs;
  Session state;
};

}  // namespace velk::test
