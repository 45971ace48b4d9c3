#include "platform/files/output_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "platform/files/file_errors.h"

namespace velk {

OutputFile::OutputFile(const std::string& path) : path_(path), file_(path, NewFile::IfThere::Replace) {
  descriptor_ = open(file_.PartName().c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666);
  if (descriptor_ < 0) RaiseFileError(errno, path_);
}

OutputFile::~OutputFile() {
  if (descriptor_ >= 0) close(descriptor_);
}

void OutputFile::Flush() {
  std::string_view rest = buffer_;
  while (!rest.empty()) {
    const ssize_t written = write(descriptor_, rest.data(), rest.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) RaiseFileError(errno, path_);
    rest.remove_prefix(static_cast<std::size_t>(written));
  }
  buffer_.clear();
}

void OutputFile::Complete() {
  Flush();
  if (fsync(descriptor_) != 0) RaiseFileError(errno, path_);
  close(descriptor_);
  descriptor_ = -1;
  file_.Complete();
}

}  // namespace velk
