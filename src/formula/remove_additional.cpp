#include "formula/remove_additional.h"

#include <algorithm>
#include <utility>

#include "formula/additional_parameters.h"
#include "formula/texts.h"
#include "model/graph_map.h"
#include "model/help_topics.h"
#include "model/parameter_questions.h"
#include "platform/dialogs/procedure.h"

namespace velk {

std::vector<std::string> RemovalEntries(const Session& session) {
  std::vector<std::string> entries;
  for (int i = 1; i <= session.NumberOfFormulae; ++i) entries.push_back(session.AdditionalParameters[i].name);
  // After a removal the next new channel is called like the last one: "Additional Parameter 2" can stand twice.
  return TellApart(std::move(entries));
}

void mnuToolsRemove_Click(Session& session, Dialogs& dialogs, GraphWindows& graphs) {
  const Report report{.dialogs = dialogs, .procedure = "mnuToolsRemove_Click", .title = text::RemoveAdditionalError};
  RunProcedure(report, [&](const Statements& run) {
    const auto entries = RemovalEntries(session);
    if (entries.empty()) return;
    const auto chosen =
        dialogs.Choose({text::RemoveAdditionalTitle, text::RemoveAdditionalPrompt, entries, false, topic::Formulas});
    if (!chosen) return;
    const auto entry = std::find(entries.begin(), entries.end(), *chosen);
    if (entry == entries.end()) return;
    run([&] { RemoveAdditional(session, static_cast<int>(entry - entries.begin()) + 1); });
    run([&] { RebuildGraphs(session, graphs); });
  });
}

}  // namespace velk
