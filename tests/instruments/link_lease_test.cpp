#include "instruments/link/link_lease.h"

#include <stdexcept>

#include "instruments/link/port_listener.h"
#include "instruments/link_fixture.h"

namespace velk {
namespace {

using test::kDevice;
using test::kLine;
using test::LinkTest;

TEST_F(LinkTest, ALeaseGivesThePlainPortFreeAndBringsTheDriverBack) {
  link.SetODataCom();
  {
    const LinkLease lease(link, timers);
    EXPECT_FALSE(driver.open);
    EXPECT_FALSE(timers.Timer2->Enabled());
    ExpectImages(false);
    EXPECT_TRUE(link.EnablePort()) << "the board may be spoken to";
    EXPECT_TRUE(plain.open);
    clock.Advance(60'000);
    EXPECT_FALSE(driver.open) << "no watchdog takes the device away";
  }
  EXPECT_FALSE(plain.open);
  EXPECT_TRUE(driver.open);
  EXPECT_EQ(driver.openings.back().device, kDevice);
  EXPECT_TRUE(timers.Timer2->Enabled());
  ExpectImages(true);
  clock.Advance(5000);
  EXPECT_EQ(driver.openings.size(), 2U) << "the silence of the lease is not the unit's";
}

TEST_F(LinkTest, ALeaseEndsWhateverTheWayItsScopeIsLeft) {
  link.SetODataCom();
  timers.Timer5->SetEnabled(true);
  try {
    const LinkLease lease(link, timers);
    throw std::runtime_error("a search that failed");
  } catch (const std::runtime_error&) {
  }
  EXPECT_TRUE(driver.open);
  EXPECT_TRUE(timers.Timer5->Enabled());
  ExpectImages(true);
}

TEST_F(LinkTest, ALeaseStillsTheTimersThatWereOnAndNoOthersRunBehindIt) {
  timers.Timer1->SetEnabled(true);
  timers.Timer4->SetEnabled(true);
  timers.Timer3->SetEnabled(true);
  {
    const LinkLease lease(link, timers);
    EXPECT_FALSE(timers.Timer1->Enabled());
    EXPECT_FALSE(timers.Timer4->Enabled());
    EXPECT_TRUE(timers.Timer3->Enabled()) << "a playback touches no port";
  }
  EXPECT_TRUE(timers.Timer1->Enabled());
  EXPECT_TRUE(timers.Timer4->Enabled());
  EXPECT_FALSE(timers.Timer5->Enabled());
}

TEST_F(LinkTest, ALeaseBringsThePlainPortBackWithItsOwnSettings) {
  session.IsOwnUnit = false;
  session.BaudRate = 4800;
  ASSERT_TRUE(link.OpenPlainPort(Handshake::XonXoff));
  {
    const LinkLease lease(link, timers);
    EXPECT_FALSE(plain.open);
    session.BaudRate = 19200;
    EXPECT_TRUE(link.OpenPlainPort(Handshake::None));
    session.BaudRate = 4800;
  }
  EXPECT_TRUE(plain.open);
  EXPECT_EQ(plain.openings.back().baudRate, 4800);
  EXPECT_EQ(plain.openings.back().handshake, Handshake::XonXoff);
}

TEST_F(LinkTest, ALeaseOfALinkThatWasNeverSetUpOpensNothing) {
  { const LinkLease lease(link, timers); }
  EXPECT_TRUE(driver.openings.empty());
  EXPECT_TRUE(plain.openings.empty());
  EXPECT_FALSE(timers.Timer2->Enabled());
}

TEST_F(LinkTest, ADeviceThatIsGoneAtTheEndOfALeaseIsToldOnceAndTriedOn) {
  link.SetODataCom();
  {
    const LinkLease lease(link, timers);
    driver.Vanish();
  }
  ExpectImages(false);
  dialogs.Expect("there is no such serial device", Answer::Ok);
  clock.Advance(3000);
  driver.ComeBack();
  clock.Advance(1500);
  EXPECT_TRUE(driver.open);
  EXPECT_EQ(dialogs.shown.size(), 1U);
}

TEST_F(LinkTest, ALossThatWasUntoldWhenALeaseWasTakenIsToldBehindIt) {
  for (const bool isBack : {false, true}) {
    driver.ComeBack();
    link.SetODataCom();
    ReceiveFor(1);
    {
      const GateState shut(gate, GateState::Shut);
      driver.Vanish();
      driver.HangUp();
      const LinkLease lease(link, timers);
      const GateState open(gate, GateState::Open);
      clock.Advance(5000);
      EXPECT_EQ(dialogs.shown.size(), isBack ? 1U : 0U) << "not over what stands meanwhile";
      if (isBack) driver.ComeBack();
    }
    dialogs.Expect("the serial device is gone", Answer::Ok);
    clock.Advance(3000);
    EXPECT_EQ(dialogs.shown.size(), isBack ? 2U : 1U);
    EXPECT_EQ(driver.open, isBack);
  }
}

TEST_F(LinkTest, ALossOfThePlainPortThatWasToldIsNotToldAgainBehindALease) {
  session.IsOwnUnit = false;
  ASSERT_TRUE(link.OpenPlainPort(Handshake::None));
  plain.Vanish();
  plain.HangUp();
  dialogs.Expect("there is no such serial device", Answer::Ok);
  EXPECT_FALSE(link.KeepPlainPortOpen());
  clock.Advance(2000);
  { const LinkLease lease(link, timers); }
  EXPECT_FALSE(link.KeepPlainPortOpen());
  clock.Advance(2000);
  EXPECT_EQ(dialogs.shown.size(), 1U);
}

TEST_F(LinkTest, ALeaseForAnotherInstrumentEndsWithTheLinkOfThatOne) {
  link.SetODataCom();
  timers.Timer5->SetEnabled(true);
  {
    LinkLease lease(link, timers);
    lease.SetUpAnew();
    session.BaudRate = 9600;
  }
  EXPECT_TRUE(driver.open);
  EXPECT_EQ(driver.openings.back().baudRate, 9600);
  EXPECT_FALSE(timers.Timer5->Enabled()) << "it fetched for the old one";
  {
    LinkLease lease(link, timers);
    lease.SetUpAnew();
    session.IsOwnUnit = false;
    session.SerialData = "Data Taker a";
  }
  EXPECT_FALSE(driver.open) << "the new one speaks on the plain port";
  EXPECT_FALSE(timers.Timer2->Enabled());
}

TEST_F(LinkTest, AListenerBorrowsThePlainPortAndGivesItBack) {
  link.SetODataCom();
  std::string heard;
  {
    PortListener listener(link, timers);
    listener.Listen({.device = "/dev/ttyOther", .baudRate = 4800}, [&](const std::string& bytes) { heard += bytes; });
    EXPECT_FALSE(driver.open);
    ASSERT_TRUE(plain.open);
    EXPECT_EQ(plain.openings.back().device, "/dev/ttyOther");
    EXPECT_EQ(plain.openings.back().baudRate, 4800);
    plain.Receive("1 2");
    plain.Receive(" 3\r");
    clock.Advance(10);
    EXPECT_EQ(heard, "1 2 3\r");
    listener.Stop();
    EXPECT_FALSE(plain.open);
    EXPECT_TRUE(driver.open) << "the link is as it was";
  }
  EXPECT_TRUE(timers.Timer2->Enabled());
}

TEST_F(LinkTest, AListenerGivesTheLinkBackWhereItsPortDoesNotOpen) {
  link.SetODataCom();
  plain.failOpen = [] { throw PortError(ErrorNumber::DeviceUnavailable, "/dev/ttyOther"); };
  PortListener listener(link, timers);
  EXPECT_THROW(listener.Listen({.device = "/dev/ttyOther"}, [](const std::string&) {}), PortError);
  EXPECT_TRUE(driver.open);
}

}  // namespace
}  // namespace velk
