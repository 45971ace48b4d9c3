#include "settings/settings_io.h"

#include <algorithm>

#include "settings/settings_visitors.h"
#include "settings/templates.h"
#include "settings/texts.h"

namespace velk {

namespace {

/// Keeps a file of which something was lost, and tells where.
void KeepAsItWas(SettingsStore& store, std::string_view application, std::vector<OperatorText>& problems) {
  try {
    const std::string kept = store.PutAside(application);
    if (!kept.empty()) problems.emplace_back(text::SettingsFileKept + kept);
  } catch (const RuntimeError& error) {
    // Nothing is written over it as long as it can't be kept.
    problems.push_back(error.Text());
  }
}

}  // namespace

std::vector<OperatorText> LoadSettings(Session& session, SettingsStore& store, const Language& language) {
  SettingsReader live(language, store, kLiveSettings);
  ReadSettings(live, session);
  if (std::find(live.badKeys.begin(), live.badKeys.end(), "Parameters/NumberOfParameters") != live.badKeys.end()) {
    // Not written at exit: without this it would be told at every start.
    StoreParameterCount(session, store);
  }
  const std::vector<OperatorText> listProblems = LoadTemplateList(session, store, language);

  std::vector<OperatorText> problems = store.TakeProblems();
  if (!live.problems.empty() || store.IsDamaged(kLiveSettings)) KeepAsItWas(store, kLiveSettings, problems);
  if (!listProblems.empty() || store.IsDamaged(kTemplateList)) KeepAsItWas(store, kTemplateList, problems);
  for (const RuntimeError& problem : live.problems) problems.push_back(problem.Text());
  problems.insert(problems.end(), listProblems.begin(), listProblems.end());
  return problems;
}

OperatorText ProblemText(const std::vector<OperatorText>& problems) {
  constexpr std::size_t kMost = 20;  // a box has to fit on the screen
  const std::size_t shown = problems.size() > kMost + 1 ? kMost : problems.size();
  OperatorText text;
  for (std::size_t i = 0; i < shown; ++i) text += problems[i] + "\n";
  if (shown < problems.size()) text += "... + " + std::to_string(problems.size() - shown) + "\n";
  return text;
}

void SaveSettings(Session& session, SettingsStore& store) {
  SettingsWriter live(store, kLiveSettings);
  WriteSettings(live, session);
  SaveTemplateList(session, store);
}

void KeepSettings(Session& session, SettingsStore& store) {
  StoreParameterCount(session, store);
  SaveSettings(session, store);
}

void KeepSettings(const Report& report, Session& session, SettingsStore& store) {
  RunProcedure(report, [&](const Statements& run) { run([&] { KeepSettings(session, store); }); });
}

void StoreParameterCount(Session& session, SettingsStore& store) {
  SettingsWriter writer(store, kLiveSettings);
  VisitParameterCount(writer, session);
}

}  // namespace velk
