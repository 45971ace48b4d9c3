#include "settings/windows/edit_table_command.h"

#include "model/graph_map.h"
#include "model/graph_window.h"
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

/// The windows anew; where each is open and has the curves that it had, it stays where the operator has put it, and
/// shows them as they are now.
void ShowEdited(Session& session, GraphWindows& graphs) {
  const auto curvesBefore = session.GraphSlots;
  BuildGraphMap(session, session.TotalParameters);
  if (curvesBefore != session.GraphSlots || !AllWindowsAreOpen(session)) return graphs.CreateGraphWindows();
  ForEachGraphWindow(session, [](GraphWindow& window) { window.RefreshForm(); });
}

}  // namespace

void mnuEditTable_Click(WindowHost& host, Session& session, const Platform& platform, GraphWindows& graphs) {
  RunProcedure({platform.dialogs, "mnuEditTable_Click"}, [&](const Statements& run) {
    const ColumnWidths before = ReadColumnWidths(platform.settings);
    ColumnWidths widths = before;
    const auto table = host.Show<ParametersTable>(ParameterTable(session), &widths);
    if (widths != before) SaveColumnWidths(platform.settings, widths);
    if (!table) return;
    const bool raised = StoreTable(session, *table);
    CarryTableBack(session);
    // The end of the program closes the table too; its graphs are gone by then, and nobody is asked.
    if (!session.ProgramEnding) {
      if (raised) platform.dialogs.Message({text::MaximumNotAbove, {}, Buttons::Ok, BoxIcon::Critical});
      run([&] { ShowEdited(session, graphs); });
    }
    run([&] { SaveSettings(session, platform.settings); });
  });
}

}  // namespace velk
