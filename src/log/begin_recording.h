#pragma once

#include <string>

#include "log/log_database.h"
#include "model/session.h"

namespace velk {

/// What Start, the button RecordToDB and the question at a page change have in common: makes the file where it is
/// missing, connects to it and notes it as LogFileInUse. After a failure it can be called again.
void BeginRecording(Session& session, LogDatabase& log, const std::string& path);

}  // namespace velk
