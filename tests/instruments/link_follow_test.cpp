// An adapter that leaves under one name and comes back under another.

#include "instruments/link/link_lease.h"
#include "instruments/link_fixture.h"
#include "support/adapter_tree.h"

namespace velk {
namespace {

using test::LinkTest;

struct FollowingLink : LinkTest {
  FollowingLink() {
    settings.Save("VELK2", "Protocol", "PortDevice1", "");
    machine.Plug("ttyUSB0", {"A1", "1-2"});
  }
  /// The adapter leaves, and another one takes its name.
  void Leave() {
    machine.Unplug("ttyUSB0");
    machine.Plug("ttyUSB0", {"B7", "1-4"});
  }
  void Return() { machine.Plug("ttyUSB1", {"A1", "1-2"}); }

  test::AdapterTree machine;
  test::FakeDevice plainAdapter, driverAdapter;
  std::vector<test::FakeDevice*> left{&plainAdapter, &driverAdapter};
  Link follower{session,
                platform,
                view,
                timers,
                [this] {
                  test::FakeDevice& device = *left.front();
                  left.erase(left.begin());
                  return std::make_unique<test::FakeSerialPort>(device);
                },
                machine.Devices()};
};

TEST_F(FollowingLink, TheLineDriverFindsItsAdapterUnderAnotherNameAndNoOtherAdapterTakesItsPlace) {
  follower.SetODataCom();
  ASSERT_EQ(driverAdapter.openings.back().device, machine.Path("ttyUSB0"));
  dialogs.Expect("the serial device is gone", Answer::Ok);
  Leave();
  driverAdapter.HangUp();
  clock.Advance(30'000);
  EXPECT_FALSE(driverAdapter.open);
  EXPECT_EQ(driverAdapter.openings.size(), 1U);
  Return();
  clock.Advance(1000);
  EXPECT_TRUE(driverAdapter.open);
  EXPECT_EQ(driverAdapter.openings.back().device, machine.Path("ttyUSB1"));
  ExpectImages(true);
}

TEST_F(FollowingLink, TheNextLossNamesTheAdapterAsItIsCalledThen) {
  follower.SetODataCom();
  machine.Unplug("ttyUSB0");
  Return();
  follower.CycleODataCom();
  dialogs.Expect(machine.Path("ttyUSB1") + ": the serial device is gone", Answer::Ok);
  driverAdapter.HangUp();
  clock.Advance(1);
}

TEST_F(FollowingLink, ThePlainPortFindsItsAdapterUnderAnotherName) {
  session.IsOwnUnit = false;
  ASSERT_TRUE(follower.OpenPlainPort(Handshake::None));
  Leave();
  plainAdapter.HangUp();
  dialogs.Expect(machine.Path("ttyUSB0") + ": there is no such serial device", Answer::Ok);
  EXPECT_FALSE(follower.KeepPlainPortOpen());
  Return();
  clock.Advance(1000);
  EXPECT_TRUE(follower.KeepPlainPortOpen());
  EXPECT_EQ(plainAdapter.openings.back().device, machine.Path("ttyUSB1"));
  plainAdapter.HangUp();
  clock.Advance(1000);
  EXPECT_TRUE(follower.KeepPlainPortOpen()) << "and once more";
}

TEST_F(FollowingLink, AnAdapterThatWasNotPluggedInAtConnectIsFoundOnceItIs) {
  machine.Unplug("ttyUSB0");
  driverAdapter.failOpen = [this] { throw PortError(ErrorNumber::DeviceUnavailable, machine.Path("ttyS0")); };
  dialogs.Expect("ttyS0: there is no such serial device", Answer::Cancel);
  follower.SetODataCom();
  driverAdapter.ComeBack();
  Return();
  clock.Advance(1000);
  EXPECT_EQ(driverAdapter.openings.back().device, machine.Path("ttyUSB1"));
  EXPECT_TRUE(driverAdapter.open);
}

TEST_F(FollowingLink, ALeaseBringsBackTheAdapterThatItTookThoughItIsCalledOtherwiseByThen) {
  session.IsOwnUnit = false;
  session.SerialData = "Any Serial Data";
  follower.SetODataCom();
  ASSERT_TRUE(follower.OpenPlainPort(Handshake::None));
  {
    const LinkLease lease(follower, timers);
    Leave();
    Return();
    EXPECT_TRUE(follower.OpenPlainPort(Handshake::None));
    EXPECT_EQ(plainAdapter.openings.back().device, machine.Path("ttyUSB1")) << "whoever takes the lease";
  }
  EXPECT_EQ(driverAdapter.openings.back().device, machine.Path("ttyUSB1"));
  EXPECT_EQ(plainAdapter.openings.back().device, machine.Path("ttyUSB1"));
}

TEST_F(FollowingLink, WhatOpensThePortAnewMeansTheAdapterThatWasChosen) {
  session.IsOwnUnit = false;
  session.SerialData = "Any Serial Data";
  follower.SetODataCom();
  follower.CloseODataCom();
  Leave();
  Return();
  EXPECT_TRUE(follower.OpenPlainPort(Handshake::None));
  EXPECT_EQ(plainAdapter.openings.back().device, machine.Path("ttyUSB1")) << "a job that starts or goes on";
  follower.ClosePlainPort();
  follower.SetODataCom();
  EXPECT_EQ(driverAdapter.openings.back().device, machine.Path("ttyUSB1")) << "a line length that is learnt again";
}

TEST_F(FollowingLink, TheBoardOfAnOwnUnitIsLookedForOnTheAdapterToo) {
  ASSERT_TRUE(follower.EnablePort());
  follower.ClosePlainPort();
  Leave();
  Return();
  ASSERT_TRUE(follower.EnablePort());
  EXPECT_EQ(plainAdapter.openings.back().device, machine.Path("ttyUSB1"));
}

TEST_F(FollowingLink, AnAdapterThatIsForgottenOrAnotherPortIsLookedUpInTheList) {
  session.IsOwnUnit = false;
  ASSERT_TRUE(follower.OpenPlainPort(Handshake::None));
  Leave();
  Return();
  follower.ForgetDevice();
  ASSERT_TRUE(follower.OpenPlainPort(Handshake::None));
  EXPECT_EQ(plainAdapter.openings.back().device, machine.Path("ttyUSB0"));
  settings.Save("VELK2", "Protocol", "PortDevice2", machine.Path("ttyUSB1"));
  session.PortNumber = 2;
  ASSERT_TRUE(follower.OpenPlainPort(Handshake::None));
  EXPECT_EQ(plainAdapter.openings.back().device, machine.Path("ttyUSB1"));
}

}  // namespace
}  // namespace velk
