#include "core/sources/ticked_source.h"

#include <gtest/gtest.h>

#include "base/dates.h"
#include "core/polled.h"
#include "instruments/table/protocols.h"
#include "platform/ports/port_devices.h"

namespace velk {
namespace {

using test::Polled;

TEST_F(Polled, ConnectOpensThePlainPortAndStartLetsTimer1ReadIt) {
  Use(protocol::DataTakerA, ",", "\r");
  rig.session.Parity = "E";
  rig.session.DataBits = 7;
  ConnectAndStart();
  EXPECT_EQ(rig.session.CurrentStatus.english, "Acquiring Data");
  EXPECT_TRUE(rig.plainPort.open);
  EXPECT_FALSE(rig.linePort.open);
  EXPECT_EQ(rig.plainPort.openings.back().parity, "E") << "an outside instrument has its own port settings";
  EXPECT_EQ(rig.plainPort.openings.back().dataBits, 7);
  EXPECT_TRUE(rig.timers.Timer1->Enabled());
  EXPECT_EQ(rig.timers.Timer1->Interval(), 50);
}

TEST_F(Polled, TakesTheFrameBetweenTwoReturns) {
  Use(protocol::Das104, ",", "\r");
  ConnectAndStart();
  rig.plainPort.Receive("\r" + Now() + ",51.5,2.5,3.5\r");
  rig.clock.Advance(60);
  ASSERT_EQ(graph2.plots.size(), 1u);
  EXPECT_EQ(rig.session.CurrentValue[1], 51.5f);
  EXPECT_EQ(rig.session.CurrentValue[3], 3.5f);
}

TEST_F(Polled, AsksARequestDrivenInstrumentForEachParameter) {
  Use(protocol::SentWhenRequested, ",", "\n");
  for (int i = 1; i <= 3; ++i) rig.session.Parameters[i].CommandString = "V" + std::to_string(i) + "\r\n";
  rig.clock.onYield = [this] {
    if (rig.plainPort.written.empty()) return;
    const char number = rig.plainPort.written[1];
    rig.plainPort.written.clear();
    rig.plainPort.Receive(std::string(1, number) + "0.25\r\n");
  };
  ConnectAndStart();
  rig.clock.Advance(1500);
  rig.clock.onYield = nullptr;
  ASSERT_GE(graph2.plots.size(), 1u);
  EXPECT_EQ(rig.session.CurrentValue[1], 10.25f);
  EXPECT_EQ(rig.session.CurrentValue[2], 20.25f);
  EXPECT_EQ(rig.session.CurrentValue[3], 30.25f);
}

TEST_F(Polled, AnInstrumentThatDoesNotAnswerIsToldAndPausedAndResumeIsEnough) {
  Use(protocol::SentWhenRequested);
  rig.session.TheTimeOut = 2;
  ConnectAndStart();
  rig.session.Parameters[1].name = "Pressure";
  rig.session.Parameters[1].CommandString = "P?\r";
  rig.dialogs.Expect("Time Out Error, check hardware settings", Answer::Ok);
  rig.clock.Advance(4000);
  EXPECT_EQ(rig.dialogs.shown.back().text,
            "Time Out Error, check hardware settings\n\nCom Port 1: " + PortDevice(rig.settings, 1) +
                "\nNothing was heard. Is the unit switched on, and is this its cable?\n"
                "No answer for the channel Pressure");
  EXPECT_EQ(rig.session.CurrentStatus.english, "Acquiring Paused");
  EXPECT_FALSE(rig.session.StopRequested);
  EXPECT_FALSE(rig.timers.Timer1->Enabled());
  EXPECT_FALSE(rig.plainPort.open);
  rig.acquisition.mnuAcquireStart_Click();
  EXPECT_EQ(rig.session.CurrentStatus.english, "Acquiring Data");
  EXPECT_TRUE(rig.plainPort.open);
  rig.acquisition.mnuAcquireStop_Click();
}

TEST_F(Polled, RecordingGoesOnInTheSameFileWhenATimeOutIsResumed) {
  UseAnsweringInstrument();
  rig.acquisition.mnuAcquireConnect_Click();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  rig.clock.Advance(1500);
  const std::size_t before = rig.Rows(rig.Path("job.mdb")).size();
  EXPECT_GE(before, 1u);
  FallSilent();
  rig.dialogs.Expect("Time Out Error, check hardware settings", Answer::Ok);
  rig.clock.Advance(4000);
  EXPECT_EQ(rig.session.CurrentStatus.english, "Acquiring Paused");
  EXPECT_TRUE(rig.session.RecordToDB);
  Respond();
  rig.acquisition.mnuAcquireStart_Click();
  EXPECT_EQ(rig.session.CurrentStatus.english, "Acquiring Data");
  rig.clock.Advance(3000);
  rig.acquisition.mnuAcquireStop_Click();
  EXPECT_GE(rig.Rows(rig.Path("job.mdb")).size(), before + 2);
}

TEST_F(Polled, ATimeOutUnderPauseLeavesNothingStandingInTheWayOfResume) {
  UseAnsweringInstrument();
  ConnectAndStart();
  rig.clock.Advance(1500);
  FallSilent();
  int rounds = 0;
  rig.clock.onYield = [&] {
    if (++rounds == 3) rig.acquisition.mnuAcquireStart_Click();
  };
  rig.dialogs.Expect("Time Out Error, check hardware settings", Answer::Ok);
  rig.clock.Advance(4000);
  EXPECT_EQ(rig.session.CurrentStatus.english, "Acquiring Paused");
  EXPECT_FALSE(rig.session.StopRequested);
  const std::size_t before = graph2.plots.size();
  Respond();
  rig.acquisition.mnuAcquireStart_Click();
  rig.clock.Advance(2000);
  EXPECT_GE(graph2.plots.size(), before + 1);
  rig.acquisition.mnuAcquireStop_Click();
}

TEST_F(Polled, AnUnpluggedPortIsAGapAndIsReadAgainWhenItIsBack) {
  Use(protocol::Das104, ",", "\r");
  ConnectAndStart();
  rig.plainPort.Receive("\r" + Now() + ",51.5,2.5,3.5\r");
  rig.clock.Advance(60);
  ASSERT_EQ(graph2.plots.size(), 1u);
  rig.plainPort.HangUp();
  rig.plainPort.Vanish();
  rig.dialogs.Expect("", Answer::Ok);
  rig.clock.Advance(8000);
  EXPECT_EQ(graph2.plots.size(), 1u) << "nothing is drawn while the unit is gone";
  rig.plainPort.ComeBack();
  rig.clock.onYield = [this] {
    if (rig.plainPort.open && rig.plainPort.waiting.empty()) rig.plainPort.Receive("\r" + Now() + ",91.5,2.5,3.5\r");
  };
  rig.clock.Advance(3000);
  rig.clock.onYield = nullptr;
  EXPECT_GE(graph2.plots.size(), 2u);
  EXPECT_EQ(rig.session.CurrentValue[1], 91.5f);
}

TEST_F(Polled, AnUnpluggedPortIsNoErrorOfTheReaderThatWaitsOnIt) {
  // A reader waits nearly all the time. A box of its own would stand on the tick, and keep the unit from being read
  // again until somebody comes and answers it.
  for (const auto serialData : {protocol::Das104, protocol::DataTakerA, protocol::DataTakerB,
                                protocol::SentWhenRequested, protocol::Formatted}) {
    Use(serialData, ",", "\r");
    if (serialData == protocol::Formatted) rig.dialogs.Expect("Time Out Error, check hardware", Answer::Ok);  // Connect
    ConnectAndStart();
    rig.clock.onYield = [this, rounds = 0]() mutable {
      if (++rounds != 20) return;
      rig.plainPort.HangUp();
      rig.plainPort.Vanish();
    };
    rig.dialogs.Expect("there is no such serial device", Answer::Ok);
    rig.clock.Advance(5000);
    rig.clock.onYield = nullptr;
    EXPECT_EQ(rig.session.CurrentStatus.english, "Acquiring Data") << serialData;
    EXPECT_TRUE(rig.timers.Timer1->Enabled()) << serialData;
    rig.plainPort.ComeBack();
    rig.clock.onYield = [this] {
      if (rig.plainPort.open) rig.acquisition.mnuAcquireStop_Click();
    };
    rig.clock.Advance(2000);
    rig.clock.onYield = nullptr;
    EXPECT_EQ(rig.session.CurrentStatus.english, "Ready") << serialData << " was not opened again";
  }
}

TEST_F(Polled, LinesFromAheadOfTheJobAndFromAPauseAreNotOfTheJob) {
  Use(protocol::Das104, ",", "\r");
  rig.acquisition.mnuAcquireConnect_Click();
  rig.plainPort.Receive("\r" + Now() + ",11.5,2.5,3.5\r" + Now() + ",12.5,2.5,3.5\r");
  rig.plainPort.Receive(Now() + ",21.5");
  rig.acquisition.mnuAcquireStart_Click();
  rig.plainPort.Receive(",2.5,3.5\r");
  rig.clock.Advance(60);
  EXPECT_EQ(rig.session.CurrentValue[1], 21.5f) << "the line under way at Start is of the job";

  rig.acquisition.mnuAcquireStart_Click();
  EXPECT_EQ(rig.session.CurrentStatus.english, "Acquiring Paused");
  rig.plainPort.Receive(Now() + ",31.5,2.5,3.5\r");
  rig.clock.Advance(60'000);
  rig.acquisition.mnuAcquireStart_Click();
  rig.plainPort.Receive(Now() + ",41.5,2.5,3.5\r");
  rig.clock.Advance(60);
  EXPECT_EQ(rig.session.CurrentValue[1], 41.5f);
  EXPECT_EQ(graph2.plots.size(), 2u);
}

TEST_F(Polled, AShortLineIsRejectedInsteadOfReadingItsTimeForAValue) {
  Use(protocol::Das104, ",", "\r");
  ConnectAndStart();
  rig.plainPort.Receive("\r" + Now() + ",51.5,2.5,3.5\r");
  rig.clock.Advance(60);
  rig.plainPort.Receive("\r12:34:56,91.5,92.5\r");
  rig.clock.Advance(60);
  EXPECT_EQ(rig.session.CurrentValue[1], 51.5f);
  EXPECT_EQ(rig.session.CurrentValue[3], 3.5f);
  EXPECT_EQ(rig.session.Data.rejected, 1);
  EXPECT_EQ(rig.session.Data.lastReason.English(), "2 values where 3 are expected");
}

TEST_F(Polled, AFrameBetweenReturnsOfItsOwnIsTakenHoweverTickAndFrameMeet) {
  Use(protocol::Das104, ",", "\r");
  ConnectAndStart();
  rig.timers.Timer1->SetEnabled(false);  // ticks by hand, one a frame
  const std::string frame = "\r" + Now() + ",51.5,2.5,3.5\r";
  // Split in front of each character: the tick finds the part ahead of it, and waits for the other.
  for (std::size_t split = 0; split <= frame.size(); ++split) {
    rig.session.CurrentValue.fill(0);
    rig.plainPort.Receive(frame.substr(0, split));
    rig.clock.onYield = [this, rounds = 0, rest = frame.substr(split)]() mutable {
      if (++rounds == 20) rig.plainPort.Receive(rest);
    };
    rig.sources.Current().Timer1_Timer();
    rig.clock.onYield = nullptr;
    EXPECT_EQ(rig.session.CurrentValue[1], 51.5f) << split;
    EXPECT_EQ(rig.session.CurrentValue[3], 3.5f) << split;
    rig.clock.Advance(1000);
  }
}

TEST_F(Polled, TheFirstFrameBetweenReturnsBehindStartAndResumeIsTakenHoweverTickAndFrameMeet) {
  Use(protocol::Das104, ",", "\r");
  rig.acquisition.mnuAcquireConnect_Click();
  rig.ChooseFile();
  const auto frame = [this](const char* value) { return "\r" + Now() + "," + value + ",2.5,3.5\r"; };
  rig.plainPort.Receive(frame("1"));
  rig.acquisition.mnuAcquireStart_Click();
  rig.timers.Timer1->SetEnabled(false);
  rig.plainPort.Receive(frame("11"));  // all of it before the tick
  rig.sources.Current().Timer1_Timer();
  EXPECT_EQ(rig.session.CurrentValue[1], 11.0f);
  rig.acquisition.mnuAcquireStart_Click();
  rig.plainPort.Receive(frame("2"));
  rig.acquisition.mnuAcquireStart_Click();
  rig.timers.Timer1->SetEnabled(false);
  rig.clock.Advance(1000);
  rig.clock.onYield = [&, rounds = 0]() mutable {
    if (++rounds == 20) rig.plainPort.Receive(frame("21"));  // all of it while the tick waits
  };
  rig.sources.Current().Timer1_Timer();
  rig.clock.onYield = nullptr;
  EXPECT_EQ(rig.session.CurrentValue[1], 21.0f);
  EXPECT_EQ(rig.session.Data.rejected, 0);
}

TEST_F(Polled, ASampleIsOfTheMomentWhenItsLineHasCome) {
  Use(protocol::DataTakerA, ",", "\n");
  rig.acquisition.mnuAcquireConnect_Click();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  double came = 0;
  rig.clock.onYield = [&, rounds = 0]() mutable {
    if (++rounds != 700) return;
    came = rig.clock.Now();
    rig.plainPort.Receive(Now() + ",1,2,3\r\n");
  };
  rig.clock.Advance(60);
  rig.clock.onYield = nullptr;
  ASSERT_EQ(graph2.plots.size(), 1u);
  EXPECT_NEAR(graph2.plots[0].time, came, 0.01 / 86400);
  EXPECT_NEAR(rig.session.Times.LastPlotTime, came, 0.01 / 86400);
}

TEST_F(Polled, TheSecondLineOfAJobIsLoggedThoughItsTickBeganEarly) {
  Use(protocol::DataTakerA, ",", "\n");
  rig.session.SensitivityCriterion = 100;
  rig.clock.Advance(20'000);  // away from the full minute, where the time axis begins
  rig.acquisition.mnuAcquireConnect_Click();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  // A line a second, the first one shortly behind Start. The tick behind it begins its wait at once.
  std::size_t sent = 0;
  rig.clock.onYield = [&, next = rig.clock.Ticks() + 300]() mutable {
    if (rig.clock.Ticks() < next) return;
    next += 1000;
    ++sent;
    rig.plainPort.Receive(Now() + ",1,2,3\r\n");
  };
  while (sent < 4) rig.clock.Advance(60);
  rig.clock.onYield = nullptr;
  rig.acquisition.mnuAcquireStop_Click();
  EXPECT_EQ(rig.Rows(rig.Path("job.mdb")).size(), sent);
}

TEST_F(Polled, StopEndsAReaderThatWaits) {
  Use(protocol::DataTakerB);
  rig.session.TheTimeOut = 30000;
  ConnectAndStart();
  int rounds = 0;
  rig.clock.onYield = [&] {
    if (++rounds == 20) rig.acquisition.mnuAcquireStop_Click();
  };
  rig.clock.Advance(60);
  rig.clock.onYield = nullptr;
  EXPECT_EQ(rig.session.CurrentStatus.english, "Ready");
  EXPECT_FALSE(rig.sources.IsRunning());
}

TEST_F(Polled, ATickNeverEntersItself) {
  Use(protocol::DataTakerB);
  ConnectAndStart();
  bool entered = false;
  rig.clock.onYield = [&] {
    if (std::exchange(entered, true)) return;
    const int skips = rig.session.SampleSkips;
    rig.sources.Current().Timer1_Timer();
    EXPECT_EQ(rig.session.SampleSkips, skips) << "it is no swallowed event either";
    rig.acquisition.mnuAcquireStop_Click();
  };
  rig.clock.Advance(60);
  EXPECT_TRUE(entered);
}

// --- Formatted data: the length is learned first ---

TEST_F(Polled, LearnsTheLengthOfFormattedLinesAndHandsTheDeviceToTheLineDriver) {
  Use(protocol::Formatted, " ", "\r");
  rig.clock.onYield = [this] {
    if (rig.linePort.open && rig.link.LinesSeen() == 0) rig.linePort.Receive("12:00:00 1 2 3\r");
  };
  rig.acquisition.mnuAcquireConnect_Click();
  rig.clock.onYield = nullptr;
  rig.acquisition.mnuAcquireStart_Click();
  EXPECT_TRUE(rig.plainPort.open);
  EXPECT_FALSE(rig.linePort.open) << "one owner of a device at a time";
  rig.plainPort.Receive(" 3\r12:00:01 1 2 3\r");
  rig.clock.Advance(60);
  EXPECT_EQ(rig.session.FormattedLineLength, 15);
  EXPECT_FALSE(rig.plainPort.open);
  EXPECT_TRUE(rig.linePort.open);
  EXPECT_FALSE(rig.timers.Timer1->Enabled());

  rig.clock.Advance(1000);
  rig.linePort.Receive("12:00:02 4 5 6\r");
  rig.clock.RunPosted();
  EXPECT_EQ(rig.session.CurrentValue[3], 6.0f);
  rig.linePort.Receive("12:00:03 40 5 6\r");
  rig.clock.RunPosted();
  EXPECT_EQ(rig.session.CurrentValue[1], 4.0f) << "another length is no sound line";
}

TEST_F(Polled, TellsWhichEndOfAFormattedLineDidNotCome) {
  struct Case {
    const char* bytes;
    const char* text;
    std::string heard;  ///< beneath it
  };
  const std::string port = "\n\nCom Port 1: " + PortDevice(rig.settings, 1) + "\n";
  for (const Case& c : {Case{"12:00:00 1 2", "Time Out Error, check hardware",
                             port + "Bytes heard: 12, but no end of a line. Are the speed and the line end right?"},
                        Case{"2 3\r12:00:00 1", "Time Out Error, check hardware settings",
                             port + "Bytes heard: 14, but no second end of a line. Is the unit sending on?"}}) {
    rig.dialogs.shown.clear();
    Use(protocol::Formatted, " ", "\r");
    rig.dialogs.Expect("Time Out Error, check hardware", Answer::Ok);  // Connect's own wait
    rig.acquisition.mnuAcquireConnect_Click();
    rig.acquisition.mnuAcquireStart_Click();
    rig.plainPort.Receive(c.bytes);
    rig.dialogs.Expect(c.text, Answer::Ok);
    rig.clock.Advance(8000);
    EXPECT_EQ(rig.dialogs.shown.back().text, std::string(c.text) + c.heard);
    EXPECT_EQ(rig.dialogs.shown.back().icon, BoxIcon::Critical);
    EXPECT_EQ(rig.session.CurrentStatus.english, "Acquiring Paused");
    rig.acquisition.mnuAcquireStop_Click();
  }
}

TEST_F(Polled, AProtocolWithoutADriverIsToldAtConnect) {
  Use(protocol::DllFunctionCall);
  rig.dialogs.Expect("This protocol has no driver", Answer::Ok);
  rig.acquisition.mnuAcquireConnect_Click();
  EXPECT_EQ(rig.session.CurrentStatus.english, "Ready to Acquire");
  EXPECT_TRUE(rig.plainPort.openings.empty());
}

}  // namespace
}  // namespace velk
