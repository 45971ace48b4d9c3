#include "log/begin_recording.h"

#include "platform/files/file_errors.h"

namespace velk {

void BeginRecording(Session& session, JobFiles& files, LogWriter& log, const std::string& path) {
  if (!FileExists(path)) {
    files.AskForNewFile(path);
    log.CreateLogFile(path);
  }
  log.ConnectLogFile(path);
  session.LogFileInUse = path;
}

}  // namespace velk
