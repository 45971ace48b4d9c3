#pragma once

#include <functional>
#include <string>

#include "i18n/windows/window_host.h"
#include "platform/platform.h"
#include "wells/well.h"

namespace velk {

/// Takes the operator's own units from the settings, ahead of a window that shows depths.
void TakeUserUnits(Well& well, const Platform& platform);

/// Opens the editor of the survey; OK takes the survey and its path over, but not while `isLive` says that a live
/// survey makes them. Files are looked for in `directory` first.
void mnuToolsSurvey_Click(WindowHost& host, Well& well, const Platform& platform, const std::string& directory,
                          const std::function<void()>& beep, const std::function<bool()>& isLive);

}  // namespace velk
