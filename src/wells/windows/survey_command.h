#pragma once

#include <functional>
#include <string>

#include "i18n/windows/window_host.h"
#include "platform/platform.h"
#include "wells/well.h"

namespace velk {

/// Takes the operator's own units from the settings, ahead of a window that shows depths.
void TakeUserUnits(Well& well, const Platform& platform);

/// Opens the editor of the survey; OK takes the survey and its path over. Files are looked for in `directory` first.
void mnuToolsSurvey_Click(WindowHost& host, Well& well, const Platform& platform, const std::string& directory,
                          const std::function<void()>& beep);

}  // namespace velk
