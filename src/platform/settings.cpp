#include "platform/settings.h"

#include <fcntl.h>
#include <unistd.h>

#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>
#include <cerrno>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <map>
#include <system_error>
#include <utility>

#include "platform/errors.h"
#include "platform/ini_file.h"

namespace velk {

namespace {

namespace fs = std::filesystem;

/// Far beyond any real settings file; more would only fill the memory.
constexpr std::int64_t kMaxFileSize = 16 << 20;

/// The application as a file name: bytes that a file name can't hold, a leading point, and "%" itself become %HH.
std::string FileName(std::string_view application) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  std::string name;
  for (const char character : application) {
    const auto byte = static_cast<unsigned char>(character);
    const bool leadingPoint = character == '.' && name.empty();
    if (byte < 0x20 || byte == 0x7F || character == '/' || character == '%' || leadingPoint) {
      ((name += '%') += kHex[byte >> 4]) += kHex[byte & 15];
    } else {
      name += character;
    }
  }
  return (name.empty() ? "%" : name) + ".ini";
}

/// What a file name may have less the ending of a new file that is not in its place yet, or of one that was put aside.
constexpr std::size_t kMaxFileName = 255 - std::string_view(".damaged-9999999").size();

[[noreturn]] void FailFile(const QFileDevice& file, const std::string& path) {
  ErrorNumber number = ErrorNumber::DeviceIOError;
  if (file.error() == QFileDevice::ResourceError) number = ErrorNumber::DiskFull;
  if (file.error() == QFileDevice::OpenError || file.error() == QFileDevice::PermissionsError) {
    number = ErrorNumber::PermissionDenied;
  }
  throw RuntimeError(number, path + ": " + file.errorString().toStdString());
}

[[noreturn]] void FailFile(const std::error_code& error, const std::string& path) {
  const bool denied = error == std::errc::permission_denied || error == std::errc::read_only_file_system;
  throw RuntimeError(denied ? ErrorNumber::PermissionDenied : ErrorNumber::PathNotFound, path + ": " + error.message());
}

/// Forces what was written on the disk.
void Sync(QFileDevice& file, const std::string& path) {
  if (!file.flush()) FailFile(file, path);
  if (::fsync(file.handle()) != 0) {
    const std::error_code error(errno, std::generic_category());
    const bool full = error == std::errc::no_space_on_device;
    throw RuntimeError(full ? ErrorNumber::DiskFull : ErrorNumber::DeviceIOError, path + ": " + error.message());
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
std::string Ranges(const std::vector<int>& numbers) {
  constexpr int kMostRanges = 10;
  std::string text;
  int ranges = 0;
  for (std::size_t first = 0; first < numbers.size();) {
    if (++ranges > kMostRanges) return text + ", ...";
    std::size_t last = first;
    while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1) ++last;
    if (!text.empty()) text += ", ";
    text += std::to_string(numbers[first]);
    if (last > first) text += " to " + std::to_string(numbers[last]);
    first = last + 1;
  }
  return text;
}

/// The file of one application as it stands in memory.
struct Application {
  std::string path;
  IniFile file;
  bool exists = false;   ///< on the disk
  bool changed = false;  ///< since it was read or written
  bool readable = true;  ///< its bytes could be had
  bool damaged = false;  ///< and has not been put aside yet
  std::string lost;      ///< what is wrong with a damaged file, for the operator
  std::string bytes;     ///< of a damaged file
};

/// Why the bytes of an existing file can't be had; empty where they can.
std::string ReadBytes(const std::string& path, std::string& bytes, bool& exists) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  exists = status.type() != fs::file_type::not_found;
  if (!exists) return {};
  if (status.type() == fs::file_type::directory) return "this is a directory";
  if (error) return error.message();
  if (status.type() != fs::file_type::regular) return "this is no file";
  QFile file(QFile::decodeName(path.c_str()));
  if (!file.open(QIODevice::ReadOnly)) return file.errorString().toStdString();
  if (file.size() > kMaxFileSize) return "this is too large";
  bytes = file.readAll().toStdString();
  return file.error() == QFileDevice::NoError ? std::string() : file.errorString().toStdString();
}

Application Read(const std::string& path) {
  Application application;
  application.path = path;
  std::string bytes;
  std::string lost = ReadBytes(path, bytes, application.exists);
  if (!application.exists) return application;
  application.readable = lost.empty();
  if (application.readable) {
    application.file = IniFile(bytes);
    const std::vector<int>& badLines = application.file.BadLines();
    if (bytes.empty()) lost = "the file is empty";
    if (!badLines.empty()) {
      lost = (badLines.size() == 1 ? "line " : "lines ") + Ranges(badLines) + " can't be read";
    }
    if (application.file.IsCutOff()) lost += (lost.empty() ? "" : ", ") + std::string("the end of the file is missing");
  }
  if (lost.empty()) return application;
  application.lost = path + ": " + lost;
  application.damaged = true;
  application.bytes = std::move(bytes);
  return application;
}

std::string FreeNameAside(const std::string& path) {
  std::string name = path + ".damaged";
  std::error_code none;
  for (int number = 2; fs::exists(fs::symlink_status(name, none)); ++number) {
    name = path + ".damaged-" + std::to_string(number);
  }
  return name;
}

/// A file whose bytes are known is copied; another one gives up its name.
void PutAside(Application& application) {
  const std::string name = FreeNameAside(application.path);
  if (application.readable) {
    QFile copy(QFile::decodeName(name.c_str()));
    if (!copy.open(QIODevice::WriteOnly | QIODevice::NewOnly)) FailFile(copy, name);
    WriteAll(copy, application.bytes, name);
  } else {
    std::error_code error;
    fs::rename(application.path, name, error);
    if (error) FailFile(error, application.path);
  }
  application.damaged = false;
  application.bytes.clear();
}

void Replace(const Application& application) {
  QSaveFile file(QFile::decodeName(application.path.c_str()));
  if (!file.open(QIODevice::WriteOnly)) FailFile(file, application.path);
  WriteAll(file, application.file.Text(), application.path);
  if (!file.commit()) FailFile(file, application.path);
}

void Write(Application& application) {
  std::error_code error;
  const fs::path directory = fs::path(application.path).parent_path();
  fs::create_directories(directory, error);
  if (error) FailFile(error, directory.string());
  if (application.damaged) PutAside(application);
  if (application.file.IsEmpty()) {
    fs::remove(application.path, error);
    if (error) FailFile(error, application.path);
  } else {
    Replace(application);
  }
  SyncDirectory(directory.string());
  application.exists = !application.file.IsEmpty();
  application.changed = false;
}

}  // namespace

