#pragma once

#include <functional>
#include <string>
#include <vector>

#include "model/graph_window.h"
#include "model/session.h"
#include "platform/dialogs/dialogs.h"

namespace velk {

/// Lets the operator choose one of `entries`, which all differ and none of which is empty; empty on Cancel.
using ChooseEntry = std::function<std::string(const OperatorText& title, const OperatorText& prompt,
                                              const std::vector<std::string>& entries)>;

/// The names of the computed channels in order. Where two would read alike, all carry their number in front.
std::vector<std::string> RemovalEntries(const Session& session);

/// Removes the computed channel that the operator chooses, and rebuilds graph map and windows.
void mnuToolsRemove_Click(Session& session, Dialogs& dialogs, GraphWindows& graphs, const ChooseEntry& choose);

}  // namespace velk
