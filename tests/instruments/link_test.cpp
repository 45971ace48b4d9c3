#include "base/dates.h"
#include "core/texts.h"
#include "instruments/link_fixture.h"
#include "model/texts.h"

namespace velk {
namespace {

using test::kDevice;
using test::kLine;
using test::LinkTest;

// --- SetODataCom ---

TEST_F(LinkTest, SetODataComOpensTheDriverWithTheLineSettings) {
  session.SerialData = "Any Serial Data";
  session.IsOwnUnit = false;
  session.PortNumber = 2;
  session.BaudRate = 38400;
  session.Parity = "E";
  session.DataBits = 7;
  session.StopBits = "2";
  session.Handshake = 1;
  session.Terminator = "\n";
  session.TheTimeOut = 9;
  settings.Save("VELK2", "Protocol", "PortDevice2", "/dev/second");
  link.SetODataCom();
  ASSERT_EQ(driver.openings.size(), 1U);
  EXPECT_EQ(driver.openings[0].device, "/dev/second");
  EXPECT_EQ(driver.openings[0].baudRate, 38400);
  EXPECT_EQ(driver.openings[0].parity, "E");
  EXPECT_EQ(driver.openings[0].dataBits, 7);
  EXPECT_EQ(driver.openings[0].stopBits, "2");
  EXPECT_EQ(driver.openings[0].handshake, Handshake::XonXoff);
  const LineDriverSettings& given = link.ODataCom1.Settings();
  EXPECT_EQ(given.portNumber, 2);
  EXPECT_EQ(given.terminator, "\n");
  EXPECT_EQ(given.theTimeOut, 9);
  EXPECT_EQ(given.retryMilliseconds, 1000);
  EXPECT_TRUE(session.UseODataCom);
  EXPECT_FALSE(plain.open);
  ExpectImages(true);
}

TEST_F(LinkTest, SetODataComGivesOwnUnitsTheirDelimiterAndTerminator) {
  session.Delimiter = ";";
  session.Terminator = "\r";
  link.SetODataCom();
  EXPECT_EQ(session.Delimiter, " ");
  EXPECT_EQ(session.Terminator, "\r\n");
}

TEST_F(LinkTest, SetODataComLeavesOtherProtocolsTheirDelimiterAndTerminator) {
  session.SerialData = "formatted and at regular intervals";
  session.IsOwnUnit = false;
  session.Delimiter = ";";
  session.Terminator = "\r";
  link.SetODataCom();
  EXPECT_EQ(session.Delimiter, ";");
  EXPECT_EQ(session.Terminator, "\r");
}

TEST_F(LinkTest, SetODataComDoesNothingForProtocolsOfThePlainPort) {
  session.SerialData = "Data Taker a";
  session.IsOwnUnit = false;
  session.UseODataCom = true;
  link.SetODataCom();
  EXPECT_FALSE(session.UseODataCom);
  EXPECT_TRUE(driver.openings.empty());
  EXPECT_FALSE(timers.Timer2->Enabled());
  EXPECT_TRUE(view.images.empty());
}

TEST_F(LinkTest, TheWatchdogRunsEveryThreeSamplingIntervalsButAtLeastASecond) {
  const std::pair<double, int> cases[] = {{1, 3000}, {5, 15'000}, {0.1, 1000},
                                          {0, 1000}, {-1, 1000},  {3600, 10'800'000}};
  for (const auto& [seconds, interval] : cases) {
    session.SamplingRate = seconds / 86400;
    link.SetODataCom();
    EXPECT_EQ(timers.Timer2->Interval(), interval) << seconds;
    EXPECT_TRUE(timers.Timer2->Enabled());
  }
  session.SamplingRate = 1e9;
  link.SetODataCom();
  EXPECT_GT(timers.Timer2->Interval(), 1'000'000'000);
}

TEST_F(LinkTest, SetODataComSetsTheTimeOfTheLastDataToNow) {
  link.SetODataCom();
  EXPECT_EQ(session.LastDataTime, DateSerial(2026, 3, 14) + TimeOfDay(9, 30, 0));
}

TEST_F(LinkTest, AFailureToOpenIsShownWithTheProceduresName) {
  driver.failOpen = [] { throw PortError(ErrorNumber::PermissionDenied, kDevice, "dialout"); };
  dialogs.Expect(
      "/dev/ttyVelk: no permission to use the serial device. Join the group [dialout] and log in again."
      " - SetODataCom",
      Answer::Cancel);
  link.SetODataCom();
  ASSERT_EQ(dialogs.shown.size(), 1U);
  EXPECT_EQ(dialogs.shown[0].buttons, Buttons::RetryCancel);
  ExpectImages(false);
}

TEST_F(LinkTest, TheOtherFailuresNameTheDeviceToo) {
  const std::pair<ErrorNumber, const char*> cases[] = {
      {ErrorNumber::DeviceUnavailable, "/dev/ttyVelk: there is no such serial device."},
      {ErrorNumber::FileAlreadyOpen, "/dev/ttyVelk: the serial device is in use by another program."},
      {ErrorNumber::PortInvalid, "/dev/ttyVelk: the serial device refuses these line settings."}};
  for (const auto& [number, text] : cases) {
    driver.failOpen = [n = number] { throw PortError(n, kDevice); };
    dialogs.Expect(text, Answer::Cancel);
    link.SetODataCom();
  }
}

TEST_F(LinkTest, ThePlugNamesTheDeviceOfThePortThatWasOpenedLast) {
  settings.Save("VELK2", "Protocol", "PortDevice2", "/dev/second");
  link.SetODataCom();
  link.CloseODataCom();
  EXPECT_EQ(view.toolTips["disconnect"], std::string("Disconnected: ") + kDevice);
  session.PortNumber = 2;
  ASSERT_TRUE(link.OpenPlainPort(Handshake::None));
  EXPECT_EQ(view.toolTips["connect"], "Connected: /dev/second");
  link.ClosePlainPort();
  EXPECT_EQ(view.toolTips["disconnect"], "Disconnected: /dev/second");
}

TEST_F(LinkTest, RetryOpensAgain) {
  driver.Vanish();
  dialogs.Expect(" - SetODataCom", Answer::Retry);
  dialogs.Expect(" - SetODataCom", Answer::Retry, [&] { driver.ComeBack(); });
  link.SetODataCom();
  EXPECT_TRUE(driver.open);
  ExpectImages(true);
}

TEST_F(LinkTest, AfterCancelTheLinkComesUpByItselfOnceTheDeviceIsThere) {
  driver.Vanish();
  dialogs.Expect(" - SetODataCom", Answer::Cancel);
  link.SetODataCom();
  clock.Advance(10'000);
  EXPECT_FALSE(driver.open);
  driver.ComeBack();
  clock.Advance(1000);
  EXPECT_TRUE(driver.open);
  ExpectImages(true);
}

TEST_F(LinkTest, WhatTheDeviceDoesNotHaveIsToldOnceByNameAndTheRestIsUsed) {
  session.SerialData = "Any Serial Data";
  session.IsOwnUnit = false;
  session.Parity = "M";
  session.DataBits = 7;
  session.StopBits = "1.5";
  session.Handshake = 2;
  driver.unsupported =
      plain.unsupported = {PortSetting::DataBits, PortSetting::Parity, PortSetting::StopBits, PortSetting::ModemLines};
  dialogs.Expect(
      "/dev/ttyVelk: the serial device works without these line settings, which it does not have: "
      "data bits 7, parity Mark, stop bits 1.5, modem lines, which the hardware handshake needs",
      Answer::Ok);
  link.SetODataCom();
  EXPECT_TRUE(dialogs.shown.empty()) << "it holds up nothing";
  ExpectImages(true);
  clock.RunPosted();
  EXPECT_EQ(dialogs.shown.size(), 1U);
  EXPECT_EQ(dialogs.shown[0].buttons, Buttons::Ok);
  EXPECT_TRUE(driver.open);

  link.CycleODataCom();
  link.CloseODataCom();
  EXPECT_TRUE(link.OpenPlainPort(Handshake::Rts));
  link.SetODataCom();
  clock.RunPosted();
  EXPECT_EQ(dialogs.shown.size(), 1U) << "told once";

  plain.unsupported = {PortSetting::StopBits};
  dialogs.Expect("does not have: stop bits 1.5", Answer::Ok);
  EXPECT_TRUE(link.OpenPlainPort(Handshake::Rts));
  clock.RunPosted();
}

TEST_F(LinkTest, ANoticeOfTheDeviceOutlivesTheClosingOfTheLink) {
  driver.unsupported = {PortSetting::ModemLines};
  dialogs.Expect("modem lines", Answer::Ok);
  link.SetODataCom();
  link.CloseODataCom();
  clock.RunPosted();
}

// --- EnablePort ---

TEST_F(LinkTest, EnablePortClosesTheDriverOfAnOwnUnitAndSetsUpTheBoard) {
  link.SetODataCom();
  EXPECT_TRUE(link.EnablePort());
  EXPECT_FALSE(driver.open);
  ExpectImages(false);
  EXPECT_FALSE(timers.Timer2->Enabled());
  ASSERT_TRUE(plain.open);
  EXPECT_EQ(plain.openings[0].device, kDevice);
  EXPECT_EQ(plain.openings[0].baudRate, 19200);
  EXPECT_EQ(plain.openings[0].parity, "N");
}

TEST_F(LinkTest, EnablePortLeavesTheDriverOfOtherProtocolsOpen) {
  session.SerialData = "Any Serial Data";
  session.IsOwnUnit = false;
  link.SetODataCom();
  link.EnablePort();
  EXPECT_TRUE(driver.open);
  EXPECT_TRUE(plain.open);
  ExpectImages(true);
}

TEST_F(LinkTest, EnablePortShowsTheBoardsErrors) {
  session.BaudRate = 1200;
  dialogs.Expect("Invalid Boud rate is supplied. Only 2400, 4800, 9600, 19200 and 38400 are supported. - EnablePort",
                 Answer::Cancel);
  EXPECT_FALSE(link.EnablePort());
  session.BaudRate = 9600;
  session.Handshake = 5;
  dialogs.Expect("Invalid hand shaking is supplied. - EnablePort", Answer::Cancel);
  EXPECT_FALSE(link.EnablePort());
}

TEST_F(LinkTest, ABaudRateBeyond16BitsOverflows) {
  session.BaudRate = 38400;
  dialogs.Expect(ErrorText(ErrorNumber::Overflow).English() + " - EnablePort", Answer::Cancel);
  EXPECT_FALSE(link.EnablePort());
  EXPECT_TRUE(plain.openings.empty());
}

TEST_F(LinkTest, AMissingDeviceIsToldOnceByEnablePortAndSetODataComTogether) {
  const auto missing = [] { throw PortError(ErrorNumber::DeviceUnavailable, kDevice); };
  plain.failOpen = driver.failOpen = missing;
  dialogs.Expect("/dev/ttyVelk: there is no such serial device. Is the cable or the adapter plugged in? - EnablePort",
                 Answer::Cancel);
  link.EnablePort();
  link.Board.CloseComPort();
  link.SetODataCom();
  EXPECT_EQ(dialogs.shown.size(), 1U);
  clock.Advance(10'000);
  EXPECT_EQ(dialogs.shown.size(), 1U);
  // The next time it is told again.
  dialogs.Expect(" - SetODataCom", Answer::Cancel);
  link.SetODataCom();
}

TEST_F(LinkTest, ADifferentFailureBehindEnablePortIsTold) {
  plain.failOpen = [] { throw PortError(ErrorNumber::DeviceUnavailable, kDevice); };
  driver.failOpen = [] { throw PortError(ErrorNumber::FileAlreadyOpen, kDevice); };
  dialogs.Expect("no such serial device", Answer::Cancel);
  dialogs.Expect("in use by another program", Answer::Cancel);
  link.EnablePort();
  link.SetODataCom();
}

TEST_F(LinkTest, WhatAnEarlierConnectToldIsToldAgainWhenTheLinkIsSetUpAnew) {
  plain.failOpen = driver.failOpen = [] { throw PortError(ErrorNumber::DeviceUnavailable, kDevice); };
  session.SerialData = "Data Taker a";
  session.IsOwnUnit = false;
  dialogs.Expect(" - EnablePort", Answer::Cancel);
  link.EnablePort();
  session.SerialData = "Any Serial Data";
  dialogs.Expect(" - SetODataCom", Answer::Cancel);
  link.CloseODataCom();
  link.SetODataCom();
}

// --- The plain port of a running job ---

TEST_F(LinkTest, APlainPortWhoseDeviceIsGoneIsTriedOnceASecondAndToldOnce) {
  ASSERT_TRUE(link.OpenPlainPort(Handshake::XonXoff));
  EXPECT_TRUE(link.KeepPlainPortOpen());
  plain.Vanish();
  plain.HangUp();
  dialogs.Expect("/dev/ttyVelk: there is no such serial device.", Answer::Ok);
  const std::size_t before = plain.openings.size();
  for (int tick = 0; tick < 200; ++tick) {
    EXPECT_FALSE(link.KeepPlainPortOpen());
    clock.Advance(50);
  }
  EXPECT_EQ(plain.openings.size() - before, 10U);
  EXPECT_EQ(dialogs.shown.size(), 1U);
  plain.ComeBack();
  EXPECT_TRUE(link.KeepPlainPortOpen());
  EXPECT_EQ(plain.openings.back().handshake, Handshake::XonXoff);
}

TEST_F(LinkTest, AnotherAdapterDoesNotTakeThePlaceOfTheOneThatAJobLost) {
  ASSERT_TRUE(link.OpenPlainPort(Handshake::None));
  settings.Save("VELK2", "Protocol", "PortDevice1", "/dev/other");
  plain.HangUp();
  EXPECT_TRUE(link.KeepPlainPortOpen());
  EXPECT_EQ(plain.openings.back().device, kDevice) << "its values would go into this job's log";
  link.ForgetDevice();
  ASSERT_TRUE(link.OpenPlainPort(Handshake::None));
  EXPECT_EQ(plain.openings.back().device, "/dev/other") << "the next job looks anew";
}

// --- Closing ---

TEST_F(LinkTest, CloseODataComStopsTheWatchdogAndShowsTheOffImages) {
  link.SetODataCom();
  link.CloseODataCom();
  EXPECT_FALSE(driver.open);
  EXPECT_FALSE(timers.Timer2->Enabled());
  ExpectImages(false);
  clock.Advance(60'000);
  EXPECT_EQ(driver.openings.size(), 1U);
}

TEST_F(LinkTest, ClosingOnPurposeEndsTheTriesToReachALostDevice) {
  link.SetODataCom();
  dialogs.Expect("the serial device is gone", Answer::Ok);
  driver.Vanish();
  driver.HangUp();
  clock.Advance(5000);
  link.CloseODataCom();
  const std::size_t tries = driver.openings.size();
  driver.ComeBack();
  clock.Advance(60'000);
  EXPECT_EQ(driver.openings.size(), tries);
}

TEST_F(LinkTest, ClosePlainPortClosesWhatIsOpen) {
  EXPECT_NO_THROW(link.ClosePlainPort());
  link.EnablePort();
  link.ClosePlainPort();
  EXPECT_FALSE(plain.open);
}

// --- Lines ---

TEST_F(LinkTest, ALineGoesToTheTickOnlyWhileAcquiring) {
  for (const MessageText status : {text::StatusReady, text::StatusCheckingHardware, text::StatusReadyToAcquire,
                                   text::StatusAcquiringPaused, text::StatusPlayingBack}) {
    Become(status);
    link.ODataCom1_DataReady(kLine);
  }
  EXPECT_TRUE(lines.empty());
  Become(text::StatusAcquiringData);
  link.ODataCom1_DataReady(kLine);
  EXPECT_EQ(lines, std::vector<std::string>{kLine});
}

TEST_F(LinkTest, TheArrivalIsStoredInAnyStatus) {
  link.SetODataCom();
  clock.Advance(61'000);
  Become(text::StatusReady);
  link.ODataCom1_DataReady(kLine);
  EXPECT_EQ(session.LastDataTime, DateSerial(2026, 3, 14) + TimeOfDay(9, 31, 1));
}

TEST_F(LinkTest, TheArrivalIsStoredThoughTheTickFails) {
  Become(text::StatusAcquiringData);
  int samples = 0;
  link.onLine = [&samples](const std::string&) {
    ++samples;
    throw RuntimeError(ErrorNumber::Overflow);
  };
  dialogs.Expect(ErrorText(ErrorNumber::Overflow).English() + " - ODataCom1_DataReady", Answer::Ok);
  link.ODataCom1_DataReady(kLine);
  EXPECT_EQ(dialogs.shown.back().buttons, Buttons::Ok) << "a Retry would run the sample twice";
  EXPECT_EQ(samples, 1);
  EXPECT_EQ(session.LastDataTime, DateSerial(2026, 3, 14) + TimeOfDay(9, 30, 0));
}

TEST_F(LinkTest, LinesReceivedSinceOpeningAreCountedWhateverTheStatus) {
  Become(text::StatusCheckingHardware);
  link.SetODataCom();
  EXPECT_EQ(link.LinesSeen(), 0);
  ReceiveFor(3);
  EXPECT_EQ(link.LinesSeen(), 3);
  link.SetODataCom();
  EXPECT_EQ(link.LinesSeen(), 0);
}

TEST_F(LinkTest, ReceivedLinesReachTheTickInOrder) {
  Become(text::StatusAcquiringData);
  link.SetODataCom();
  driver.Receive("a\r\nb\r\nc\r\n");
  clock.Advance(10);
  EXPECT_EQ(lines, (std::vector<std::string>{"a\r\n", "b\r\n", "c\r\n"}));
}

}  // namespace
}  // namespace velk
