#pragma once

#include <memory>
#include <string>

#include "platform/files/file_lock.h"

namespace velk {

/// Raises FileAlreadyOpen, with the holder, where another program records to the log. Reading it is nobody's harm.
void CheckNotRecordedElsewhere(const std::string& path);

/// The lock of a recording; raises as above.
std::unique_ptr<FileLock> LockForRecording(const std::string& path);

}  // namespace velk
