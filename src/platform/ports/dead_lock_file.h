#pragma once

#include <string>

namespace velk {

/// Removes the lock file of a device (LCK..ttyUSB0) whose holder doesn't hold the device: it was killed and is not
/// cleared away yet, or its number belongs to another program by now. Gives whether one was removed. Where nobody can
/// tell, as of another user's program, the lock stays.
bool RemoveDeadLockFile(const std::string& device);

}  // namespace velk
