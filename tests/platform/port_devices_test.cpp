#include "platform/port_devices.h"

#include <gtest/gtest.h>

#include "platform/settings.h"
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

TEST_F(PortDevices, ADirectoryThatIsNotThereGivesTheBuiltInName) {
  EXPECT_EQ(PortDevice(settings, 2, "/nowhere/dev"), "/nowhere/dev/ttyS1");
}

}  // namespace
}  // namespace velk
