#include "platform/ports/port_devices.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "platform/settings/settings.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

struct PortDevices : testing::Test {
  std::string Device(int portNumber) { return PortDevice(settings, portNumber, dev.Path().string()); }
  void Plug(std::initializer_list<const char*> names) {
    for (const char* name : names) dev.Touch(name);
  }

  test::TemporaryFolder dev, store;
  SettingsStore settings{store.Path().string()};
};

TEST_F(PortDevices, BuiltInPortsComeFirst) {
  Plug({"ttyS0", "ttyS1", "ttyS2", "ttyS3", "ttyUSB0"});
  EXPECT_EQ(Device(1), dev.File("ttyS0"));
  EXPECT_EQ(Device(4), dev.File("ttyS3"));
}

TEST_F(PortDevices, AdaptersFollowUsbBeforeAcmEachByNumber) {
  Plug({"ttyS0", "ttyS1", "ttyACM1", "ttyUSB10", "ttyUSB2", "ttyACM0"});
  EXPECT_EQ(Device(3), dev.File("ttyUSB2"));
  EXPECT_EQ(Device(4), dev.File("ttyUSB10"));
  EXPECT_EQ(Device(5), dev.File("ttyACM0"));
  EXPECT_EQ(Device(6), dev.File("ttyACM1"));
}

TEST_F(PortDevices, WithoutBuiltInPortsTheFirstAdapterIsPortOne) {
  Plug({"ttyUSB0", "tty", "tty1", "ttyprintk"});
  EXPECT_EQ(Device(1), dev.File("ttyUSB0"));
}

TEST_F(PortDevices, AGapAmongTheBuiltInPortsKeepsItsNumber) {
  Plug({"ttyS0", "ttyS2", "ttyUSB0"});
  EXPECT_EQ(Device(2), dev.File("ttyS1"));
  EXPECT_EQ(Device(3), dev.File("ttyS2"));
  EXPECT_EQ(Device(4), dev.File("ttyUSB0"));
}

TEST_F(PortDevices, BehindTheListItIsTheBuiltInName) {
  EXPECT_EQ(Device(1), dev.File("ttyS0"));
  Plug({"ttyS0", "ttyUSB0"});
  EXPECT_EQ(Device(3), dev.File("ttyS2"));
}

TEST_F(PortDevices, NamesThatOnlyLookLikePortsAreNoPorts) {
  Plug({"ttyS0", "ttyS", "ttySAC0", "ttyUSBx", "ttyUSB1a", "ttyUSB-1"});
  EXPECT_EQ(Device(2), dev.File("ttyS1"));
}

TEST_F(PortDevices, WhatTheSettingsNameComesBeforeTheList) {
  Plug({"ttyS0"});
  settings.Save("VELK2", "Protocol", "PortDevice1", "/dev/pts/7");
  EXPECT_EQ(Device(1), "/dev/pts/7");
  settings.Save("VELK2", "Protocol", "PortDevice12", "/tmp/unit");
  EXPECT_EQ(Device(12), "/tmp/unit");
}

TEST_F(PortDevices, AnEmptySettingIsNone) {
  Plug({"ttyS0"});
  settings.Save("VELK2", "Protocol", "PortDevice1", "");
  EXPECT_EQ(Device(1), dev.File("ttyS0"));
}

TEST_F(PortDevices, NamesOfBuiltInPortsWithoutHardwareAreNotCounted) {
  // The system makes ttyS0 to ttyS3 on any machine; the kind of chip is 0 where it found none.
  const test::TemporaryFolder machine;
  const auto built = [&](const std::string& name, const char* kind) {
    std::filesystem::create_directories(machine.File("dev"));
    std::filesystem::create_directories(machine.File("sys/class/tty/" + name));
    std::filesystem::create_symlink("/dev/null", machine.File("dev/" + name));
    if (kind != nullptr) std::ofstream(machine.File("sys/class/tty/" + name + "/type")) << kind << "\n";
  };
  const std::string devices = machine.File("dev");
  built("ttyS0", "4");
  built("ttyS1", "0");
  built("ttyS2", "0");
  built("ttyUSB0", nullptr);
  EXPECT_EQ(PortDevice(settings, 1, devices), devices + "/ttyS0");
  EXPECT_EQ(PortDevice(settings, 2, devices), devices + "/ttyUSB0");
  EXPECT_EQ(PortDevice(settings, 3, devices), devices + "/ttyS2");
  EXPECT_TRUE(PortIsThere(devices + "/ttyS0", devices));
  EXPECT_FALSE(PortIsThere(devices + "/ttyS2", devices));
  EXPECT_TRUE(PortIsThere(devices + "/ttyUSB0", devices));
  EXPECT_FALSE(PortIsThere(devices + "/ttyS7", devices));

  built("ttyS3", "4");
  EXPECT_EQ(PortDevice(settings, 2, devices), devices + "/ttyS1") << "a gap keeps its number";
  EXPECT_EQ(PortDevice(settings, 5, devices), devices + "/ttyUSB0");
  built("ttyS4", nullptr);
  EXPECT_EQ(PortDevice(settings, 5, devices), devices + "/ttyS4") << "one that tells nothing of its chip counts";
}

TEST_F(PortDevices, ADirectoryThatIsNotThereGivesTheBuiltInName) {
  EXPECT_EQ(PortDevice(settings, 2, "/nowhere/dev"), "/nowhere/dev/ttyS1");
}

}  // namespace
}  // namespace velk
