#pragma once

#include <string>
#include <vector>

#include "model/graph_window.h"
#include "model/session.h"
#include "platform/dialogs/dialogs.h"

namespace velk {

/// The names of the computed channels in order. Where two would read alike, all carry their number in front.
std::vector<std::string> RemovalEntries(const Session& session);

/// Removes the computed channel that the operator chooses, and rebuilds graph map and windows.
void mnuToolsRemove_Click(Session& session, Dialogs& dialogs, GraphWindows& graphs);

}  // namespace velk
