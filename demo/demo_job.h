#pragma once

#include <string>

#include "platform/settings/settings.h"

namespace velk::demo {

/// Sets the store up for a simulated KESTA version 5 on a pseudo-terminal: 22 channels on four graphs.
/// `everySample` makes each line significant, however little it differs.
void SetUpStore(SettingsStore& settings, const std::string& device, bool everySample);

}  // namespace velk::demo
