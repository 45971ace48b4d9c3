#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace velk::test {

/// A directory of its own that is gone at the end of the test.
class TemporaryDirectory {
 public:
  TemporaryDirectory() {
    std::string name = (std::filesystem::temp_directory_path() / "velk_test_XXXXXX").string();
    path_ = mkdtemp(name.data());
  }
  ~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  const std::string& Path() const { return path_; }
  std::string File(const std::string& name) const { return path_ + "/" + name; }
  /// Makes an empty file.
  std::string Touch(const std::string& name) const {
    const std::ofstream file(File(name));
    return File(name);
  }

 private:
  std::string path_;
};

}  // namespace velk::test
