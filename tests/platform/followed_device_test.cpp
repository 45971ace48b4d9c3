#include "platform/ports/followed_device.h"

#include <gtest/gtest.h>

#include "platform/ports/serial.h"
#include "platform/settings/settings.h"
#include "support/adapter_tree.h"

namespace velk {
namespace {

struct FollowedDevices : testing::Test {
  /// The first adapter of the list was chosen, and has opened.
  void Open() {
    device.Of(1);
    device.Opened();
  }
  /// Where it is found; empty while it isn't.
  std::string Found() {
    try {
      return device.Find();
    } catch (const PortError& error) {
      EXPECT_EQ(error.Number(), ErrorNumber::DeviceUnavailable);
      return "";
    }
  }

  test::AdapterTree machine;
  test::TemporaryFolder store;
  SettingsStore settings{store.Path().string()};
  FollowedDevice device{settings, machine.Devices()};
};

TEST_F(FollowedDevices, AnAdapterIsFoundByItsSerialNumberUnderAnyNameAndInAnyPlace) {
  machine.Plug("ttyUSB0", {"A1", "1-2"});
  Open();
  machine.Unplug("ttyUSB0");
  EXPECT_EQ(Found(), "");
  machine.Plug("ttyUSB1", {"A1", "1-4"});
  EXPECT_EQ(Found(), machine.Path("ttyUSB1"));
}

TEST_F(FollowedDevices, AnotherAdapterUnderTheOldNameIsNotTheOneThatWasLost) {
  machine.Plug("ttyUSB0", {"A1", "1-2"});
  Open();
  machine.Unplug("ttyUSB0");
  machine.Plug("ttyUSB0", {"B7", "1-2"});
  EXPECT_EQ(Found(), "");
  machine.Plug("ttyUSB1", {"A1", "1-3"});
  EXPECT_EQ(Found(), machine.Path("ttyUSB1"));
}

TEST_F(FollowedDevices, AnAdapterWithoutASerialNumberIsFoundByItsPlace) {
  machine.Plug("ttyACM0", {"", "1-2"});
  Open();
  machine.Unplug("ttyACM0");
  machine.Plug("ttyACM1", {"", "1-3"});
  EXPECT_EQ(Found(), "");
  machine.Plug("ttyACM2", {"", "1-2"});
  EXPECT_EQ(Found(), machine.Path("ttyACM2"));
}

TEST_F(FollowedDevices, AnotherModelInTheSamePlaceIsAnother) {
  machine.Plug("ttyUSB0", {.serial = "", .place = "1-2", .model = "6001"});
  Open();
  machine.Unplug("ttyUSB0");
  machine.Plug("ttyUSB0", {.serial = "", .place = "1-2", .model = "6015"});
  EXPECT_EQ(Found(), "");
}

TEST_F(FollowedDevices, OfAnAdapterWithSeveralPortsTheSameOneIsFound) {
  machine.Plug("ttyUSB0", {.serial = "A1", .interface = 0});
  machine.Plug("ttyUSB1", {.serial = "A1", .interface = 1});
  Open();
  machine.Unplug("ttyUSB0");
  machine.Plug("ttyUSB2", {.serial = "A1", .interface = 1});
  EXPECT_EQ(Found(), "");
  machine.Plug("ttyUSB3", {.serial = "A1", .interface = 0});
  EXPECT_EQ(Found(), machine.Path("ttyUSB3"));
}

TEST_F(FollowedDevices, ASerialNumberThatTwoAdaptersShareTellsNoneOfThemApart) {
  machine.Plug("ttyUSB0", {"0001", "1-2"});
  machine.Plug("ttyUSB1", {"0001", "1-3"});
  Open();
  machine.Unplug("ttyUSB0");
  EXPECT_EQ(Found(), "");
  machine.Plug("ttyUSB2", {"0001", "1-2"});
  EXPECT_EQ(Found(), machine.Path("ttyUSB2"));
}

TEST_F(FollowedDevices, OfTwoThatReturnWithOneSerialNumberTheOneInTheOldPlaceIsFoundAndElsewhereNone) {
  machine.Plug("ttyUSB0", {"0001", "1-2"});
  Open();
  machine.Unplug("ttyUSB0");
  machine.Plug("ttyUSB1", {"0001", "1-3"});
  machine.Plug("ttyUSB2", {"0001", "1-4"});
  EXPECT_EQ(Found(), "");
  machine.Plug("ttyUSB3", {"0001", "1-2"});
  EXPECT_EQ(Found(), machine.Path("ttyUSB3"));
}

TEST_F(FollowedDevices, AnAdapterThatWasChosenByALinkIsFoundUnderItsNewName) {
  machine.Plug("ttyUSB0", {"A1", "1-2"});
  std::filesystem::create_symlink(machine.Path("ttyUSB0"), machine.Path("unit"));
  settings.Save("VELK2", "Protocol", "PortDevice1", machine.Path("unit"));
  EXPECT_EQ(device.Of(1), machine.Path("unit"));
  device.Opened();
  machine.Unplug("ttyUSB0");
  machine.Plug("ttyUSB1", {"A1", "1-2"});
  EXPECT_EQ(Found(), machine.Path("ttyUSB1"));
}

TEST_F(FollowedDevices, ADeviceThatIsNoAdapterKeepsItsPath) {
  settings.Save("VELK2", "Protocol", "PortDevice1", "/dev/null");
  Open();
  settings.Save("VELK2", "Protocol", "PortDevice1", "/dev/zero");
  EXPECT_EQ(Found(), "/dev/null");
}

TEST_F(FollowedDevices, UntilOneHasOpenedItIsWhatTheListSays) {
  EXPECT_EQ(device.Of(1), machine.Path("ttyS0"));
  EXPECT_EQ(Found(), machine.Path("ttyS0"));
  machine.Plug("ttyUSB3", {"A1"});
  EXPECT_EQ(Found(), machine.Path("ttyUSB3"));
}

TEST_F(FollowedDevices, AForgottenDeviceIsChosenAnew) {
  machine.Plug("ttyUSB0", {"A1"});
  Open();
  machine.Unplug("ttyUSB0");
  machine.Plug("ttyUSB1", {"B7", "1-5"});
  EXPECT_EQ(Found(), "");
  device.Forget();
  EXPECT_EQ(device.Of(1), machine.Path("ttyUSB1"));
  EXPECT_EQ(Found(), machine.Path("ttyUSB1"));
}

}  // namespace
}  // namespace velk
