#include "store/settings_io.h"

#include "store/settings_visitors.h"
#include "store/templates.h"

namespace velk {

std::vector<std::string> LoadSettings(Session& session, SettingsStore& store) {
  SettingsReader live(session, store, kLiveSettings);
  ReadSettings(live, session);
  const std::vector<std::string> listProblems = LoadTemplateList(session, store);

  std::vector<std::string> problems = store.TakeProblems();
  for (const RuntimeError& problem : live.problems) problems.emplace_back(problem.what());
  problems.insert(problems.end(), listProblems.begin(), listProblems.end());
  return problems;
}

std::string ProblemText(const std::vector<std::string>& problems) {
  constexpr std::size_t kMost = 20;  // a box has to fit on the screen
  const std::size_t shown = problems.size() > kMost + 1 ? kMost : problems.size();
  std::string text;
  for (std::size_t i = 0; i < shown; ++i) text += problems[i] + '\n';
  if (shown < problems.size()) text += "... + " + std::to_string(problems.size() - shown) + '\n';
  return text;
}

void SaveSettings(Session& session, SettingsStore& store) {
  SettingsWriter live(store, kLiveSettings);
  WriteSettings(live, session);
  SaveTemplateList(session, store);
}

}  // namespace velk
