#include "platform/settings/settings_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <QFile>
#include <QSaveFile>
#include <algorithm>
#include <cctype>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <vector>

#include "base/errors.h"
#include "platform/files/file_errors.h"
#include "platform/settings/ini_quoting.h"
#include "platform/texts.h"

namespace velk {

namespace {

namespace fs = std::filesystem;

/// Far beyond any real settings file; more would only fill the memory.
constexpr std::int64_t kMaxFileSize = 16 << 20;
/// Long lists of what is damaged end in "...".
constexpr std::size_t kMostTold = 10;

ErrorNumber NumberOf(const QFileDevice& file) {
  ErrorNumber number = ErrorNumber::DeviceIOError;
  if (file.error() == QFileDevice::ResourceError) number = ErrorNumber::DiskFull;
  if (file.error() == QFileDevice::OpenError || file.error() == QFileDevice::PermissionsError) {
    number = ErrorNumber::PermissionDenied;
  }
  return number;
}

OperatorText TextOf(const QFileDevice& file) {
  return SystemText(NumberOf(file), file.errorString().toStdString());
}

[[noreturn]] void FailFile(const QFileDevice& file, const std::string& path) {
  throw RuntimeError(NumberOf(file), path + ": " + TextOf(file));
}

[[noreturn]] void FailFile(const std::error_code& error, const std::string& path) {
  const bool denied = error == std::errc::permission_denied || error == std::errc::read_only_file_system;
  const ErrorNumber number = denied ? ErrorNumber::PermissionDenied : ErrorNumber::PathNotFound;
  throw RuntimeError(number, path + ": " + SystemText(number, error.message()));
}

/// Forces what was written on the disk.
void Sync(QFileDevice& file, const std::string& path) {
  if (!file.flush()) FailFile(file, path);
  if (::fsync(file.handle()) != 0) {
    const std::error_code error(errno, std::generic_category());
    const bool full = error == std::errc::no_space_on_device;
    const ErrorNumber number = full ? ErrorNumber::DiskFull : ErrorNumber::DeviceIOError;
    throw RuntimeError(number, path + ": " + SystemText(number, error.message()));
  }
}

/// Forces a new name of a file on the disk. Some file systems can't; the file itself is safe by then.
void SyncDirectory(const std::string& directory) {
  const int handle = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0) return;
  ::fsync(handle);
  ::close(handle);
}

void WriteAll(QFileDevice& file, std::string_view bytes, const std::string& path) {
  const auto size = static_cast<qint64>(bytes.size());
  if (file.write(bytes.data(), size) != size) FailFile(file, path);
  Sync(file, path);
}

/// "3, 5 to 9" for 3 5 6 7 8 9; long lists end in "...".
OperatorText Ranges(const std::vector<int>& numbers) {
  OperatorText text;
  std::size_t ranges = 0;
  for (std::size_t first = 0; first < numbers.size();) {
    if (++ranges > kMostTold) return text + ", ...";
    std::size_t last = first;
    while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1) ++last;
    if (!text.IsEmpty()) text += ", ";
    text += std::to_string(numbers[first]);
    if (last > first) text += text::BadLinesUpTo + std::to_string(numbers[last]);
    first = last + 1;
  }
  return text;
}

/// "[General], [Parameter1]".
std::string Headers(const std::vector<std::string>& sections) {
  std::string text;
  for (std::size_t i = 0; i < sections.size(); ++i) {
    if (i > 0) text += ", ";
    if (i == kMostTold) return text + "...";
    text += HeaderText(sections[i]);
  }
  return text;
}

OperatorText BadLinesText(const std::vector<int>& lines) {
  if (lines.size() == 1) return text::BadLineBefore + Ranges(lines) + text::BadLineAfter;
  return text::BadLinesBefore + Ranges(lines) + text::BadLinesAfter;
}

/// What puts values of a file that could be read in doubt.
std::vector<OperatorText> Damages(const IniFile& ini, const std::string& bytes) {
  std::vector<OperatorText> parts;
  if (bytes.empty()) parts.emplace_back(text::FileEmpty);
  if (!ini.BadLines().empty()) parts.push_back(BadLinesText(ini.BadLines()));
  if (ini.IsCutOff()) parts.emplace_back(text::FileEndMissing);
  if (const std::vector<std::string>& changed = ini.ChangedSections(); !changed.empty()) {
    parts.push_back(Headers(changed) +
                    OperatorText(changed.size() == 1 ? text::SectionChanged : text::SectionsChanged));
  }
  if (const int missing = ini.MissingSections(); missing > 0) {
    parts.push_back(text::SectionsMissing + std::to_string(missing));
  }
  return parts;
}

OperatorText Joined(const std::vector<OperatorText>& parts) {
  OperatorText text;
  for (const OperatorText& part : parts) text += OperatorText(text.IsEmpty() ? "" : ", ") + part;
  return text;
}

