#pragma once

#include <string>

#include "log/job_files.h"
#include "log/log_writer.h"
#include "model/session.h"

namespace velk {

/// What Start, the button RecordToDB and the question at a page change have in common: asks for what a new file gets
/// and makes it where it is missing, connects to it and notes it as LogFileInUse. After a failure it can be called
/// again.
void BeginRecording(Session& session, JobFiles& files, LogWriter& log, const std::string& path);

}  // namespace velk
