#include "formula/windows/formula_windows.h"

#include "formula/windows/computed_parameters.h"
#include "formula/windows/frm_inc_params.h"
#include "model/graph_map.h"
#include "platform/dialogs/procedure.h"

namespace velk {

// The windows are made on the heap and watched: the parent may be destroyed while one stands, and takes it along.

void FormulaWindows::mnuToolsDefine_Click() {
  const FormulaReport report{platform_.dialogs, platform_.language, [this] { view_.Beep(); }};
  const QPointer<EqEditor> window = new EqEditor(session_, report, graphs_, translation_, parent_);
  windows_.Run(window.data());
  delete window;
}

void FormulaWindows::mnuToolsInclude_Click() {
  RunProcedure({platform_.dialogs, "mnuToolsInclude_Click"}, [&](const Statements& run) {
    const QPointer<ComputedParameters> window = new ComputedParameters(
        translation_, ComputedChannels(session_), [this](QWidget* over) { ShowParameters(over); }, parent_);
    windows_.Run(window.data());
    if (!window) return;
    const std::vector<ComputedChannel> channels = window->Channels();
    delete window;
    // The end of the program closes the window too; its graphs are gone by then.
    if (session_.ProgramEnding) return;
    IncludeInGraphs(session_, channels);
    run([&] { RebuildGraphs(session_, graphs_); });
  });
}

void FormulaWindows::ShowParameters(QWidget* over) {
  const QPointer<frmIncParams> window = new frmIncParams(session_, translation_, over);
  windows_.Run(window.data());
  delete window;
}

}  // namespace velk
