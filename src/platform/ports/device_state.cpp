#include "platform/ports/device_state.h"

#include <fcntl.h>
#include <grp.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>

#include "platform/ports/dead_lock_file.h"
#include "platform/ports/port_devices.h"

namespace velk {

namespace {

namespace fs = std::filesystem;

bool IsNumber(const std::string& name) {
  return !name.empty() && std::all_of(name.begin(), name.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
}

/// Processes of other users keep their files to themselves: of those only their locks tell.
bool Holds(const fs::path& process, const fs::path& device) {
  std::error_code error;
  for (fs::directory_iterator entry(process / "fd", error), end; !error && entry != end; entry.increment(error)) {
    std::error_code gone;
    if (fs::read_symlink(entry->path(), gone) == device) return true;
  }
  return false;
}

/// What has no line behind it, such as /dev/null, is everybody's.
bool IsShared(const fs::path& device) {
  constexpr unsigned kMemoryDevices = 1;
  struct stat found = {};
  return stat(device.c_str(), &found) == 0 && major(found.st_rdev) == kMemoryDevices;
}

bool IsHeldByAnother(const fs::path& device) {
  const std::string own = std::to_string(getpid());
  std::error_code error;
  for (fs::directory_iterator entry("/proc", error), end; !error && entry != end; entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    if (IsNumber(name) && name != own && Holds(entry->path(), device)) return true;
  }
  return false;
}

std::string GroupOf(const std::string& device) {
  struct stat found = {};
  if (stat(device.c_str(), &found) != 0) return {};
  const group* const owner = getgrgid(found.st_gid);
  return owner != nullptr ? owner->gr_name : std::to_string(found.st_gid);
}

std::string LineOfFile(const fs::path& file) {
  std::ifstream text(file);
  std::string line;
  std::getline(text, line);
  return line;
}

/// From the system's tree beside `directory`, where the adapter's folder stands some levels above its port.
std::string MakerOf(const std::string& directory, const fs::path& device) {
  std::error_code error;
  fs::path unit =
      fs::canonical(fs::path(directory).parent_path() / "sys/class/tty" / device.filename() / "device", error);
  while (!error && unit.has_relative_path() && !fs::exists(unit / "idVendor", error)) unit = unit.parent_path();
  const std::string maker = LineOfFile(unit / "manufacturer");
  const std::string product = LineOfFile(unit / "product");
  return maker.empty() || product.empty() ? maker + product : maker + " " + product;
}

}  // namespace

DeviceState StateOfDevice(const std::string& device, const std::string& directory) {
  DeviceState state;
  state.exists = PortIsThere(device, directory);
  if (!state.exists) return state;
  state.isForbidden = faccessat(AT_FDCWD, device.c_str(), R_OK | W_OK, AT_EACCESS) != 0;
  if (state.isForbidden) state.group = GroupOf(device);
  std::error_code error;
  const fs::path real = fs::canonical(device, error);
  if (error || IsShared(real)) return state;
  state.isInUse = IsHeldByAnother(real) || IsLockedByAnother(real) || IsLockedByAnother(device);
  return state;
}

std::vector<NamedDevice> NamedDevices(const std::string& directory) {
  std::vector<NamedDevice> named;
  std::vector<fs::path> behind;
  std::error_code error;
  for (fs::directory_iterator entry(directory + "/serial/by-id", error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code gone;
    const fs::path device = fs::canonical(entry->path(), gone);
    if (gone) continue;
    behind.push_back(device);
    named.push_back({entry->path().string(), MakerOf(directory, device)});
  }
  std::sort(named.begin(), named.end(), [](const auto& a, const auto& b) { return a.path < b.path; });
  for (const std::string& path : AdapterPaths(directory)) {
    std::error_code gone;
    if (std::find(behind.begin(), behind.end(), fs::canonical(path, gone)) == behind.end())
      named.push_back({path, MakerOf(directory, path)});
  }
  return named;
}

}  // namespace velk
