#include "platform/database/index_room.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>

#include "base/errors.h"
#include "platform/files/file_errors.h"
#include "platform/texts.h"

namespace velk {

namespace {

constexpr std::int64_t kIndexBlock = 32 * 1024;  ///< what the engine adds to the index at a time
constexpr std::int64_t kFramesOfABlock = 4096;   ///< pages of the log that a block lists, 34 fewer in the first one
constexpr std::int64_t kFirstBlockLacks = 34;
constexpr std::int64_t kFrameHead = 24;       ///< bytes of the log in front of each page
constexpr std::int64_t kReserve = 64 * 1024;  ///< for the blocks that list blocks, and for who else writes
constexpr std::int64_t kKilobyte = 1024;

/// How many pages a write-ahead log holds. Its header has the size of a page at byte 8, the highest digit first.
std::int64_t FramesOf(const std::string& log) {
  const int descriptor = open(log.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return 0;
  struct stat status {};
  unsigned char size[4] = {};
  const bool read = fstat(descriptor, &status) == 0 && pread(descriptor, size, sizeof size, 8) == sizeof size;
  close(descriptor);
  if (!read) return 0;
  const std::int64_t page = (size[0] << 24) | (size[1] << 16) | (size[2] << 8) | size[3];
  return page <= 0 ? 0 : status.st_size / (page + kFrameHead);
}

std::int64_t NeededBytes(const std::string& log) {
  return (FramesOf(log) + kFirstBlockLacks) / kFramesOfABlock * kIndexBlock + kIndexBlock + kReserve;
}

/// 0, or what the system said when it was asked for so many bytes.
int Reserve(const std::string& log, std::int64_t bytes) {
  const std::string file = log + "-room";
  const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (descriptor < 0) return errno;
  const int error = posix_fallocate(descriptor, 0, bytes);
  close(descriptor);
  unlink(file.c_str());
  return error;
}

bool MeansNoRoom(int systemError) {
  return FileErrorNumber(systemError) == ErrorNumber::DiskFull;
}

/// What of `needed` bytes is not there, in KiB; all of it where it is a quota or a limit that says no.
std::int64_t MissingKilobytes(const std::string& path, std::int64_t needed) {
  struct statvfs disk {};
  if (statvfs(FolderOf(path).c_str(), &disk) != 0) return needed / kKilobyte;
  const auto blocks = geteuid() == 0 ? disk.f_bfree : disk.f_bavail;
  const auto free = static_cast<std::int64_t>(blocks * disk.f_frsize);
  const std::int64_t missing = free < needed ? needed - free : needed;
  return std::max<std::int64_t>(1, (missing + kKilobyte - 1) / kKilobyte);
}

}  // namespace

void RequireRoomForIndex(const std::string& database, const std::string& log) {
  const std::int64_t needed = NeededBytes(log);
  if (!MeansNoRoom(Reserve(log, needed))) return;
  throw RuntimeError(ErrorNumber::DiskFull, text::NoRoomBefore + database + text::NoRoomMissing +
                                                std::to_string(MissingKilobytes(log, needed)) + text::NoRoomAfter);
}

}  // namespace velk
