// The modes, the commands and the table of a board, byte for byte.

#include "instruments/board/board_text.h"
#include "instruments/board_rig.h"
#include "platform/dialogs/long_task.h"

namespace velk {
namespace {

struct BoardTalk : test::BoardRig {
  /// Milliseconds that some work took.
  template <class Work>
  std::int64_t Took(Work&& work) {
    const std::int64_t begun = clock.Ticks();
    work();
    return clock.Ticks() - begun;
  }
  void ReadTable(const std::string& table) {
    unit.answers["p\r"] = {table};
    ASSERT_FALSE(board.GetChannelsData());
    Sent();
  }
  void Silence() { unit.answers.clear(); }
};

// --- The modes ---

TEST_F(BoardTalk, TradIsAwaitedThreeSecondsAndUntilOkHasCome) {
  device.waiting = "left over";
  EXPECT_EQ(Took([&] { EXPECT_FALSE(board.SendTrad()); }), 3000);
  EXPECT_EQ(Sent(), "Trad\r");
  EXPECT_TRUE(board.InTradMode());
}

TEST_F(BoardTalk, OkCountsInTwoPiecesAmongOtherBytes) {
  unit.answers["Trad\r"] = {};
  int round = 0;
  onRound = [&] {
    ++round;
    if (round == 3500) device.waiting += "12 O";
    if (round == 3600) device.waiting += "K\r\n";
  };
  EXPECT_EQ(Took([&] { EXPECT_FALSE(board.SendTrad()); }), 3600);
}

TEST_F(BoardTalk, OkCountsAmongMoreBytesThanAreKept) {
  unit.answers["Trad\r"] = {std::string(40'000, '7') + "OK" + std::string(40'000, '7')};
  EXPECT_EQ(Took([&] { EXPECT_FALSE(board.SendTrad()); }), 3000);
}

TEST_F(BoardTalk, TradEndsBehindSevenThousandRoundsAndLeavesTheMode) {
  Silence();
  EXPECT_EQ(Took([&] { EXPECT_TRUE(board.SendTrad()); }), 3000 + 7000);
  EXPECT_FALSE(board.InTradMode());
  unit.answers["Trad\r"] = {"OK"};
  EXPECT_FALSE(board.SendTrad());
  Silence();
  EXPECT_TRUE(board.SendTrad());
  EXPECT_TRUE(board.InTradMode()) << "as it was";
}

TEST_F(BoardTalk, RunIsAwaitedUntilTheBoardStreamsAndLeavesTheBytes) {
  ASSERT_FALSE(board.SendTrad());
  unit.answers["r\r"] = {std::string(139, 'x')};
  onRound = [&] {
    if (clock.Ticks() == 3000 + 5000) device.waiting += 'y';
  };
  EXPECT_EQ(Took([&] { EXPECT_FALSE(board.SendRun()); }), 5000);
  EXPECT_EQ(Sent(), "Trad\rr\r");
  EXPECT_FALSE(board.InTradMode());
  EXPECT_EQ(port.BytesWaiting(), 140U);
}

TEST_F(BoardTalk, RunWithFewerBytesIsATimeOut) {
  ASSERT_FALSE(board.SendTrad());
  unit.answers["r\r"] = {std::string(139, 'x')};
  EXPECT_EQ(Took([&] { EXPECT_TRUE(board.SendRun()); }), 3000 + 7000);
  EXPECT_TRUE(board.InTradMode());
}

TEST_F(BoardTalk, OfAFreshBoardNothingIsKnown) {
  const CAdc12nCom fresh(session, platform, [](int) { return std::string("/dev/none"); });
  EXPECT_FALSE(fresh.ChannelsLoaded());
  EXPECT_FALSE(fresh.DataChanged());
  EXPECT_FALSE(fresh.InTradMode());
  EXPECT_FALSE(fresh.MayBeInTradMode());
  EXPECT_FALSE(fresh.Calibrating());
  EXPECT_FALSE(fresh.CommandsEchoed());
  EXPECT_FALSE(fresh.OwesRun());
  EXPECT_EQ(fresh.CommandIssued(), "");
  EXPECT_EQ(fresh.Reply(), "");
}

TEST_F(BoardTalk, AMissingAndAnUnopenedPortAreError5OfTheCaller) {
  const std::string text = "Please call 'SetupComPort' before you call this method.";
  CAdc12nCom fresh(session, platform, [](int) { return std::string("/dev/none"); });
  ExpectError(5, "SendTrad", text, [&] { fresh.SendTrad(); });
  ExpectError(5, "SendRun", text, [&] { fresh.SendRun(); });
  ExpectError(5, "GetChannelsData", text, [&] { fresh.GetChannelsData(); });
  board.CloseComPort();
  ExpectError(5, "SendTrad", text, [&] { board.SendTrad(); });
  ExpectError(5, "SendRun", text, [&] { board.SendRun(); });
  ExpectError(5, "GetChannelsData", text, [&] { board.GetChannelsData(); });
}

TEST_F(BoardTalk, ABoardBetweenModesIsSentToRunAndAskedAgain) {
  unit.answers["Trad\r"] = {"", "OK"};
  board.ResetToSystemDefault();
  EXPECT_EQ(Sent(), "Trad\rr\rTrad\rs \rr\r");
}

TEST_F(BoardTalk, ABoardThatCannotBeReachedIsError6OfTheCaller) {
  const std::string text = "unable to establish communication with the hardware.";
  unit.answers["Trad\r"] = {""};
  ExpectError(6, "ResetToSystemDefault", text, [&] { board.ResetToSystemDefault(); });
  EXPECT_EQ(Sent(), "Trad\rr\rTrad\r");
  ExpectError(6, "StartCalibrateChannel", text, [&] { board.StartCalibrateChannel(1); });
  ExpectError(6, "ResetConter", text, [&] { board.ResetCounter(9, 1); });
  ExpectError(6, "SetDate", text, [&] { board.SetDate(46095.5); });
  ExpectError(6, "SendTrad", text, [&] { board.SaveDataToBoard(); });
  Sent();
  Silence();
  ExpectError(6, "SendTrad", text, [&] { board.SaveDataToBoard(); });
  EXPECT_EQ(Sent(), "Trad\rr\r") << "no third try where it doesn't run either";
}

TEST_F(BoardTalk, DelayWaitsWholeSeconds) {
  EXPECT_EQ(Took([&] { board.delay(2); }), 2000);
  EXPECT_EQ(Took([&] { board.delay(0); }), 0);
}

// --- Commands ---

TEST_F(BoardTalk, ACommandInRunModeIsError14) {
  ExpectError(14, "executCommand", "You can not run command while the hardware running. Please execute SendTrad befor.",
              [&] { board.executCommand("o 1 2"); });
  EXPECT_EQ(Sent(), "");
}

TEST_F(BoardTalk, WithoutEchoACommandIsTakenOnceNothingWaits) {
  ASSERT_FALSE(board.SendTrad());
  EXPECT_TRUE(board.executCommand("o 1 2"));
  EXPECT_EQ(Sent(), "Trad\ro 1 2\r");
  EXPECT_EQ(board.CommandIssued(), "o 1 2");
}

TEST_F(BoardTalk, WithoutEchoABoardThatKeepsSendingIsError10BehindThreeThousandRounds) {
  // The input is cleared ahead of the command, so the first read would find nothing.
  struct Babbling : test::FakeSerialPort {
    using FakeSerialPort::FakeSerialPort;
    void ClearInput() override {}
  } babbling(device);
  board.SetupComPort(&babbling, 1, 19200, 0);
  ASSERT_FALSE(board.SendTrad());
  device.waiting = "x";
  onRound = [&] { device.waiting += "x"; };
  EXPECT_EQ(Took([&] {
              ExpectError(10, "executCommand", "Unable to execute [g 3 0.5]", [&] { board.executCommand("g 3 0.5"); });
            }),
            3000);
}

TEST_F(BoardTalk, WithEchoACommandIsTakenOnceAsManyCharactersHaveCome) {
  ReadTable(Table(22, " 1 2"));
  ASSERT_TRUE(board.CommandsEchoed());
  ASSERT_FALSE(board.SendTrad());
  unit.answers["o 1 2\r"] = {"o 1 2"};
  onRound = [&, first = clock.Ticks()] {
    if (clock.Ticks() == first + 1500) device.waiting += "\r";
  };
  EXPECT_EQ(Took([&] { EXPECT_TRUE(board.executCommand("o 1 2")); }), 1501) << "read in one round, counted in the next";
}

TEST_F(BoardTalk, WithEchoASilentBoardIsError10) {
  ReadTable(Table(22, " 1 2"));
  ASSERT_FALSE(board.SendTrad());
  EXPECT_EQ(
      Took([&] { ExpectError(10, "executCommand", "Unable to execute [s ]", [&] { board.executCommand("s "); }); }),
      1000 + 3000);
}

TEST_F(BoardTalk, CountersAreSetFromBehindTheAnalogChannelsToTheLastOfTheHardware) {
  board.ResetCounter(9, 5000);
  EXPECT_EQ(Sent(), "Trad\ri 9 5000\rr\r") << "above what the text of error 11 names";
  board.ResetCounter(13, 0.5);
  EXPECT_EQ(Sent(), "Trad\ri 13 0.5\rr\r");
  for (const int channel : {8, 0, -1, 14})
    ExpectError(13, "ResetConter",
                "Invalid channel number : " + std::to_string(channel) + ". Only channels 9 to 13 can be set.",
                [&] { board.ResetCounter(channel, 0); });
  ExpectError(11, "ResetConter", "Unable to reset the counter to -1. Only values must be 0 to 4096 only.",
              [&] { board.ResetCounter(9, -1); });
  EXPECT_EQ(Sent(), "");
}

TEST_F(BoardTalk, TheClockIsSetWithTheWeekdayFromSundayAndAYearOfFourDigits) {
  board.SetDate(46088 + 0.25);  // Saturday, 7 March 2026
  EXPECT_EQ(Sent(), "Trad\rC 6 7 3 2026 6 0 0\rr\r");
  board.SetDate(46089 + 86399.0 / 86400);
  EXPECT_EQ(Sent(), "Trad\rC 0 8 3 2026 23 59 59\rr\r");
}

TEST_F(BoardTalk, TheClockIsSetToTheTimeAtWhichTheCommandGoesOut) {
  board.SetDateToNow();
  EXPECT_EQ(Sent(), "Trad\rC 6 14 3 2026 9 30 3\rr\r") << "command mode has taken three seconds";
  clock.SetNow(46095 + 0.5);
  unit.answers["Trad\r"] = {"", "OK"};
  board.SetDateToNow();
  EXPECT_EQ(Sent(), "Trad\rr\rTrad\rC 6 14 3 2026 12 0 16\rr\r") << "and here three seconds, seven, three and three";
}

// --- Calibration ---

TEST_F(BoardTalk, ACalibrationLeavesTheBoardInCommandModeUntilItEnds) {
  board.StartCalibrateChannel(13);
  EXPECT_TRUE(board.Calibrating());
  EXPECT_EQ(Sent(), "Trad\rc 13\r");
  unit.answers["k"] = {"= 12.3456 \r"};
  EXPECT_EQ(board.EndCalibrateChannel(), 12.3456);
  EXPECT_EQ(Sent(), "kf");
  EXPECT_FALSE(board.Calibrating());
  EXPECT_TRUE(board.InTradMode());
}

TEST_F(BoardTalk, OnlyChannelsOfTheHardwareAreCalibrated) {
  for (const int channel : {0, 14, -3})
    ExpectError(15, "StartCalibrateChannel", "Invalid channel number. Channel number must be 1 to 13 only.",
                [&] { board.StartCalibrateChannel(channel); });
  EXPECT_EQ(Sent(), "");
}

TEST_F(BoardTalk, EndingACalibrationThatWasNotBegunIsError15) {
  ExpectError(15, "EndCalibrateChannel",
              "First you must call 'StartCalibrateChannel' befor calling 'EndCalibrateChannel'",
              [&] { board.EndCalibrateChannel(); });
}

TEST_F(BoardTalk, AReadingShorterThanElevenCharactersIsError16BehindTenThousandRounds) {
  board.StartCalibrateChannel(1);
  Sent();
  unit.answers["k"] = {"= 12.345 \r"};
  EXPECT_EQ(Took([&] {
              ExpectError(16, "EndCalibrateChannel", "unable to calibrate the channel.",
                          [&] { board.EndCalibrateChannel(); });
            }),
            10000);
  EXPECT_EQ(Sent(), "kf");
  EXPECT_FALSE(board.Calibrating());
}

TEST_F(BoardTalk, AReadingWithoutAnEqualsSignIsError16) {
  board.StartCalibrateChannel(1);
  unit.answers["k"] = {"12345678901\r"};
  ExpectError(16, "EndCalibrateChannel", "unable to calibrate the channel.", [&] { board.EndCalibrateChannel(); });
}

TEST(CalibrationAnswer, IsReadBehindTheFirstEqualsSignAndAheadOfTheCr) {
  EXPECT_EQ(CalibrationReading("ch 3 = 1.5\r\n"), 1.5);
  EXPECT_EQ(CalibrationReading("a=2=3\rx"), 2);
  EXPECT_EQ(CalibrationReading("=-4.25\r"), -4.25);
  EXPECT_EQ(CalibrationReading("7 and = 12.5"), 7) << "without a CR the whole answer counts";
  EXPECT_EQ(CalibrationReading("= 12.5"), 0);
  EXPECT_EQ(CalibrationReading("\r1=2\r"), 2);
  EXPECT_EQ(CalibrationReading("12.5\r"), std::nullopt);
  EXPECT_EQ(CalibrationReading("=1E999\r"), std::nullopt) << "beyond any number";
  EXPECT_EQ(CalibrationReading(""), std::nullopt);
}

TEST_F(BoardTalk, EveryOtherOperationEndsAnOpenCalibrationFirst) {
  ReadTable(Table(22));
  unit.answers["k"] = {"=12345.678\r"};
  const auto begins = [&](const std::string& sent, const std::function<void()>& work) {
    board.StartCalibrateChannel(2);
    Sent();
    work();
    EXPECT_FALSE(board.Calibrating());
    EXPECT_EQ(Sent(), "kf" + sent);
  };
  begins("Trad\r", [&] { board.SendTrad(); });
  begins("r\r", [&] { board.SendRun(); });
  begins("x\r", [&] { board.executCommand("x"); });
  begins("Trad\rp\rr\r", [&] { board.GetChannelsData(); });
  begins("", [&] { board.GetGain(1); });
  begins("", [&] { board.SetOffset(1, 1); });
  begins("Trad\rr\r", [&] { board.SaveDataToBoard(); });
  begins("Trad\ri 9 1\rr\r", [&] { board.ResetCounter(9, 1); });
  begins("Trad\rs \rr\r", [&] { board.ResetToSystemDefault(); });
  begins("Trad\rC 5 6 3 2026 0 0 0\rr\r", [&] { board.SetDate(46087); });
  begins("", [&] { board.SetupComPort(&port, 1, 19200, 0); });
  board.StartCalibrateChannel(2);
  Sent();
  board.StartCalibrateChannel(3);
  EXPECT_TRUE(board.Calibrating());
  EXPECT_EQ(Sent(), "kfTrad\rc 3\r");
}

// --- Waits that can't go on ---

TEST_F(BoardTalk, AWaitEndsAtOnceWhereThePortGoesAndTellsWhich) {
  onRound = [&] {
    if (clock.Ticks() == 1000) device.HangUp();
  };
  try {
    board.SendTrad();
    ADD_FAILURE();
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), ErrorNumber::DeviceUnavailable);
    EXPECT_STREQ(error.what(), "/dev/port1: the serial device is gone. Is the cable plugged in?");
  }
  EXPECT_EQ(clock.Ticks(), 1000);
  EXPECT_FALSE(board.MayBeInTradMode());
  EXPECT_NO_THROW(board.BringToRunMode());
}

