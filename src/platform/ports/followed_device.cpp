#include "platform/ports/followed_device.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <utility>
#include <vector>

#include "platform/ports/port_devices.h"
#include "platform/ports/serial.h"

namespace velk {

namespace {

namespace fs = std::filesystem;

/// An adapter that is plugged in, with the path under which it is.
using Plugged = std::pair<std::string, Adapter>;

std::string FirstLine(const fs::path& file) {
  std::ifstream text(file);
  std::string line;
  std::getline(text, line);
  return line;
}

/// The adapter behind a name, or nothing for a device of another kind. The system's tree has a folder for the adapter,
/// in it one for each of its interfaces, and in an interface perhaps one for each of its ports.
std::optional<Adapter> AdapterOf(const std::string& directory, const std::string& name) {
  std::error_code error;
  const fs::path port = fs::canonical(fs::path(directory).parent_path() / "sys/class/tty" / name / "device", error);
  if (error) return std::nullopt;
  fs::path unit = port;
  while (!fs::exists(unit / "idVendor", error)) {
    if (!unit.has_relative_path()) return std::nullopt;
    unit = unit.parent_path();
  }
  const fs::path interface = unit / *port.lexically_relative(unit).begin();
  return Adapter{FirstLine(unit / "idVendor") + ":" + FirstLine(unit / "idProduct"), FirstLine(unit / "serial"),
                 unit.string(), FirstLine(interface / "bInterfaceNumber") + "." + FirstLine(port / "port_number")};
}

std::vector<Plugged> PluggedAdapters(const std::string& directory) {
  std::vector<Plugged> plugged;
  for (const std::string& path : AdapterPaths(directory))
    if (auto adapter = AdapterOf(directory, fs::path(path).filename().string()))
      plugged.emplace_back(path, std::move(*adapter));
  return plugged;
}

bool IsSamePort(const Adapter& a, const Adapter& b) {
  return a.model == b.model && a.line == b.line;
}

/// The adapter of a path, which may be a link. Some makers give all their adapters one serial number; where that shows,
/// the place is what tells them apart.
std::optional<Adapter> AdapterBehind(const std::string& directory, const std::string& path) {
  const auto plugged = PluggedAdapters(directory);
  const auto real = [](const std::string& name) {
    std::error_code error;
    const std::string there = fs::canonical(name, error).string();
    return there.empty() ? name : there;
  };
  const auto hasName = [&](const Plugged& each) { return each.first == path; };
  const auto isLinkedTo = [&](const Plugged& each) { return real(each.first) == real(path); };
  auto found = std::find_if(plugged.begin(), plugged.end(), hasName);
  if (found == plugged.end()) found = std::find_if(plugged.begin(), plugged.end(), isLinkedTo);
  if (found == plugged.end()) return std::nullopt;
  Adapter adapter = found->second;
  const auto sharesSerial = [&](const Plugged& each) {
    return IsSamePort(each.second, adapter) && each.second.serial == adapter.serial;
  };
  if (std::count_if(plugged.begin(), plugged.end(), sharesSerial) > 1) adapter.serial.clear();
  return adapter;
}

/// Where the adapter is now; nothing while it is not there, or where two others could be it.
std::optional<std::string> PathOf(const std::string& directory, const Adapter& adapter) {
  std::vector<std::string> sameSerial;
  for (const auto& [path, each] : PluggedAdapters(directory)) {
    if (!IsSamePort(each, adapter)) continue;
    const bool serialFits = adapter.serial.empty() || each.serial == adapter.serial;
    if (serialFits && each.place == adapter.place) return path;
    if (serialFits && !adapter.serial.empty()) sameSerial.push_back(path);
  }
  if (sameSerial.size() != 1) return std::nullopt;
  return sameSerial.front();
}

}  // namespace

const std::string& FollowedDevice::Of(int portNumber) {
  if (portNumber != std::exchange(portNumber_, portNumber)) Forget();
  return Find();
}

const std::string& FollowedDevice::Choose() {
  path_ = PortDevice(*settings_, portNumber_, directory_);
  return path_;
}

void FollowedDevice::Opened() {
  opened_ = true;
  adapter_ = AdapterBehind(directory_, path_);
}

const std::string& FollowedDevice::Find() {
  if (!opened_) return Choose();
  if (!adapter_) return path_;
  const auto found = PathOf(directory_, *adapter_);
  if (!found) throw PortError(ErrorNumber::DeviceUnavailable, path_);
  path_ = *found;
  return path_;
}

}  // namespace velk
