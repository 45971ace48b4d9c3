#include "platform/files/new_file.h"

#include <unistd.h>

#include <cerrno>

#include "platform/files/file_errors.h"

namespace velk {

NewFile::NewFile(std::string path) : path_(std::move(path)) {
  RequireFreeName();
  // A name of its own each time: a part that a killed program left behind is nobody's to write on.
  for (int number = 1; partName_.empty() || FileExists(partName_); ++number)
    partName_ = path_ + ".part" + std::to_string(number);
}

NewFile::~NewFile() {
  if (!partName_.empty()) unlink(partName_.c_str());
}

void NewFile::Complete() {
  RequireFreeName();
  MoveIntoPlace(partName_, path_);
  partName_.clear();
}

void NewFile::RequireFreeName() const {
  for (const char* suffix : {"", "-wal", "-journal"})
    if (FileExists(path_ + suffix)) RaiseFileError(EEXIST, path_ + suffix);
}

}  // namespace velk
