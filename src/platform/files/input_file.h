#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace velk {

/// A file that is read piece by piece, wherever: how long it is doesn't matter.
class InputFile {
 public:
  /// Raises what keeps the file from being read, the path with it.
  explicit InputFile(std::string path);
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  const std::string& Path() const { return path_; }
  std::int64_t Size() const { return size_; }

  /// Reads up to `count` bytes from a place on; fewer at the end of the file only. Raises DeviceIOError.
  std::size_t Read(std::int64_t from, char* to, std::size_t count) const;

  /// Goes over to a copy of the file that is in no folder and goes with this object: empty at first, it grows by
  /// Append. Raises what keeps it from being made, DiskFull too.
  void BeginCopy();
  void Append(std::string_view bytes);
  /// From here on Read gives the copy.
  void UseCopy();

 private:
  std::string path_;
  int descriptor_ = -1;
  int copy_ = -1;
  std::int64_t size_ = 0;
};

}  // namespace velk
