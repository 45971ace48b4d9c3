#include "platform/ports/dead_lock_file.h"

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>

namespace velk {

namespace {

namespace fs = std::filesystem;

/// Where lock files of devices are kept, by custom.
constexpr const char* kLockFolders[] = {"/run/lock",       "/var/lock",         "/etc/locks", "/var/spool/locks",
                                        "/var/spool/uucp", "/var/lock/lockdev", "/var/tmp",   "/tmp"};

/// "LCK..ttyUSB0", "LCK..pts_3".
std::string LockFileName(const std::string& device) {
  constexpr std::string_view kFolder = "/dev/";
  std::string name = device.starts_with(kFolder) ? device.substr(kFolder.size()) : device;
  std::replace(name.begin(), name.end(), '/', '_');
  return "LCK.." + name;
}

/// Ended, but nobody has asked how yet: it keeps its number and nothing else.
bool HasEnded(const std::string& process) {
  std::ifstream stream(process + "/stat");
  std::string text;
  std::getline(stream, text);
  // The state stands behind the program's name, which is in brackets and may hold some itself.
  const std::size_t name = text.rfind(") ");
  return name != std::string::npos && name + 2 < text.size() && (text[name + 2] == 'Z' || text[name + 2] == 'X');
}

/// True where nobody can tell.
bool MayHold(const std::string& process, const std::string& device) {
  std::error_code error;
  for (fs::directory_iterator entry(process + "/fd", error), end; !error && entry != end; entry.increment(error)) {
    std::error_code gone;
    if (fs::read_symlink(entry->path(), gone) == device) return true;
  }
  return static_cast<bool>(error);
}

bool IsDead(const std::string& lockFile, const std::string& device) {
  long number = 0;
  if (!(std::ifstream(lockFile) >> number) || number <= 0) return false;
  if (kill(static_cast<pid_t>(number), 0) != 0 && errno == ESRCH) return true;
  const std::string process = "/proc/" + std::to_string(number);
  return HasEnded(process) || !MayHold(process, device);
}

}  // namespace

bool RemoveDeadLockFile(const std::string& device) {
  bool removed = false;
  for (const char* folder : kLockFolders) {
    const std::string lockFile = std::string(folder) + "/" + LockFileName(device);
    if (access(lockFile.c_str(), F_OK) == 0 && IsDead(lockFile, device))
      removed = unlink(lockFile.c_str()) == 0 || removed;
  }
  return removed;
}

}  // namespace velk
