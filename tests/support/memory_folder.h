#pragma once

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace velk::test {

/// A folder of its own for a test, in memory where the system offers that: hundreds of safely written files then cost
/// no wait for the disk. Its files are written and read as bytes.
class MemoryFolder {
 public:
  std::string Path(std::string_view name = {}) const {
    const std::string folder = folder_.path().toStdString();
    return name.empty() ? folder : folder + '/' + std::string(name);
  }

  void Write(std::string_view name, std::string_view bytes) const {
    std::ofstream(Path(name), std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }

  std::string Read(std::string_view name) const {
    std::ifstream file(Path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  bool Has(std::string_view name) const { return std::filesystem::exists(Path(name)); }

  void Remove(std::string_view name) const { std::filesystem::remove_all(Path(name)); }

  /// How many files and folders it holds.
  std::size_t Count() const {
    const std::filesystem::directory_iterator files(Path());
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
  }

 private:
  static QString Template() {
    const QString memory = QStringLiteral("/dev/shm");
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + QStringLiteral("/velk-test-XXXXXX");
  }

  QTemporaryDir folder_{Template()};
};

}  // namespace velk::test
