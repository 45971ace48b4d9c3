#include "platform/settings/settings.h"

#include <QStandardPaths>
#include <exception>
#include <map>
#include <stdexcept>
#include <utility>

#include "base/errors.h"
#include "platform/settings/settings_file.h"

namespace velk {

namespace {

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

}  // namespace

struct SettingsStore::Impl {
  std::string directory;
  std::map<std::string, SettingsFile, std::less<>> applications;
  std::vector<OperatorText> problems;

  SettingsFile& ReadFile(std::string_view name) {
    return applications.emplace(name, ReadSettingsFile(directory + '/' + FileName(name))).first->second;
  }

  SettingsFile& Open(std::string_view name) {
    const auto found = applications.find(name);
    if (found != applications.end()) return found->second;
    SettingsFile& file = ReadFile(name);
    if (!file.lost.IsEmpty()) problems.push_back(file.lost);
    return file;
  }
};

SettingsStore::SettingsStore(std::string directory) : impl_(std::make_unique<Impl>()) {
  if (directory.empty()) throw std::logic_error("A settings store without a folder would write into the root");
  impl_->directory = std::move(directory);
}

SettingsStore::~SettingsStore() = default;

std::string SettingsStore::DefaultDirectory() {
  const QByteArray chosen = qgetenv("VELK_SETTINGS");
  if (!chosen.isEmpty()) return chosen.toStdString();
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
  const SettingsFile& opened = known == impl_->applications.end() ? impl_->ReadFile(application) : known->second;
  if (!opened.whole) throw RuntimeError(ErrorNumber::DeviceIOError, opened.lost);
  if (opened.ini.IsEmpty()) {
    throw RuntimeError(ErrorNumber::FileNotFound, opened.path + ": " + ErrorText(ErrorNumber::FileNotFound));
  }
  if (!opened.lost.IsEmpty()) impl_->problems.push_back(opened.lost);
}

const std::string& SettingsStore::Directory() const {
  return impl_->directory;
}

std::optional<std::string> SettingsStore::Find(std::string_view application, std::string_view section,
                                               std::string_view key) {
  const std::string* value = impl_->Open(application).ini.Find(section, key);
  return value ? std::optional(*value) : std::nullopt;
}

std::string SettingsStore::Get(std::string_view application, std::string_view section, std::string_view key,
                               std::string_view preset) {
  const std::string* value = impl_->Open(application).ini.Find(section, key);
  return value ? *value : std::string(preset);
}

void SettingsStore::Save(std::string_view application, std::string_view section, std::string_view key,
                         std::string_view value) {
  SettingsFile& opened = impl_->Open(application);
  // A damaged file is written anew in any case, so that nobody is told about it again.
  if (opened.ini.Set(section, key, value) || !opened.lost.IsEmpty()) opened.changed = true;
}

void SettingsStore::Delete(std::string_view application, std::string_view section) {
  SettingsFile& opened = impl_->Open(application);
  if (opened.ini.Delete(section)) opened.changed = true;
}

void SettingsStore::Delete(std::string_view application) {
  if (!CanHold(application)) return;
  SettingsFile& opened = impl_->Open(application);
  opened.changed = opened.exists;
  opened.ini = IniFile();
}

std::string SettingsStore::TextOf(std::string_view application) {
  return impl_->Open(application).ini.Text();
}

void SettingsStore::Restore(std::string_view application, const std::string& text,
                            const std::vector<std::string>& sections) {
  SettingsFile& opened = impl_->Open(application);
  const IniFile before(text);
  for (const std::string& section : sections) opened.ini.TakeOver(before, section);
  opened.changed = true;
}

void SettingsStore::Forget(std::string_view application) {
  const auto known = impl_->applications.find(application);
  if (known != impl_->applications.end()) impl_->applications.erase(known);
}

void SettingsStore::Flush() {
  std::exception_ptr firstFailure;
  for (auto& [name, file] : impl_->applications) {
    if (!file.changed) continue;
    try {
      WriteSettingsFile(file);
    } catch (const RuntimeError&) {
      if (!firstFailure) firstFailure = std::current_exception();
    }
  }
  if (firstFailure) std::rethrow_exception(firstFailure);
}

bool SettingsStore::IsDamaged(std::string_view application) {
  return !impl_->Open(application).lost.IsEmpty();
}

std::string SettingsStore::PutAside(std::string_view application) {
  return velk::PutAside(impl_->Open(application));
}

std::vector<OperatorText> SettingsStore::TakeProblems() {
  return std::exchange(impl_->problems, {});
}

}  // namespace velk
