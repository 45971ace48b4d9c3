#pragma once

#include <string>
#include <vector>

#include "base/language.h"
#include "model/session.h"
#include "platform/settings/settings.h"
#include "settings/settings_questions.h"

namespace velk {

/// Deletes the sections of the chosen groups from the live settings, then loads and saves them, which restores their
/// presets. Gives the problems of LoadSettings; raises the store's file errors.
std::vector<OperatorText> ClearSections(Session& session, SettingsStore& store, const Language& language,
                                        const GroupChoice& groups);

}  // namespace velk
