#pragma once

#include <string>
#include <string_view>

#include "platform/files/new_file.h"

namespace velk {

/// A file of any length that is written from the front to the end. It is made under another name and takes its own when
/// it is complete, in the place of what stands there; given up before, it is removed.
class OutputFile {
 public:
  /// Raises PathNotFound, PermissionDenied, DiskFull with the path, as all of it does.
  explicit OutputFile(const std::string& path);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  void Put(std::string_view text) {
    buffer_ += text;
    if (buffer_.size() >= kBuffer) Flush();
  }
  /// All of it is on the disk under its name.
  void Complete();

 private:
  static constexpr std::size_t kBuffer = 256 * 1024;
  void Flush();

  const std::string path_;
  NewFile file_;
  int descriptor_ = -1;
  std::string buffer_;
};

}  // namespace velk
