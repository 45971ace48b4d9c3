#pragma once

#include <functional>

#include "i18n/windows/window_host.h"
#include "instruments/unit/unit_talk.h"

namespace velk {

/// Reads the table of settings from the session's own unit and edits it in a window; its tools open from there. Each
/// failure is told in one box, with the unit back in run mode and the link as it was.
void mnuToolsOrbenHardware_Click(WindowHost& host, const UnitAccess& unit, const std::function<void()>& beep);

}  // namespace velk