TEST_F(BoardTalk, AWaitEndsAtOnceWithTheProgramAndWhereItIsCancelled) {
  onRound = [&] {
    if (clock.Ticks() == 500) dialogs.SetEnding();
  };
  EXPECT_THROW(board.SendTrad(), TaskCancelled);
  EXPECT_EQ(clock.Ticks(), 500);
  EXPECT_TRUE(board.MayBeInTradMode());
  board.BringToRunMode();
  EXPECT_EQ(Sent(), "Trad\rr\r");
  EXPECT_FALSE(board.MayBeInTradMode());
}

TEST_F(BoardTalk, ACancelledCalibrationIsFinishedOnTheUnit) {
  board.StartCalibrateChannel(1);
  Sent();
  bool cancelled = false;
  board.isCancelled = [&] { return cancelled; };
  onRound = [&] { cancelled = true; };
  EXPECT_THROW(board.EndCalibrateChannel(), TaskCancelled);
  EXPECT_EQ(Sent(), "kf");
  EXPECT_FALSE(board.Calibrating());
}

TEST_F(BoardTalk, ADirectCommandIsAwaitedNowhereAndMakesWhatWasReadStale) {
  ReadTable(Table(22));
  ASSERT_FALSE(board.SendTrad());
  EXPECT_EQ(Took([&] { board.SendDirect("n 3 0.00"); }), 0);
  EXPECT_EQ(Sent(), "Trad\rn 3 0.00\r");
  EXPECT_FALSE(board.ChannelsLoaded());
}

}  // namespace
}  // namespace velk
