#include "platform/files/file_errors.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace velk {

namespace {

/// Renames unless the new name is taken, on file systems that know how; else as two steps.
int RenameToFreeName(const char* from, const char* to) {
  if (renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0) return 0;
  if (errno != EINVAL && errno != ENOSYS) return -1;
  if (access(to, F_OK) == 0) {
    errno = EEXIST;
    return -1;
  }
  return rename(from, to);
}

/// A new name survives a power cut only when its folder is flushed too.
bool FlushFolder(const std::string& folder) {
  const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return false;
  const bool flushed = fsync(descriptor) == 0;
  close(descriptor);
  return flushed;
}

}  // namespace

ErrorNumber FileErrorNumber(int systemError) {
  switch (systemError) {
    case ENOENT:
      return ErrorNumber::FileNotFound;
    case ENOTDIR:
      return ErrorNumber::PathNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
      return ErrorNumber::PermissionDenied;
    case EEXIST:
      return ErrorNumber::FileAlreadyExists;
    case ENOSPC:
    case EFBIG:
    case EDQUOT:
      return ErrorNumber::DiskFull;
    case ENAMETOOLONG:
    case EISDIR:
    case EINVAL:
      return ErrorNumber::BadFileName;
    default:
      return ErrorNumber::DeviceIOError;
  }
}

OperatorText FileErrorText(ErrorNumber number, const std::string& path) {
  return ErrorText(number) + ": " + path;
}

void RaiseFileError(int systemError, const std::string& path) {
  ErrorNumber number = FileErrorNumber(systemError);
  if (number == ErrorNumber::FileNotFound && !FileExists(FolderOf(path))) number = ErrorNumber::PathNotFound;
  throw RuntimeError(number, FileErrorText(number, path));
}

void CheckRegularFile(const std::string& path, bool create) {
  if (path.empty() || path.find('\0') != std::string::npos) RaiseFileError(EINVAL, path);
  if (create) {
    const int descriptor = open(path.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, 0666);
    if (descriptor < 0) RaiseFileError(errno, path);
    close(descriptor);
    return;
  }
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) RaiseFileError(errno, path);
  if (!S_ISREG(status.st_mode)) RaiseFileError(EISDIR, path);
}

bool FileExists(const std::string& path) {
  struct stat status {};
  return lstat(path.c_str(), &status) == 0;
}

std::string FolderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

bool MoveIntoPlace(const std::string& from, const std::string& to) {
  if (RenameToFreeName(from.c_str(), to.c_str()) != 0) RaiseFileError(errno, to);
  return FlushFolder(FolderOf(to));
}

bool MoveOver(const std::string& from, const std::string& to) {
  if (rename(from.c_str(), to.c_str()) != 0) RaiseFileError(errno, to);
  return FlushFolder(FolderOf(to));
}

}  // namespace velk
