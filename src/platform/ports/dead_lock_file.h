#pragma once

#include <string>

namespace velk {

/// Removes the lock file of a device (LCK..ttyUSB0) whose holder is dead: it was killed and is not cleared away yet, or
/// its number belongs to a program by now that is younger than the lock and doesn't hold the device. Gives whether one
/// was removed. Where nobody can tell, as of another user's program, the lock stays.
bool RemoveDeadLockFile(const std::string& device);

/// Whether the lock file of a device says that another program, of any user, has it, and that one is not dead.
bool IsLockedByAnother(const std::string& device);

}  // namespace velk
