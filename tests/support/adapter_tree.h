#pragma once

#include <filesystem>
#include <fstream>
#include <string>

#include "support/temporary_folder.h"

namespace velk::test {

/// A folder of devices, and beside it what a system knows of the adapters that are plugged in.
class AdapterTree {
 public:
  AdapterTree() { std::filesystem::create_directories(Devices()); }

  std::string Devices() const { return root_.File("dev"); }
  std::string Path(const std::string& name) const { return Devices() + "/" + name; }

  struct Adapter {
    std::string serial;
    std::string place = "1-2";
    int interface = 0;
    std::string model = "6001";
  };
  /// The adapter comes as `name`; what opens that opens `device`.
  void Plug(const std::string& name, const Adapter& adapter, const std::string& device = "/dev/null") const {
    Know(name, adapter);
    std::filesystem::create_symlink(device, Path(name));
  }
  /// What the system knows of the adapter under `name`, where somebody else makes Path(name).
  void Know(const std::string& name, const Adapter& adapter) const {
    const std::string unit = "sys/devices/usb1/" + adapter.place;
    Write(unit + "/idVendor", "0403");
    Write(unit + "/idProduct", adapter.model);
    if (!adapter.serial.empty()) Write(unit + "/serial", adapter.serial);
    const std::string interface = unit + "/" + adapter.place + ":1." + std::to_string(adapter.interface);
    Write(interface + "/bInterfaceNumber", "0" + std::to_string(adapter.interface));
    Write(interface + "/" + name + "/port_number", "0");
    std::filesystem::create_directories(root_.File("sys/class/tty/" + name));
    std::filesystem::create_symlink(root_.File(interface + "/" + name),
                                    root_.File("sys/class/tty/" + name + "/device"));
  }

  void Unplug(const std::string& name) const {
    std::filesystem::remove(Path(name));
    const std::string port = root_.File("sys/class/tty/" + name);
    std::filesystem::remove_all(std::filesystem::canonical(port + "/device").parent_path().parent_path());
    std::filesystem::remove_all(port);
  }

 private:
  void Write(const std::string& file, const std::string& line) const {
    std::filesystem::create_directories(std::filesystem::path(root_.File(file)).parent_path());
    std::ofstream(root_.File(file)) << line << "\n";
  }

  TemporaryFolder root_;
};

}  // namespace velk::test