struct SettingsStore::Impl {
  std::string directory;
  std::map<std::string, Application, std::less<>> applications;
  std::vector<std::string> problems;

  Application& ReadFile(std::string_view name) {
    return applications.emplace(name, Read(directory + '/' + FileName(name))).first->second;
  }

  Application& Open(std::string_view name) {
    const auto found = applications.find(name);
    if (found != applications.end()) return found->second;
    Application& application = ReadFile(name);
    if (application.damaged) problems.push_back(application.lost);
    return application;
  }
};

SettingsStore::SettingsStore(std::string directory) : impl_(std::make_unique<Impl>()) {
  impl_->directory = std::move(directory);
}

SettingsStore::~SettingsStore() = default;

std::string SettingsStore::DefaultDirectory() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation).toStdString() + "/VELK";
}

bool SettingsStore::CanHold(std::string_view application) {
  return FileName(application).size() <= kMaxFileName;
}

void SettingsStore::RequireWhole(std::string_view application) {
  auto known = impl_->applications.find(application);
  if (known != impl_->applications.end() && !known->second.changed) {
    impl_->applications.erase(known);
    known = impl_->applications.end();
  }
  const Application& opened = known == impl_->applications.end() ? impl_->ReadFile(application) : known->second;
  if (opened.damaged) throw RuntimeError(ErrorNumber::DeviceIOError, opened.lost);
  if (opened.file.IsEmpty()) {
    throw RuntimeError(ErrorNumber::FileNotFound, opened.path + ": " + ErrorText(ErrorNumber::FileNotFound));
  }
}

const std::string& SettingsStore::Directory() const {
  return impl_->directory;
}

std::optional<std::string> SettingsStore::Find(std::string_view application, std::string_view section,
                                               std::string_view key) {
  const std::string* value = impl_->Open(application).file.Find(section, key);
  return value ? std::optional(*value) : std::nullopt;
}

std::string SettingsStore::Get(std::string_view application, std::string_view section, std::string_view key,
                               std::string_view preset) {
  const std::string* value = impl_->Open(application).file.Find(section, key);
  return value ? *value : std::string(preset);
}

void SettingsStore::Save(std::string_view application, std::string_view section, std::string_view key,
                         std::string_view value) {
  Application& opened = impl_->Open(application);
  if (opened.file.Set(section, key, value)) opened.changed = true;
}

void SettingsStore::Delete(std::string_view application, std::string_view section) {
  Application& opened = impl_->Open(application);
  if (opened.file.Delete(section)) opened.changed = true;
}

void SettingsStore::Delete(std::string_view application) {
  if (!CanHold(application)) return;
  Application& opened = impl_->Open(application);
  opened.changed = opened.exists;
  opened.file = IniFile();
}

void SettingsStore::Forget(std::string_view application) {
  const auto known = impl_->applications.find(application);
  if (known != impl_->applications.end()) impl_->applications.erase(known);
}

void SettingsStore::Flush() {
  std::exception_ptr firstFailure;
  for (auto& [name, application] : impl_->applications) {
    if (!application.changed) continue;
    try {
      Write(application);
    } catch (const RuntimeError&) {
      if (!firstFailure) firstFailure = std::current_exception();
    }
  }
  if (firstFailure) std::rethrow_exception(firstFailure);
}

std::vector<std::string> SettingsStore::TakeProblems() {
  return std::exchange(impl_->problems, {});
}

}  // namespace velk
