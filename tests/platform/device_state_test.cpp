#include "platform/ports/device_state.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "support/adapter_tree.h"
#include "support/child_program.h"
#include "support/pty.h"
#include "support/unprivileged.h"

namespace velk {
namespace {

TEST(DeviceStates, TellADeviceFromAName) {
  const test::Pty pty;
  EXPECT_TRUE(StateOfDevice(pty.Device()).exists);
  EXPECT_FALSE(StateOfDevice("/dev/pts/no such one").exists);
  EXPECT_FALSE(StateOfDevice("/tmp").exists);
}

TEST(DeviceStates, TellThatAnotherProgramHoldsTheDeviceWithoutOpeningIt) {
  const test::Pty pty;
  EXPECT_FALSE(StateOfDevice(pty.Device()).isInUse);
  test::ChildProgram holder("/bin/sh", {"-c", "exec 3<>" + pty.Device() + "; echo holds; exec sleep 60"});
  ASSERT_EQ(holder.NextLine(), "holds");
  EXPECT_TRUE(StateOfDevice(pty.Device()).isInUse);
  const test::TemporaryFolder folder;
  std::filesystem::create_symlink(pty.Device(), folder.File("by-id"));
  EXPECT_TRUE(StateOfDevice(folder.File("by-id")).isInUse) << "by whatever name";
}

/// A lock file of the device, as programs of any user write it.
struct LockOf {
  LockOf(const std::string& device, pid_t holder) : file("/tmp/LCK..pts_" + device.substr(device.rfind('/') + 1)) {
    std::ofstream(file) << holder << "\n";
  }
  ~LockOf() { std::filesystem::remove(file); }
  const std::string file;
};

TEST(DeviceStates, TellThatAProgramOfAnotherUserHasLockedTheDevice) {
  const test::Pty pty;
  const LockOf lock(pty.Device(), 1);  // lives as long as the machine runs
  EXPECT_TRUE(StateOfDevice(pty.Device()).isInUse);
  const test::TemporaryFolder folder;
  std::filesystem::create_symlink(pty.Device(), folder.File("by-id"));
  EXPECT_TRUE(StateOfDevice(folder.File("by-id")).isInUse) << "by whatever name";
}

TEST(DeviceStates, TakeNoLockOfThisOrOfADeadProgramForAnother) {
  const test::Pty pty;
  {
    const LockOf own(pty.Device(), getpid());
    EXPECT_FALSE(StateOfDevice(pty.Device()).isInUse);
  }
  const pid_t child = fork();
  if (child == 0) _exit(0);
  ASSERT_EQ(waitpid(child, nullptr, 0), child);
  const LockOf dead(pty.Device(), child);
  EXPECT_FALSE(StateOfDevice(pty.Device()).isInUse);
}

TEST(DeviceStates, FollowADeviceThatIsPluggedIn) {
  const test::AdapterTree tree;
  EXPECT_FALSE(StateOfDevice(tree.Path("ttyUSB0"), tree.Devices()).exists);
  const test::Pty pty;
  tree.Plug("ttyUSB0", {.serial = "A1", .place = "1-2"}, pty.Device());
  EXPECT_TRUE(StateOfDevice(tree.Path("ttyUSB0"), tree.Devices()).exists);
  tree.Unplug("ttyUSB0");
  EXPECT_FALSE(StateOfDevice(tree.Path("ttyUSB0"), tree.Devices()).exists);
}

TEST(DeviceStates, NameTheGroupToJoinWhereThisUserMayNotOpenIt) {
  const test::Pty pty;
  ASSERT_EQ(chmod(pty.Device().c_str(), 0), 0);
  const test::Unprivileged user;
  const DeviceState state = StateOfDevice(pty.Device());
  EXPECT_TRUE(state.exists);
  EXPECT_TRUE(state.isForbidden);
  EXPECT_FALSE(state.group.empty());
}

TEST(DeviceStates, TellNothingOfADeviceThatIsEverybodys) {
  EXPECT_TRUE(StateOfDevice("/dev/null").exists);
  EXPECT_FALSE(StateOfDevice("/dev/null").isInUse);
}

TEST(DeviceStates, NameNoGroupWhereTheDeviceMayBeOpened) {
  const test::Pty pty;
  EXPECT_FALSE(StateOfDevice(pty.Device()).isForbidden);
  EXPECT_EQ(StateOfDevice(pty.Device()).group, "");
}

TEST(NamedDevicesOfAMachine, AreItsAdaptersByTheirStableNamesWithTheMakersText) {
  const test::AdapterTree tree;
  tree.Plug("ttyUSB0", {.serial = "A1", .place = "1-2"});
  tree.Plug("ttyACM0", {.serial = "B1", .place = "1-3"});
  // The tree's devices are links; a real one ends the stable name's way.
  std::filesystem::remove(tree.Path("ttyUSB0"));
  std::ofstream(tree.Path("ttyUSB0")) << "";
  std::filesystem::create_directories(tree.Path("serial/by-id"));
  std::filesystem::create_symlink("../../ttyUSB0", tree.Path("serial/by-id/usb-Acme_Pump-if00"));
  const std::string unit = tree.Devices() + "/../sys/devices/usb1/1-2";
  std::ofstream(unit + "/manufacturer") << "Acme Inc.\n";
  std::ofstream(unit + "/product") << "Pump Controller\n";
  const std::vector<NamedDevice> named = NamedDevices(tree.Devices());
  ASSERT_EQ(named.size(), 2U);
  EXPECT_EQ(named[0].path, tree.Path("serial/by-id/usb-Acme_Pump-if00"));
  EXPECT_EQ(named[0].maker, "Acme Inc. Pump Controller");
  EXPECT_EQ(named[1].path, tree.Path("ttyACM0"));
  EXPECT_EQ(named[1].maker, "");
}

TEST(NamedDevicesOfAMachine, AreNoneWhereNothingIsPluggedIn) {
  EXPECT_TRUE(NamedDevices(test::AdapterTree().Devices()).empty());
}

}  // namespace
}  // namespace velk
