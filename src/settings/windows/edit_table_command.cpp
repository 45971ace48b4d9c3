#include "settings/windows/edit_table_command.h"

#include "model/graph_map.h"
#include "platform/dialogs/procedure.h"
#include "settings/settings_io.h"
#include "settings/texts.h"
#include "settings/windows/parameters_table.h"

namespace velk {

void mnuEditTable_Click(WindowHost& host, Session& session, const Platform& platform, GraphWindows& graphs) {
  RunProcedure({platform.dialogs, "mnuEditTable_Click"}, [&](const Statements& run) {
    const auto table = host.Show<ParametersTable>(ParameterTable(session));
    if (!table) return;
    const bool raised = StoreTable(session, *table);
    CarryTableBack(session);
    // The end of the program closes the table too; its graphs are gone by then, and nobody is asked.
    if (!session.ProgramEnding) {
      if (raised) platform.dialogs.Message({text::MaximumNotAbove, {}, Buttons::Ok, BoxIcon::Critical});
      run([&] { RebuildGraphs(session, graphs); });
    }
    run([&] { SaveSettings(session, platform.settings); });
  });
}

}  // namespace velk
