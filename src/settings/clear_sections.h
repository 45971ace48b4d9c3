#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "base/language.h"
#include "model/session.h"
#include "platform/settings/settings.h"

namespace velk {

/// Groups of sections of the live settings, in the order of the boxes of ClearSettings.
enum class SettingsGroup { General, Protocol, PrintGraph, Parameters, Playback, Formulae };
inline constexpr int kSettingsGroups = 6;

/// By group: whether it is to be cleared.
using GroupChoice = std::array<bool, kSettingsGroups>;

inline bool IsEmpty(const GroupChoice& groups) {
  return groups == GroupChoice{};
}

/// What the operator is asked ahead of it: which groups go.
OperatorText ClearQuestion(const GroupChoice& groups);

/// Deletes the sections of the chosen groups from the live settings, then loads and saves them, which restores their
/// presets. Gives the problems of LoadSettings; raises the store's file errors.
std::vector<OperatorText> ClearSections(Session& session, SettingsStore& store, const Language& language,
                                        const GroupChoice& groups);

/// By group: the live settings ahead of its first clearing, as SettingsStore::TextOf gave them; none where it was not
/// cleared.
using BeforeClearing = std::array<std::optional<std::string>, kSettingsGroups>;

/// Puts the sections of each group that was cleared back to what they were, on the disk too, and loads the live
/// settings. What else was set since then stays. Gives and raises what ClearSections does.
std::vector<OperatorText> TakeBackClearing(Session& session, SettingsStore& store, const Language& language,
                                           const BeforeClearing& before);

}  // namespace velk
