#include "platform/ports/dead_lock_file.h"

#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <vector>

#include "base/numbers.h"

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

/// What the system tells of a process behind its name, which stands in brackets and may hold some itself: from its
/// state on.
std::vector<std::string> FieldsOf(const std::string& process) {
  std::ifstream stream(process + "/stat");
  std::string text;
  std::getline(stream, text);
  const std::size_t name = text.rfind(") ");
  if (name == std::string::npos) return {};
  std::istringstream fields(text.substr(name + 2));
  return {std::istream_iterator<std::string>(fields), {}};
}

/// Ended, but nobody has asked how yet: it keeps its number and nothing else.
bool HasEnded(const std::vector<std::string>& fields) {
  return !fields.empty() && (fields[0] == "Z" || fields[0] == "X");
}

double SecondsOf(const timespec& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

double SecondsOf(clockid_t clock) {
  timespec now{};
  clock_gettime(clock, &now);
  return SecondsOf(now);
}

/// Whether the process is younger than the lock, which another one has written that had its number before.
bool StartedBehind(const std::vector<std::string>& fields, const std::string& lockFile) {
  constexpr std::size_t kStart = 19;  // in ticks since the machine's start
  constexpr double kSameMoment = 1;   // seconds
  struct stat status {};
  if (fields.size() <= kStart || stat(lockFile.c_str(), &status) != 0) return false;
  const double start = Val(fields[kStart]) / static_cast<double>(sysconf(_SC_CLK_TCK));
  const double age = SecondsOf(CLOCK_BOOTTIME) - start;
  return age + kSameMoment < SecondsOf(CLOCK_REALTIME) - SecondsOf(status.st_mtim);
}

/// Whether it has the device open, or one of that name that was unplugged meanwhile. True where nobody can tell.
bool MayHold(const std::string& process, const std::string& device) {
  std::error_code error;
  for (fs::directory_iterator entry(process + "/fd", error), end; !error && entry != end; entry.increment(error)) {
    std::error_code gone;
    const fs::path open = fs::read_symlink(entry->path(), gone);
    if (open == device || open == device + " (deleted)") return true;
  }
  return static_cast<bool>(error);
}

/// The process that has written the lock; 0 where it names none.
long HolderOf(const std::string& lockFile) {
  long number = 0;
  return std::ifstream(lockFile) >> number && number > 0 ? number : 0;
}

/// A living holder may be about to open the device, or between two tries: then only its age tells whether the lock is
/// its own.
bool IsDead(const std::string& lockFile, const std::string& device) {
  const long number = HolderOf(lockFile);
  if (number == 0) return false;
  if (kill(static_cast<pid_t>(number), 0) != 0 && errno == ESRCH) return true;
  const std::string process = "/proc/" + std::to_string(number);
  const std::vector<std::string> fields = FieldsOf(process);
  return HasEnded(fields) || (StartedBehind(fields, lockFile) && !MayHold(process, device));
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

bool IsLockedByAnother(const std::string& device) {
  return std::any_of(std::begin(kLockFolders), std::end(kLockFolders), [&](const char* folder) {
    const std::string lockFile = std::string(folder) + "/" + LockFileName(device);
    const long holder = HolderOf(lockFile);
    return holder != 0 && holder != getpid() && !IsDead(lockFile, device);
  });
}

}  // namespace velk
