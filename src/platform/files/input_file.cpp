#include "platform/files/input_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <utility>

#include "platform/files/file_errors.h"

namespace velk {

namespace {

/// A file without a name, which the system removes when it is closed.
int OpenNameless() {
  std::error_code error;
  std::string name = (std::filesystem::temp_directory_path(error) / "velk-XXXXXX").string();
  const int descriptor = mkostemp(name.data(), O_CLOEXEC);
  if (descriptor < 0) RaiseFileError(errno, name);
  unlink(name.c_str());
  return descriptor;
}

}  // namespace

InputFile::InputFile(std::string path) : path_(std::move(path)) {
  CheckRegularFile(path_, false);
  descriptor_ = open(path_.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor_ < 0) RaiseFileError(errno, path_);
  struct stat status {};
  if (fstat(descriptor_, &status) == 0) size_ = status.st_size;
}

InputFile::~InputFile() {
  close(descriptor_);
  if (copy_ >= 0) close(copy_);
}

std::size_t InputFile::Read(std::int64_t from, char* to, std::size_t count) const {
  std::size_t done = 0;
  while (done < count) {
    const ssize_t got = pread(descriptor_, to + done, count - done, from + static_cast<std::int64_t>(done));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) RaiseFileError(errno, path_);
    if (got == 0) break;
    done += static_cast<std::size_t>(got);
  }
  return done;
}

void InputFile::BeginCopy() {
  if (copy_ < 0) copy_ = OpenNameless();
}

void InputFile::Append(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(copy_, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) RaiseFileError(errno, path_);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

void InputFile::UseCopy() {
  std::swap(descriptor_, copy_);
  struct stat status {};
  if (fstat(descriptor_, &status) == 0) size_ = status.st_size;
}

}  // namespace velk
