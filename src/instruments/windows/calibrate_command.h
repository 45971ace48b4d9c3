#pragma once

#include <functional>

#include "i18n/windows/window_host.h"
#include "instruments/link/link.h"
#include "model/main_timers.h"
#include "model/main_view.h"
#include "model/session.h"
#include "platform/platform.h"

namespace velk {

/// Calibrates input channels by references. What was found holds at once and is in the configuration when the window is
/// closed; `keep` saves it then.
void mnuToolsCalibrate_Click(WindowHost& host, Session& session, const Platform& platform, MainView& view, Link& link,
                             MainTimers& timers, const std::function<void()>& keep);

}  // namespace velk
