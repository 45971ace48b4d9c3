#include "settings/clear_sections.h"

#include <algorithm>
#include <array>

#include "base/numbers.h"
#include "instruments/table/protocols.h"
#include "settings/settings_io.h"
#include "settings/settings_keys.h"
#include "settings/texts.h"

namespace velk {

namespace {

/// How many sections Formula<i> the store counts. It can't hold more than there are parameters; a count that is no
/// number is none.
int StoredFormulae(SettingsStore& store) {
  const std::string count = store.Get(kLiveSettings, "Formulae", "NumberOfFormulae", "0");
  return static_cast<int>(std::clamp(Val(count), 0.0, static_cast<double>(kMaxParameters)));
}

void DeleteNumbered(SettingsStore& store, const std::string& section, int count) {
  for (int i = 1; i <= count; ++i) store.Delete(kLiveSettings, section + std::to_string(i));
}

void DeleteGroup(SettingsStore& store, SettingsGroup group) {
  switch (group) {
    case SettingsGroup::General:
      return store.Delete(kLiveSettings, "General");
    case SettingsGroup::Protocol:
      return store.Delete(kLiveSettings, "Protocol");
    case SettingsGroup::PrintGraph:
      return store.Delete(kLiveSettings, "PrintGraph");
    case SettingsGroup::Parameters:
      store.Delete(kLiveSettings, "Parameters");
      return DeleteNumbered(store, "Parameter", kMaxParameters);
    case SettingsGroup::Playback:
      store.Delete(kLiveSettings, "Playback");
      return DeleteNumbered(store, "PlaybackParameter", kMaxParameters);
    case SettingsGroup::Formulae:
      // The count goes with the section.
      DeleteNumbered(store, "Formula", StoredFormulae(store));
      return store.Delete(kLiveSettings, "Formulae");
  }
}

}  // namespace

std::vector<OperatorText> ClearSections(Session& session, SettingsStore& store, const Language& language,
                                        const GroupChoice& groups) {
  for (int group = 0; group < kSettingsGroups; ++group) {
    if (groups[static_cast<std::size_t>(group)]) DeleteGroup(store, static_cast<SettingsGroup>(group));
  }
  std::vector<OperatorText> problems = LoadSettings(session, store, language);
  SetProtocolConstants(session);
  SaveSettings(session, store);
  return problems;
}

OperatorText ClearQuestion(const GroupChoice& groups) {
  constexpr std::array<MessageText, kSettingsGroups> kNames{text::GroupGeneral,  text::GroupProtocol,
                                                            text::GroupPrinting, text::GroupParameters,
                                                            text::GroupPlayback, text::GroupFormulae};
  OperatorText question = text::TheseSettingsGo;
  for (std::size_t i = 0; i < groups.size(); ++i)
    if (groups[i]) question += "\n    " + OperatorText(kNames[i]);
  return question + "\n" + text::ClearThem;
}

std::vector<OperatorText> TakeBackClearing(Session& session, SettingsStore& store, const Language& language,
                                           const std::string& before) {
  store.Restore(kLiveSettings, before);
  std::vector<OperatorText> problems = LoadSettings(session, store, language);
  SetProtocolConstants(session);
  store.Flush();
  return problems;
}

}  // namespace velk
