#pragma once

#include <optional>
#include <string>

namespace velk {

class SettingsStore;

/// What tells an adapter from all others, whatever name the system gives it.
struct Adapter {
  std::string model;   ///< maker and model
  std::string serial;  ///< its serial number; empty where it has none, or shares it with another one that is plugged in
  std::string place;   ///< on the bus
  std::string line;    ///< which of the adapter's ports
};

/// The device behind "Com Port n" from its choice on. It may be pulled out and come back under another name.
class FollowedDevice {
 public:
  /// `directory` is where devices are; what is known of them stands beside it in sys/class/tty.
  FollowedDevice(SettingsStore& settings, const std::string& directory) : settings_(&settings), directory_(directory) {}

  /// The device of "Com Port n": the one that has opened as that, wherever it is by now (see Find), else the path that
  /// the list has for the number at this moment.
  const std::string& Of(int portNumber);
  /// The next one is chosen from the list.
  void Forget() { opened_ = false; }
  /// The path that was given last has opened: this is the device.
  void Opened();
  /// Where the device is now, the list being read anew: an adapter that has opened is found under any name, by its
  /// serial number, else by its place on the bus; any other device that has opened keeps its path; before one has
  /// opened it is what the list says. Raises PortError, DeviceUnavailable, while the adapter is not there or can't be
  /// told from another one: whatever stands under its name by then is not it.
  const std::string& Find();

 private:
  const std::string& Choose();

  SettingsStore* settings_;
  std::string directory_;
  int portNumber_ = 1;
  std::string path_;
  bool opened_ = false;
  std::optional<Adapter> adapter_;
};

}  // namespace velk
