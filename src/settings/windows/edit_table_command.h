#pragma once

#include "i18n/windows/window_host.h"
#include "model/graph_window.h"
#include "model/session.h"
#include "platform/platform.h"

namespace velk {

/// Edits the parameters in their table and takes it over: CurrentParameters with what they came from, the graph windows
/// anew, the settings saved. Whoever calls it keeps the link still meanwhile.
void mnuEditTable_Click(WindowHost& host, Session& session, const Platform& platform, GraphWindows& graphs);

}  // namespace velk
