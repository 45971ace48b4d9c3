#include "formula/remove_additional.h"

#include <algorithm>
#include <set>

#include "formula/additional_parameters.h"
#include "formula/texts.h"
#include "model/graph_map.h"
#include "model/help_topics.h"
#include "platform/dialogs/procedure.h"

namespace velk {

namespace {

bool AreDistinctAndNamed(const std::vector<std::string>& names) {
  const std::set<std::string> distinct(names.begin(), names.end());
  return distinct.size() == names.size() && !distinct.contains({});
}

}  // namespace

std::vector<std::string> RemovalEntries(const Session& session) {
  std::vector<std::string> entries;
  for (int i = 1; i <= session.NumberOfFormulae; ++i) entries.push_back(session.AdditionalParameters[i].name);
  if (AreDistinctAndNamed(entries)) return entries;
  // After a removal the next new channel is called like the last one: "Additional Parameter 2" can stand twice.
  for (std::size_t i = 0; i < entries.size(); ++i) entries[i].insert(0, std::to_string(i + 1) + ": ");
  return entries;
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
