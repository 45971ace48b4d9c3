#include "platform/files/disk_room.h"

#include <sys/stat.h>
#include <sys/statvfs.h>

#include "platform/files/file_errors.h"

namespace velk {

double FileBytes(const std::string& path) {
  struct stat found = {};
  return stat(path.c_str(), &found) == 0 ? static_cast<double>(found.st_size) : 0;
}

std::optional<double> FreeBytes(const std::string& path) {
  struct statvfs disk = {};
  if (statvfs(FolderOf(path).c_str(), &disk) != 0) return std::nullopt;
  return static_cast<double>(disk.f_bavail) * static_cast<double>(disk.f_frsize);
}

}  // namespace velk
