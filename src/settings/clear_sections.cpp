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

/// The sections of a group, of numbered formulae the first `formulae`.
std::vector<std::string> SectionsOf(SettingsGroup group, int formulae) {
  std::vector<std::string> sections;
  const auto add = [&](const std::string& section, const std::string& numbered, int count) {
    sections.push_back(section);
    for (int i = 1; i <= count; ++i) sections.push_back(numbered + std::to_string(i));
  };
  switch (group) {
    case SettingsGroup::General:
      add("General", "", 0);
      break;
    case SettingsGroup::Protocol:
      add("Protocol", "", 0);
      break;
    case SettingsGroup::PrintGraph:
      add("PrintGraph", "", 0);
      break;
    case SettingsGroup::Parameters:
      add("Parameters", "Parameter", kMaxParameters);
      break;
    case SettingsGroup::Playback:
      add("Playback", "PlaybackParameter", kMaxParameters);
      break;
    case SettingsGroup::Formulae:
      add("Formulae", "Formula", formulae);
      break;
  }
  return sections;
}

}  // namespace

std::vector<OperatorText> ClearSections(Session& session, SettingsStore& store, const Language& language,
                                        const GroupChoice& groups) {
  for (int group = 0; group < kSettingsGroups; ++group) {
    if (!groups[static_cast<std::size_t>(group)]) continue;
    for (const std::string& section : SectionsOf(static_cast<SettingsGroup>(group), StoredFormulae(store)))
      store.Delete(kLiveSettings, section);
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
                                           const BeforeClearing& before) {
  for (int group = 0; group < kSettingsGroups; ++group) {
    const std::optional<std::string>& text = before[static_cast<std::size_t>(group)];
    if (text) store.Restore(kLiveSettings, *text, SectionsOf(static_cast<SettingsGroup>(group), kMaxParameters));
  }
  std::vector<OperatorText> problems = LoadSettings(session, store, language);
  SetProtocolConstants(session);
  store.Flush();
  return problems;
}

}  // namespace velk
