#pragma once

#include <string>

#include "base/language.h"
#include "model/stored_settings.h"

namespace velk {

class SettingsStore;

/// Settings of a new program for a simulated KESTA version 5 behind `device`: some channels on two graphs, named in
/// this language, and the language and the looks of the operator's own program.
void SetUpForSimulatedUnit(SettingsStore& settings, const std::string& device, const StoredSettings& own,
                           const Language& language);

/// Starts a VELK of its own beside this one, with a simulated unit behind a pseudo-terminal and with settings of its
/// own, which go with it; the operator's stay untouched. `programFolder` is where the program's own files are. False
/// where the simulated unit is not there.
bool StartWithSimulatedUnit(const std::string& programFolder, const StoredSettings& own, const Language& language);

}  // namespace velk
