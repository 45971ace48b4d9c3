#include "platform/database/jet_copy.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include <array>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <optional>

namespace velk {

namespace {

namespace fs = std::filesystem;

constexpr std::time_t kKept = std::time_t{30} * 24 * 60 * 60;

std::string CacheFolder() {
  const char* cache = std::getenv("XDG_CACHE_HOME");
  const char* home = std::getenv("HOME");
  fs::path folder =
      cache != nullptr && *cache == '/' ? fs::path(cache) : fs::path(home == nullptr ? "/tmp" : home) / ".cache";
  folder /= "VELK";
  std::error_code error;
  fs::create_directories(folder, error);
  return folder.string();
}

/// A number of the path, wherever it is looked at from (FNV-1a).
std::string PathNumber(const std::string& path) {
  std::error_code error;
  const fs::path real = fs::canonical(path, error);
  std::uint64_t number = 0xcbf29ce484222325U;
  for (const char byte : error ? path : real.string())
    number = (number ^ static_cast<unsigned char>(byte)) * 0x100000001b3U;
  std::array<char, 24> text{};
  std::snprintf(text.data(), text.size(), "%016" PRIx64, number);
  return text.data();
}

/// What stands behind the marks of such a database; nothing in any other file. A file may end there.
std::optional<char> VersionIn(sqlite3* handle) {
  constexpr char kVersion3 = 0;
  sqlite3_file* file = nullptr;
  if (sqlite3_file_control(handle, "main", SQLITE_FCNTL_FILE_POINTER, static_cast<void*>(&file)) != SQLITE_OK ||
      file == nullptr || file->pMethods == nullptr)
    return std::nullopt;
  std::array<char, 20> head{};
  if (file->pMethods->xRead(file, head.data(), head.size(), 0) != SQLITE_OK ||
      std::memcmp(head.data(), "\0\1\0\0Standard ", 13) != 0 ||
      (std::memcmp(&head[13], "Jet DB", 6) != 0 && std::memcmp(&head[13], "ACE DB", 6) != 0))
    return std::nullopt;
  char version = kVersion3;
  const auto place = static_cast<sqlite3_int64>(head.size());
  return file->pMethods->xRead(file, &version, 1, place) == SQLITE_OK ? version : kVersion3;
}

std::optional<char> VersionOf(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  sqlite3* handle = nullptr;
  const int code = sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
  const std::optional<char> version = code == SQLITE_OK ? VersionIn(handle) : std::nullopt;
  sqlite3_close_v2(handle);
  return version;
}

}  // namespace

bool HoldsJetFile(sqlite3* handle) {
  return VersionIn(handle).has_value();
}

bool IsJetFile(const std::string& path) {
  return VersionOf(path).has_value();
}

bool IsJet3File(const std::string& path) {
  return VersionOf(path) == '\0';
}

std::string JetCopyOf(const std::string& path) {
  struct stat status {};
  stat(path.c_str(), &status);
  return CacheFolder() + "/" + PathNumber(path) + "-" + std::to_string(status.st_size) + "-" +
         std::to_string(status.st_mtim.tv_sec) + "." + std::to_string(status.st_mtim.tv_nsec) + ".mdb";
}

void ClearJetCopies(const std::string& path) {
  const std::string own = PathNumber(path) + "-";
  const std::string present = fs::path(JetCopyOf(path)).filename().string();
  const std::time_t now = std::time(nullptr);
  std::error_code error;
  for (fs::directory_iterator entry(CacheFolder(), error), end; !error && entry != end; entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    struct stat status {};
    if (name.starts_with(present) || stat(entry->path().c_str(), &status) != 0 || !S_ISREG(status.st_mode)) continue;
    std::error_code ignored;
    if (name.starts_with(own) || now - status.st_mtim.tv_sec > kKept) fs::remove(entry->path(), ignored);
  }
}

void TouchJetCopy(const std::string& copy) {
  utimensat(AT_FDCWD, copy.c_str(), nullptr, 0);
}

}  // namespace velk