/// Why the bytes of an existing file can't be had; empty where they can.
OperatorText ReadBytes(const std::string& path, std::string& bytes, bool& exists) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  exists = status.type() != fs::file_type::not_found;
  if (!exists) return {};
  if (status.type() == fs::file_type::directory) return text::FileIsDirectory;
  if (error) return SystemText(FileErrorNumber(error.value()), error.message());
  if (status.type() != fs::file_type::regular) return text::FileIsNone;
  QFile file(QFile::decodeName(path.c_str()));
  if (!file.open(QIODevice::ReadOnly)) return TextOf(file);
  if (file.size() > kMaxFileSize) return text::FileTooLarge;
  bytes = file.readAll().toStdString();
  return file.error() == QFileDevice::NoError ? OperatorText() : TextOf(file);
}

/// The n-th name under which a file is put aside.
std::string NameAside(const std::string& path, int number) {
  return path + ".damaged" + (number > 1 ? "-" + std::to_string(number) : "");
}

bool HasBytes(const std::string& path, const std::string& bytes) {
  std::string present;
  bool exists = false;
  return ReadBytes(path, present, exists).IsEmpty() && exists && present == bytes;
}

/// Writes the bytes under the first free name; gives it, or that of an earlier copy that is alike.
std::string CopyAside(const SettingsFile& file) {
  for (int number = 1;; ++number) {
    std::string name = NameAside(file.path, number);
    if (HasBytes(name, file.bytes)) return name;
    QFile copy(QFile::decodeName(name.c_str()));
    if (copy.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
      WriteAll(copy, file.bytes, name);
      return name;
    }
    std::error_code none;
    if (!fs::exists(fs::symlink_status(name, none))) FailFile(copy, name);
  }
}

std::string MoveAside(const SettingsFile& file) {
  int number = 1;
  std::error_code error;
  while (fs::exists(fs::symlink_status(NameAside(file.path, number), error))) ++number;
  std::string name = NameAside(file.path, number);
  fs::rename(file.path, name, error);
  if (error) FailFile(error, file.path);
  return name;
}

void Replace(const std::string& path, const std::string& text) {
  QSaveFile file(QFile::decodeName(path.c_str()));
  if (!file.open(QIODevice::WriteOnly)) FailFile(file, path);
  WriteAll(file, text, path);
  if (!file.commit()) FailFile(file, path);
}

/// Whether this is the name of a new file on its way to the place of `target`: six letters stand behind that.
bool IsOnItsWay(const std::string& name, const std::string& target) {
  constexpr std::size_t kLetters = 6;
  if (name.size() != target.size() + 1 + kLetters || !name.starts_with(target + '.')) return false;
  return std::all_of(name.end() - kLetters, name.end(), [](unsigned char letter) { return std::isalpha(letter) != 0; });
}

/// A program that is killed while it replaces the file may leave the new one under another name. Nobody takes an hour
/// for that, so an old one belongs to nobody.
void RemoveLeftOvers(const fs::path& path) {
  std::error_code none;
  for (fs::directory_iterator entry(path.parent_path(), none), end; entry != end; entry.increment(none)) {
    if (!IsOnItsWay(entry->path().filename().string(), path.filename().string())) continue;
    const auto written = fs::last_write_time(entry->path(), none);
    if (!none && fs::file_time_type::clock::now() - written > std::chrono::hours(1)) fs::remove(entry->path(), none);
  }
}

}  // namespace

SettingsFile ReadSettingsFile(const std::string& path) {
  SettingsFile file;
  file.path = path;
  OperatorText lost = ReadBytes(path, file.bytes, file.exists);
  file.readable = file.whole = lost.IsEmpty();
  if (file.exists && file.readable) {
    file.ini = IniFile(file.bytes);
    std::vector<OperatorText> damages = Damages(file.ini, file.bytes);
    file.whole = damages.empty();
    if (file.ini.IsLastLineOpen()) damages.emplace_back(text::FileLastLineOpen);
    lost = Joined(damages);
  }
  if (!lost.IsEmpty()) file.lost = path + ": " + lost;
  return file;
}

std::string PutAside(SettingsFile& file) {
  file.keep = true;
  if (file.aside.empty() && file.exists) file.aside = file.readable ? CopyAside(file) : MoveAside(file);
  return file.aside;
}

void WriteSettingsFile(SettingsFile& file) {
  std::error_code error;
  const fs::path directory = fs::path(file.path).parent_path();
  fs::create_directories(directory, error);
  if (error) FailFile(error, directory.string());
  if (file.keep || !file.lost.IsEmpty()) PutAside(file);
  const bool holds = !file.ini.IsEmpty();
  const std::string text = holds ? file.ini.Text() : std::string();
  if (holds) {
    Replace(file.path, text);
  } else {
    fs::remove(file.path, error);
    if (error) FailFile(error, file.path);
  }
  RemoveLeftOvers(file.path);
  SyncDirectory(directory.string());
  file.exists = holds;
  file.changed = false;
  file.readable = true;
  file.keep = false;
  file.lost = {};
  file.whole = true;
  file.bytes = text;
  file.aside.clear();
}

}  // namespace velk
