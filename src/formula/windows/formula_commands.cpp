#include "formula/windows/formula_commands.h"

#include "formula/additional_parameters.h"
#include "formula/remove_additional.h"
#include "formula/texts.h"
#include "formula/windows/computed_parameters.h"
#include "formula/windows/frm_inc_params.h"
#include "model/graph_map.h"
#include "platform/dialogs/procedure.h"

namespace velk {

void FormulaCommands::Bind(CommandBinder& commands) {
  commands.Bind("mnuToolsDefine", [this] { mnuToolsDefine_Click(); });
  commands.Bind("mnuToolsInclude", [this] { mnuToolsInclude_Click(); });
  commands.Bind("mnuToolsRemove", [this] { mnuToolsRemove_Click(); });
}

void FormulaCommands::mnuToolsDefine_Click() {
  const FormulaReport report{platform_.dialogs, platform_.language, [this] { view_.Beep(); }, changed_};
  host_.Show<EqEditor>(session_, report, graphs_);
}

void FormulaCommands::mnuToolsInclude_Click() {
  RunProcedure({platform_.dialogs, "mnuToolsInclude_Click"}, [&](const Statements& run) {
    if (!HasRoomForAdditional(session_, 0)) {
      platform_.dialogs.Message(
          {.text = text::NoRoomForParameter, .title = text::FormulaCalculator, .icon = BoxIcon::Exclamation});
      return;
    }
    const auto channels =
        host_.Show<ComputedParameters>(ComputedChannels(session_), [this] { host_.Show<frmIncParams>(session_); });
    // The end of the program closes the window too; its graphs are gone by then.
    if (!channels || session_.ProgramEnding) return;
    IncludeInGraphs(session_, *channels);
    changed_();
    run([&] { RebuildGraphs(session_, graphs_); });
  });
}

void FormulaCommands::mnuToolsRemove_Click() {
  const int before = session_.NumberOfFormulae;
  velk::mnuToolsRemove_Click(session_, platform_.dialogs, graphs_);
  if (session_.NumberOfFormulae != before) changed_();
}

}  // namespace velk
