#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace velk::test {

/// A folder of a test's own, removed with all that is in it.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "velk-XXXXXX").string();
    path_ = mkdtemp(name.data());
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  std::string File(const std::string& name) const { return (path_ / name).string(); }
  /// Makes an empty file.
  std::string Touch(const std::string& name) const {
    const std::ofstream file(File(name));
    return File(name);
  }

 private:
  std::filesystem::path path_;
};

}  // namespace velk::test
