#pragma once

#include <string>

namespace velk {

class SettingsStore;

/// Settings of a new program for a simulated KESTA version 5 behind `device`: some channels on two graphs.
void SetUpForSimulatedUnit(SettingsStore& settings, const std::string& device);

/// Starts a VELK of its own beside this one, with a simulated unit behind a pseudo-terminal and with settings of its
/// own, which go with it; the operator's stay untouched. `programFolder` is where the program's own files are. False
/// where the simulated unit is not there.
bool StartWithSimulatedUnit(const std::string& programFolder);

}  // namespace velk
