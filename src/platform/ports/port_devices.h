#pragma once

#include <string>
#include <vector>

namespace velk {

class SettingsStore;

/// The device behind "Com Port n", n from 1: `PortDevice<n>` in section Protocol of the application VELK2 where that is
/// set. Otherwise the n-th entry of this list: the built-in ports ttyS0, ttyS1, ... up to the highest that the machine
/// has a chip for, then the adapters ttyUSB*, then ttyACM*, each by rising number. Behind the list it is ttyS(n-1), so
/// that a failure to open names something that can be looked for.
///
/// The list follows what is plugged in. Who holds a port follows the device that it opened (followed_device.h), so that
/// another adapter never takes the place of one that was pulled out.
std::string PortDevice(SettingsStore& settings, int portNumber, const std::string& directory = "/dev");

/// What the list has for the number, whatever was set.
std::string ListedPortDevice(int portNumber, const std::string& directory = "/dev");

/// The paths of the adapters, in the order of that list.
std::vector<std::string> AdapterPaths(const std::string& directory);

/// Whether there is a device of this name, and not only the name: a file, or a built-in port that has no chip.
bool PortIsThere(const std::string& device, const std::string& directory = "/dev");

}  // namespace velk
