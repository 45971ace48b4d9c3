#pragma once

#include <string>
#include <vector>

#include "log/log_row.h"
#include "model/session.h"

namespace velk {

// The session as the log sees it: channels 1 to NumberOfParameters, which are those that are recorded.

/// Their names, in order.
std::vector<std::string> ChannelNames(const Session& session);

/// Their present values as a row.
LogRow PresentRow(const Session& session, double time);

}  // namespace velk
