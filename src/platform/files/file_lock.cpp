#include "platform/files/file_lock.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>

namespace velk {

namespace {

constexpr int kMostTries = 10;

/// Two names of one file have one lock.
std::string LockBeside(const std::string& path) {
  char* const real = realpath(path.c_str(), nullptr);
  const std::string beside = (real == nullptr ? path : std::string(real)) + "-lock";
  std::free(real);
  return beside;
}

std::string HostName() {
  char name[256] = {};
  return gethostname(name, sizeof name - 1) == 0 ? name : std::string();
}

struct flock WholeFile() {
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  return lock;
}

/// The holder before may have removed the name between our opening and our locking.
bool IsInPlace(int descriptor, const std::string& beside) {
  struct stat here {
  }, there{};
  return fstat(descriptor, &here) == 0 && stat(beside.c_str(), &there) == 0 && here.st_dev == there.st_dev &&
         here.st_ino == there.st_ino;
}

void WriteHolder(int descriptor) {
  const std::string line = std::to_string(getpid()) + " " + HostName() + "\n";
  // Only for a message: a lock that doesn't say whose it is holds all the same.
  if (ftruncate(descriptor, 0) != 0 || write(descriptor, line.data(), line.size()) < 0) return;
}

bool IsHeld(const std::string& beside) {
  const int descriptor = open(beside.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return false;
  struct flock lock = WholeFile();
  const bool held = fcntl(descriptor, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
  close(descriptor);
  return held;
}

}  // namespace

bool LockHolder::IsThisProgram() const {
  return process == std::to_string(getpid()) && host == HostName();
}

std::unique_ptr<FileLock> FileLock::Take(const std::string& path) {
  const std::string beside = LockBeside(path);
  for (int i = 0; i < kMostTries; ++i) {
    const int descriptor = open(beside.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (descriptor < 0) break;
    struct flock lock = WholeFile();
    if (fcntl(descriptor, F_OFD_SETLK, &lock) != 0) {
      const bool held = errno == EAGAIN || errno == EACCES;
      close(descriptor);
      if (held) return nullptr;
      unlink(beside.c_str());
      break;
    }
    if (IsInPlace(descriptor, beside)) {
      WriteHolder(descriptor);
      return std::unique_ptr<FileLock>(new FileLock(beside, descriptor));
    }
    close(descriptor);
  }
  if (IsHeld(beside)) return nullptr;
  return std::unique_ptr<FileLock>(new FileLock(beside, -1));
}

FileLock::~FileLock() {
  Release();
}

bool FileLock::Release() {
  if (descriptor_ < 0) return true;
  const bool stays = IsInPlace(descriptor_, beside_) && unlink(beside_.c_str()) != 0;
  close(descriptor_);
  descriptor_ = -1;
  return !stays;
}

bool FileLock::Guards(const std::string& path) const {
  return beside_ == LockBeside(path) && (descriptor_ < 0 || IsInPlace(descriptor_, beside_));
}

std::optional<LockHolder> FileLock::HolderOf(const std::string& path) {
  const std::string beside = LockBeside(path);
  if (!IsHeld(beside)) return std::nullopt;
  LockHolder holder;
  std::ifstream(beside) >> holder.process >> holder.host;
  return holder;
}

}  // namespace velk
