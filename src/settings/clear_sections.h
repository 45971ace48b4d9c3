#pragma once

#include <array>
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

/// Deletes the sections of the chosen groups from the live settings, then loads and saves them, which restores their
/// presets. Gives the problems of LoadSettings; raises the store's file errors.
std::vector<OperatorText> ClearSections(Session& session, SettingsStore& store, const Language& language,
                                        const GroupChoice& groups);

}  // namespace velk
