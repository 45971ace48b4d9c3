#include "platform/ports/port_devices.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <optional>
#include <vector>

#include "platform/settings/settings.h"

namespace velk {

namespace {

std::optional<int> NumberBehind(const std::string& name, std::string_view prefix) {
  if (!name.starts_with(prefix)) return std::nullopt;
  int number = 0;
  const char* const end = name.data() + name.size();
  const auto [stop, error] = std::from_chars(name.data() + prefix.size(), end, number);
  if (error != std::errc() || stop != end || number < 0) return std::nullopt;
  return number;
}

/// The system has names for built-in ports whose chip it did not find: such a port opens, and nothing ever comes. What
/// is known of a device stands beside `directory` in sys/class/tty.
bool HasChip(const std::string& directory, const std::string& name) {
  std::ifstream kind(std::filesystem::path(directory).parent_path() / "sys/class/tty" / name / "type");
  int number = 0;
  return !(kind >> number) || number != 0;
}

/// The numbers of the devices with this prefix, rising.
std::vector<int> NumbersOf(const std::string& directory, std::string_view prefix) {
  std::vector<int> numbers;
  std::error_code error;
  for (std::filesystem::directory_iterator entry(directory, error), end; !error && entry != end; entry.increment(error))
    if (const auto number = NumberBehind(entry->path().filename().string(), prefix))
      if (HasChip(directory, entry->path().filename().string())) numbers.push_back(*number);
  std::sort(numbers.begin(), numbers.end());
  return numbers;
}

}  // namespace

std::string ListedPortDevice(int portNumber, const std::string& directory) {
  const std::vector<int> builtInNumbers = NumbersOf(directory, "ttyS");
  const int place = portNumber - (builtInNumbers.empty() ? 0 : builtInNumbers.back() + 1);
  const std::vector<std::string> adapters = AdapterPaths(directory);
  if (place >= 1 && place <= static_cast<int>(adapters.size())) return adapters[static_cast<std::size_t>(place) - 1];
  return directory + "/ttyS" + std::to_string(portNumber - 1);
}

std::string PortDevice(SettingsStore& settings, int portNumber, const std::string& directory) {
  const std::string key = "PortDevice" + std::to_string(portNumber);
  const std::string set = settings.Get("VELK2", "Protocol", key, "");
  return set.empty() ? ListedPortDevice(portNumber, directory) : set;
}

std::vector<std::string> AdapterPaths(const std::string& directory) {
  std::vector<std::string> paths;
  for (const std::string prefix : {"ttyUSB", "ttyACM"})
    for (const int number : NumbersOf(directory, prefix))
      paths.push_back(directory + "/" + prefix + std::to_string(number));
  return paths;
}

bool PortIsThere(const std::string& device, const std::string& directory) {
  std::error_code none;
  const std::filesystem::path path(device);
  return std::filesystem::is_character_file(path, none) &&
         (path.parent_path() != directory || HasChip(directory, path.filename().string()));
}

}  // namespace velk
