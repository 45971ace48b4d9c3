#include "settings/windows/edit_table_command.h"

#include <algorithm>

#include "instruments/setup/hardware_choices.h"
#include "model/graph_map.h"
#include "model/graph_window.h"
#include "opc/velk_opc_module.h"
#include "platform/dialogs/procedure.h"
#include "settings/settings_io.h"
#include "settings/texts.h"
#include "settings/windows/parameters_table.h"

namespace velk {

namespace {

bool AllWindowsAreOpen(const Session& session) {
  for (int k = 1; k <= session.GraphCount; ++k)
    if (session.GraphForms[session.GraphList[k]] == nullptr) return false;
  return true;
}

using CurvesOfGraphs = decltype(Session::GraphSlots);

bool HasSameCurves(const CurvesOfGraphs& a, const CurvesOfGraphs& b, int graph) {
  const auto place = static_cast<std::size_t>(graph);
  return std::equal(a.begin(), a.end(), b.begin(),
                    [place](const auto& slotOfA, const auto& slotOfB) { return slotOfA[place] == slotOfB[place]; });
}

/// The windows anew where a graph is shown that wasn't. Else each stays where the operator has put it: with the curves
/// that it had `before` it shows them as they are now; made anew with others; closed without any.
void ShowEdited(Session& session, GraphWindows& graphs, const CurvesOfGraphs& before) {
  BuildGraphMap(session, session.TotalParameters);
  if (!AllWindowsAreOpen(session)) return graphs.CreateGraphWindows();
  for (int graph = 1; graph <= kMaxParameters; ++graph) {
    GraphWindow* const window = session.GraphForms[graph];
    if (window == nullptr) continue;
    if (HasSameCurves(before, session.GraphSlots, graph))
      window->RefreshForm();
    else
      graphs.Rebuild(graph);
  }
}

/// The items that channels come from; none where the protocol has no items, and while a file plays.
std::vector<std::string> TagsOf(const Session& session, SettingsStore& settings) {
  if (!session.AcquisitionMode || !CountsItems(session.SerialData)) return {};
  return OpcTags(settings);
}

}  // namespace

void mnuEditTable_Click(WindowHost& host, Session& session, const Platform& platform, GraphWindows& graphs) {
  RunProcedure({platform.dialogs, "mnuEditTable_Click"}, [&](const Statements& run) {
    const ColumnWidths kept = ReadColumnWidths(platform.settings);
    ColumnWidths widths = kept;
    const auto table = host.Show<ParametersTable>(ParameterTable(session, TagsOf(session, platform.settings)), &widths);
    if (widths != kept) SaveColumnWidths(platform.settings, widths);
    if (!table) return;
    const bool raised = StoreTable(session, *table);
    CarryTableBack(session);
    // Ahead of every box, which may stand for hours; graphs follow even where the save is cancelled.
    KeepSettings({platform.dialogs, "mnuEditTable_Click"}, session, platform.settings);
    // The end of the program closes the table too; its graphs are gone by then, and nobody is asked.
    if (!session.ProgramEnding) {
      if (raised) platform.dialogs.Message({text::MaximumNotAbove, {}, Buttons::Ok, BoxIcon::Critical});
      const CurvesOfGraphs before = session.GraphSlots;
      run([&] { ShowEdited(session, graphs, before); });
    }
  });
}

}  // namespace velk
