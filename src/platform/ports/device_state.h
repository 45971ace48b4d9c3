#pragma once

#include <string>
#include <vector>

namespace velk {

/// What would hinder the opening of a device, as far as it can be told without opening it: some units start anew where
/// their port is opened.
struct DeviceState {
  bool exists = false;       ///< a device, not only a name
  bool isInUse = false;      ///< another program has it open, or says so by a lock file
  bool isForbidden = false;  ///< this user may not open it
  std::string group;         ///< that owns the device, where this user may not open it
};

DeviceState StateOfDevice(const std::string& device, const std::string& directory = "/dev");

/// A device that can be chosen by a name that it keeps wherever it is plugged in.
struct NamedDevice {
  std::string path;
  std::string maker;  ///< maker and product as the device tells them; may be empty
};

/// The adapters that are plugged in, by their stable names; those that have none by their own.
std::vector<NamedDevice> NamedDevices(const std::string& directory = "/dev");

}  // namespace velk
