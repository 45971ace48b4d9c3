#pragma once

#include <functional>
#include <string>

#include "log/job_files.h"
#include "model/main_view.h"
#include "model/session.h"
#include "platform/platform.h"

namespace velk {

/// The names that a chosen one leads to.
struct RecordFileNames {
  std::string oldName;  ///< the file to append to, or to make where it does not exist
  std::string newName;  ///< the numbered file that can be made in its stead; empty where oldName does not exist
  bool oldExists = false;
};

/// A file that is not there is taken as chosen, with ".mdb" where it has no extension. Otherwise the file's name is cut
/// at its first "." and gets ".mdb"; the new name goes on counting behind its "#" ("run#7" leads to "run#8.mdb"), or
/// starts with "#1", up to the first number that is free.
RecordFileNames NamesFor(const std::string& chosen, const std::function<bool(const std::string&)>& exists);

/// The menu command: asks for the file of the next recording, and where it exists whether to append to it or to make a
/// numbered one. True when a file was chosen: it is then in CurrentFile, its folder in DefaultDirectory, PageCount is
/// 0, and in "Ready to Acquire" recording is switched on. Failures are shown in "Record to ... error".
bool mnuFileRecord_Click(Session& session, const Platform& platform, MainView& view, JobFiles& files);

}  // namespace velk
