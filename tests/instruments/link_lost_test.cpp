// A link that falls silent, and one whose device goes away.

#include "instruments/link_fixture.h"
#include "model/texts.h"

namespace velk {
namespace {

using test::FakeDevice;
using test::FakeSerialPort;
using test::kDevice;
using test::kLine;
using test::LinkTest;

// --- The watchdog ---

TEST_F(LinkTest, WhileDataComeTheLinkIsNotCycled) {
  link.SetODataCom();
  ReceiveFor(60);
  EXPECT_EQ(driver.openings.size(), 1U);
}

TEST_F(LinkTest, SilenceOfFiveIntervalsIsNotYetTooLongAndAMomentMoreIs) {
  link.SetODataCom();
  clock.Advance(5000);
  link.Timer2_Timer();
  EXPECT_EQ(driver.openings.size(), 1U);
  clock.Advance(10);
  link.Timer2_Timer();
  EXPECT_EQ(driver.openings.size(), 2U);
}

TEST_F(LinkTest, WhatComesManyTimesASecondIsLeftASecondOfSilence) {
  session.SamplingRate = 0.02 / 86400;
  link.SetODataCom();
  clock.Advance(990);  // 49 intervals, ahead of the first tick
  link.Timer2_Timer();
  EXPECT_EQ(driver.openings.size(), 1U);
  clock.Advance(20);
  link.Timer2_Timer();
  EXPECT_EQ(driver.openings.size(), 2U);
}

TEST_F(LinkTest, WithoutAJobASilentUnitIsLeftAloneForLongerAfterEachTry) {
  link.SetODataCom();
  // Tries at 6, 12, 24, 48 and 96 seconds, then each minute.
  const std::pair<int, std::size_t> tries[] = {{6, 1}, {12, 2}, {24, 3}, {48, 4}, {96, 5}, {156, 6}, {576, 13}};
  int now = 0;
  for (const auto& [seconds, count] : tries) {
    clock.Advance(1000 * (seconds - now) - 500);
    EXPECT_EQ(driver.openings.size(), count) << "ahead of second " << seconds;
    clock.Advance(500);
    now = seconds;
    EXPECT_EQ(driver.openings.size(), 1 + count) << "at second " << seconds;
  }
  ExpectImages(true);
}

TEST_F(LinkTest, ALineOrAJobSetsTheWatchdogBackToItsFullPace) {
  link.SetODataCom();
  clock.Advance(100'000);
  EXPECT_EQ(timers.Timer2->Interval(), 60'000);
  driver.Receive(kLine);
  clock.RunPosted();
  EXPECT_EQ(timers.Timer2->Interval(), 3000);
  clock.Advance(100'000);
  EXPECT_EQ(timers.Timer2->Interval(), 60'000);
  link.WatchClosely();
  EXPECT_EQ(timers.Timer2->Interval(), 3000);
}

TEST_F(LinkTest, TheWatchdogWakesNobodyWhileLinesCome) {
  for (const double seconds : {0.1, 1.0, 60.0}) {
    session.SamplingRate = seconds / 86400;
    link.SetODataCom();
    const int before = timers.Timer2->Interval();
    int ticks = 0;
    timers.Timer2->SetHandler([&] { ++ticks; });
    for (int line = 0; line < 100; ++line) {
      clock.Advance(static_cast<int>(seconds * 1000));
      driver.Receive(kLine);
      clock.RunPosted();
    }
    EXPECT_EQ(ticks, 0) << seconds;
    EXPECT_EQ(timers.Timer2->Interval(), before);
    ticks = 0;
    clock.Advance(before);
    EXPECT_EQ(ticks, 1) << seconds;
    link.CloseODataCom();
  }
}

TEST_F(LinkTest, AUnitOfSlowSamplesIsTriedNoLessOftenThanItsSamplesAllow) {
  session.SamplingRate = 60.0 / 86400;
  link.SetODataCom();
  clock.Advance(3'600'000);  // ticks each 180 seconds, the first too early
  EXPECT_EQ(timers.Timer2->Interval(), 180'000);
  EXPECT_EQ(driver.openings.size(), 20U);
}

TEST_F(LinkTest, ASilentUnitOfAJobIsCycledAtEveryTickWithoutABox) {
  Become(text::StatusAcquiringData);
  link.SetODataCom();
  clock.Advance(6000);  // ticks at 3 and 6 seconds
  EXPECT_EQ(driver.openings.size(), 2U);
  clock.Advance(6000);
  EXPECT_EQ(driver.openings.size(), 4U);
  EXPECT_EQ(driver.openings.back().device, kDevice);
  ExpectImages(true);
}

TEST_F(LinkTest, CyclingShowsTheOffImagesInBetween) {
  link.SetODataCom();
  int connectWhileClosed = 0;
  driver.failOpen = [&] { connectWhileClosed = view.images["connect"]; };
  link.CycleODataCom();
  EXPECT_EQ(connectWhileClosed, 16);
  ExpectImages(true);
}

struct LinkInBrackets : LinkTest {
  LinkInBrackets() : LinkTest(kBrackets) {}
  static inline const test::InBrackets kBrackets;
};

TEST_F(LinkInBrackets, TellsAFailureOfCyclingInTheLanguageOfTheBoxes) {
  link.SetODataCom();
  driver.failOpen = [] { throw RuntimeError(ErrorNumber::InvalidArgument); };
  dialogs.Expect("<Invalid procedure call or argument>", Answer::Ok);
  link.CycleODataCom();
  clock.RunPosted();
}

TEST_F(LinkTest, LinesThatWaitAreNoSilence) {
  link.SetODataCom();
  const GateState shut(gate, GateState::Shut);
  driver.Receive(kLine);
  clock.Advance(30'000);
  EXPECT_EQ(driver.openings.size(), 1U);
  EXPECT_TRUE(link.ODataCom1.LineWaits());
}

TEST_F(LinkTest, AReopenThatFailsIsToldOnceAndTriedOn) {
  link.SetODataCom();
  driver.Vanish();
  dialogs.Expect("/dev/ttyVelk: there is no such serial device.", Answer::Ok);
  clock.Advance(60'000);
  EXPECT_EQ(dialogs.shown.size(), 1U);
  EXPECT_TRUE(timers.Timer2->Enabled());
  ExpectImages(false);
  // A try a second, and one more of the watchdog's every third.
  EXPECT_LT(driver.openings.size(), 90U);
  driver.ComeBack();
  clock.Advance(1000);
  EXPECT_TRUE(driver.open);
  ExpectImages(true);
}

// --- Hang-up ---

TEST_F(LinkTest, AHangUpWhileAcquiringIsToldOnceAndDataGoOnWithinThreeSecondsOfTheReturn) {
  Become(text::StatusAcquiringData);
  link.SetODataCom();
  ReceiveFor(5);
  dialogs.Expect("/dev/ttyVelk: the serial device is gone. Data go on by themselves when it is back.", Answer::Ok);
  driver.Vanish();
  driver.HangUp();
  ExpectImages(false);
  clock.Advance(120'000);
  EXPECT_EQ(dialogs.shown.size(), 1U);
  EXPECT_EQ(dialogs.shown[0].buttons, Buttons::Ok);
  driver.ComeBack();
  clock.Advance(3000);
  ASSERT_TRUE(driver.open);
  const std::size_t before = lines.size();
  ReceiveFor(2);
  EXPECT_EQ(lines.size(), before + 2);
  EXPECT_EQ(session.CurrentStatus, text::StatusAcquiringData);
}

TEST_F(LinkTest, TheNextHangUpAfterDataIsToldAgain) {
  link.SetODataCom();
  for (int i = 0; i < 2; ++i) {
    dialogs.Expect("the serial device is gone", Answer::Ok);
    driver.HangUp();
    clock.Advance(2000);
    ASSERT_TRUE(driver.open);
    ReceiveFor(2);
  }
  EXPECT_EQ(dialogs.shown.size(), 2U);
}

TEST_F(LinkTest, ADeviceThatOnlyHangsUpAgainAndAgainIsToldOnce) {
  link.SetODataCom();
  dialogs.Expect("the serial device is gone", Answer::Ok);
  for (int i = 0; i < 20; ++i) {
    driver.HangUp();
    clock.Advance(1500);
  }
  EXPECT_EQ(dialogs.shown.size(), 1U);
}

TEST_F(LinkTest, LinesThatHadWaitedWhenTheDeviceWentAwayAreDeliveredAndDoNotTellOfItsReturn) {
  Become(text::StatusAcquiringData);
  link.SetODataCom();
  {
    const GateState shut(gate, GateState::Shut);
    driver.Receive("a\r\nb\r\nc\r\n");
    driver.Vanish();
    driver.HangUp();
    dialogs.Expect("the serial device is gone", Answer::Ok);
  }
  clock.Advance(20'000);
  EXPECT_EQ(lines.size(), 3U);
  EXPECT_EQ(dialogs.shown.size(), 1U);
}

TEST_F(LinkTest, TheDeviceIsTriedAboutOnceASecondWhileItIsGone) {
  link.SetODataCom();
  dialogs.Expect("the serial device is gone", Answer::Ok);
  driver.Vanish();
  driver.HangUp();
  const std::size_t before = driver.openings.size();
  clock.Advance(30'000);
  EXPECT_GE(driver.openings.size() - before, 29U);
  EXPECT_LE(driver.openings.size() - before, 41U);
}

TEST_F(LinkTest, AnotherAdapterDoesNotTakeThePlaceOfTheLostOne) {
  link.SetODataCom();
  dialogs.Expect("the serial device is gone", Answer::Ok);
  settings.Save("VELK2", "Protocol", "PortDevice1", "/dev/other");
  driver.HangUp();
  clock.Advance(3000);
  EXPECT_EQ(driver.openings.back().device, kDevice);
}

TEST_F(LinkTest, TheHangUpBoxWaitsUntilNoSampleIsRunning) {
  Become(text::StatusAcquiringData);
  link.SetODataCom();
  std::size_t boxesDuringTheSample = 9;
  link.onLine = [&](const std::string&) {
    driver.HangUp();
    for (int i = 0; i < 5; ++i) clock.Yield();
    boxesDuringTheSample = dialogs.shown.size();
    dialogs.Expect("the serial device is gone", Answer::Ok);
  };
  driver.Receive(kLine);
  clock.Advance(100);
  EXPECT_EQ(boxesDuringTheSample, 0U);
  EXPECT_EQ(dialogs.shown.size(), 1U);
}

TEST_F(LinkTest, WhileTheHangUpBoxStandsTheDeviceIsReopenedAndLinesGoOn) {
  Become(text::StatusAcquiringData);
  link.SetODataCom();
  std::size_t linesWhileTheBoxStood = 0;
  dialogs.Expect("the serial device is gone", Answer::Ok, [&] {
    clock.Advance(2000);
    ReceiveFor(3);
    linesWhileTheBoxStood = lines.size();
  });
  driver.HangUp();
  clock.Advance(1);
  EXPECT_EQ(linesWhileTheBoxStood, 3U);
}

TEST_F(LinkTest, WhileItsBoxStandsFurtherLossesAreCountedInItAndNoOtherBoxComes) {
  clock.SetNow(DateSerial(2026, 3, 14) + TimeOfDay(2, 14, 0));
  link.SetODataCom();
  std::vector<std::string> told;
  dialogs.Expect("the serial device is gone", Answer::Ok, [&] {
    for (int i = 0; i < 3; ++i) {
      if (i > 0) driver.HangUp();
      clock.Advance(340'000);
      ReceiveFor(2);
      ASSERT_TRUE(driver.open);
      told.push_back(dialogs.retold.empty() ? "" : dialogs.retold.back().text);
    }
    driver.Vanish();
    driver.HangUp();
  });
  driver.HangUp();
  clock.Advance(1);
  const std::string gone = "/dev/ttyVelk: the serial device is gone. Data go on by themselves when it is back.\n";
  // Lost again 342 seconds after the loss before, at 02:14:00, 02:19:42, 02:25:24; data are back 340 seconds behind it.
  EXPECT_EQ(told, (std::vector<std::string>{gone + "Lost at 02:14, back since 02:19:40.",
                                            gone + "2 times since 02:14, back since 02:25:22.",
                                            gone + "3 times since 02:14, back since 02:31:04."}));
  ASSERT_FALSE(dialogs.retold.empty());
  EXPECT_EQ(dialogs.retold.back().text, gone + "4 times since 02:14.");
  EXPECT_EQ(dialogs.retold.back().subject, dialogs.shown.at(0).subject);
  EXPECT_EQ(dialogs.shown.size(), 1U);
}

TEST_F(LinkTest, ALossOfAnotherDayIsToldWithItsDate) {
  clock.SetNow(DateSerial(2026, 3, 14) + TimeOfDay(23, 59, 0));
  link.SetODataCom();
  dialogs.Expect("the serial device is gone", Answer::Ok, [&] {
    clock.Advance(20'000);
    ReceiveFor(1);
    clock.Advance(100'000);
    ReceiveFor(1);
    driver.HangUp();
  });
  driver.HangUp();
  clock.Advance(1);
  std::vector<std::string> told;
  for (const ShownMessage& each : dialogs.retold) told.push_back(each.text.substr(each.text.find('\n') + 1));
  EXPECT_EQ(told,
            (std::vector<std::string>{"Lost at 23:59, back since 23:59:20.", "2 times since 14-Mar-2026 23:59."}));
}

TEST_F(LinkTest, ALossBehindAnAnsweredBoxIsToldInABoxThatCountsAnew) {
  link.SetODataCom();
  for (int i = 0; i < 2; ++i) {
    ReceiveFor(1);
    dialogs.Expect("the serial device is gone", Answer::Ok);
    driver.HangUp();
    clock.Advance(2000);
  }
  EXPECT_EQ(dialogs.shown.at(0).text, dialogs.shown.at(1).text);
  EXPECT_TRUE(dialogs.retold.empty());
}

TEST_F(LinkTest, APlainPortThatIsLostAgainWhileItsBoxStandsIsCountedInIt) {
  clock.SetNow(DateSerial(2026, 3, 14) + TimeOfDay(2, 14, 0));
  session.IsOwnUnit = false;
  ASSERT_TRUE(link.OpenPlainPort(Handshake::None));
  const auto loseAndReturn = [&] {
    plain.Vanish();
    plain.HangUp();
    clock.Advance(60'000);
    EXPECT_FALSE(link.KeepPlainPortOpen());
    plain.ComeBack();
    clock.Advance(60'000);
    EXPECT_TRUE(link.KeepPlainPortOpen());
    link.PlainDataCame();
  };
  dialogs.Expect("there is no such serial device", Answer::Ok, [&] {
    for (int i = 0; i < 2; ++i) loseAndReturn();
  });
  plain.Vanish();
  plain.HangUp();
  EXPECT_FALSE(link.KeepPlainPortOpen());
  clock.Advance(1);
  ASSERT_EQ(dialogs.shown.size(), 1U);
  // Gone from 02:14 to 02:16 as the box says already, then from 02:17 to 02:18.
  std::vector<std::string> told;
  for (const ShownMessage& each : dialogs.retold) told.push_back(each.text.substr(each.text.find('\n') + 1));
  EXPECT_EQ(told, (std::vector<std::string>{"Lost at 02:14, back since 02:16:00.", "2 times since 02:14.",
                                            "2 times since 02:14, back since 02:18:00."}));
}

TEST_F(LinkTest, AfterItsEndNothingOfTheLinkIsCalled) {
  FakeDevice one, two;
  std::vector<FakeDevice*> devices{&one, &two};
  {
    Link other(session, platform, view, timers, [&devices] {
      FakeDevice& device = *devices.front();
      devices.erase(devices.begin());
      return std::make_unique<FakeSerialPort>(device);
    });
    other.SetODataCom();
    two.Receive(kLine);
    two.HangUp();
  }
  clock.Advance(10'000);
  const GateState shut(gate, GateState::Shut);
  const GateState open(gate, GateState::Open);
  EXPECT_FALSE(gate.onOpened);
}

}  // namespace
}  // namespace velk
