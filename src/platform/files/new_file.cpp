#include "platform/files/new_file.h"

#include <unistd.h>

#include <cerrno>

#include "platform/files/file_errors.h"

namespace velk {

namespace {

void RequireFreeName(const std::string& path) {
  for (const char* suffix : {"", "-wal", "-journal"})
    if (FileExists(path + suffix)) RaiseFileError(EEXIST, path + suffix);
}

}  // namespace

NewFile::NewFile(std::string path) : path_(std::move(path)) {
  RequireFreeName(path_);
  // A name of its own each time: a part that a killed program left behind is nobody's to write on.
  for (int number = 1; partName_.empty() || FileExists(partName_); ++number)
    partName_ = path_ + ".part" + std::to_string(number);
}

NewFile::~NewFile() {
  if (!partName_.empty()) unlink(partName_.c_str());
}

void NewFile::Complete() {
  RequireFreeName(path_);
  MoveIntoPlace(partName_, path_);
  partName_.clear();
}

void NewFile::Check(const std::string& path) {
  RequireFreeName(path);
  if (access(FolderOf(path).c_str(), W_OK | X_OK) != 0) RaiseFileError(errno, path);
}

}  // namespace velk
