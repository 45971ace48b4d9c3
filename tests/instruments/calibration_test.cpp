#include "instruments/calibration/calibration.h"

#include <gtest/gtest.h>

#include "instruments/calibration/read_reference.h"
#include "instruments/calibration/reset_value.h"
#include "instruments/link_fixture.h"
#include "model/help_topics.h"

namespace velk {
namespace {

TEST(ScaleOf, GivesEachReadingItsReference) {
  const auto scale = ScaleOf({{{0, 4}, {100, 20}}});  // 4 to 20 mA for 0 to 100 bar
  ASSERT_TRUE(scale);
  EXPECT_EQ(scale->gain, 6.25);
  EXPECT_EQ(scale->offset, -25);
  EXPECT_EQ(4 * scale->gain + scale->offset, 0) << "a reference of 0 is one";
  EXPECT_EQ(20 * scale->gain + scale->offset, 100);
}

TEST(ScaleOf, TakesReferencesInAnyOrder) {
  const auto scale = ScaleOf({{{10, 5}, {-10, 9}}});
  ASSERT_TRUE(scale);
  EXPECT_EQ(scale->gain, -5);
  EXPECT_EQ(scale->offset, 35);
}

TEST(ScaleOf, IsNoneForEqualReadings) {
  EXPECT_FALSE(ScaleOf({{{0, 4}, {100, 4}}}));
}

const std::string kTimeOut =
    std::string("Time Out Error, check hardware settings\n\nCom Port 1: ") + test::kDevice + "\n";

/// A link to an instrument that a calibration reads.
class ReadingReferences : public test::LinkTest {
 protected:
  ReadingReferences() {
    session.IsOwnUnit = false;
    session.NumberOfParameters = 2;
    session.Delimiter = ",";
    session.Terminator = "\r\n";
    session.TheTimeOut = 5;
    session.SamplingRate = 1.0 / 86400;
  }

  void Formatted() {
    session.SerialData = "formatted and at regular intervals";
    // A line each 100 ms, the first one under way.
    clock.onYield = [this] {
      if (!plain.open || clock.Ticks() < nextLine) return;
      nextLine = clock.Ticks() + 100;
      plain.Receive(lineNumber == 0 ? std::string("3,99\r\n") : Line(lineNumber));
      ++lineNumber;
    };
  }
  static std::string Line(int number) {
    const std::string two = std::to_string(10 + number % 90);
    return "09:30:" + two + ",1." + two + ",2." + two + "\r\n";
  }
  void Requested() {
    session.SerialData = "sent when requested";
    session.Parameters[1].CommandString = "A?\r";
    session.Parameters[2].CommandString = "B?\r";
    clock.onYield = [this] {
      if (!plain.open || plain.written.empty()) return;
      plain.waiting += plain.written == "A?\r" ? "11.5\r\n" : "22.5\r\n";
      plain.written.clear();
    };
  }

  std::optional<double> Read(int parameter) {
    return ReadReference(session, platform, link, timers, parameter, [this](double reading) {
      shown.push_back(reading);
      if (stopBehind > 0 && static_cast<int>(shown.size()) == stopBehind) session.StopRequested = true;
    });
  }

  std::int64_t nextLine = 0;
  int lineNumber = 0;
  int stopBehind = 0;
  std::vector<double> shown;
};

TEST_F(ReadingReferences, TakeFifteenWholeLinesOfAnInstrumentThatSends) {
  Formatted();
  // Lines 0 and 1 go for the length; 2 is the first reading, 16 the last.
  const auto reading = Read(2);
  EXPECT_EQ(shown.size(), 15U);
  EXPECT_EQ(shown.front(), 2.12);
  EXPECT_EQ(reading, 2.26);
  EXPECT_EQ(session.FormattedLineLength, static_cast<int>(Line(1).size()));
}

TEST_F(ReadingReferences, PassOverALineThatWasUnderWay) {
  Formatted();
  session.FormattedLineLength = static_cast<std::int16_t>(Line(1).size());
  Read(1);
  EXPECT_EQ(shown.front(), 1.11) << "not the 99 of the cut one";
}

TEST_F(ReadingReferences, AskAnInstrumentThatIsAsked) {
  Requested();
  EXPECT_EQ(Read(2), 22.5);
  EXPECT_EQ(shown, std::vector<double>(15, 22.5));
  EXPECT_EQ(Read(1), 11.5);
}

TEST_F(ReadingReferences, AreUnscaled) {
  Requested();
  session.Parameters[1].Gain = 3;
  session.CurrentParameters[1].Gain = 3;
  EXPECT_EQ(Read(1), 11.5);
}

TEST_F(ReadingReferences, EndEarlierByStop) {
  Formatted();
  stopBehind = 3;
  EXPECT_EQ(Read(1), 1.14);
  EXPECT_EQ(shown.size(), 3U);
  EXPECT_FALSE(session.StopRequested) << "the next job records";
}

TEST_F(ReadingReferences, BeginThoughAStopWasLeftOver) {
  Requested();
  session.StopRequested = true;
  EXPECT_EQ(Read(1), 11.5);
}

TEST_F(ReadingReferences, TellATimeOut) {
  session.SerialData = "formatted and at regular intervals";
  dialogs.Expect("Time Out Error, check hardware settings", Answer::Ok);
  const auto begun = clock.Ticks();
  EXPECT_EQ(Read(1), std::nullopt);
  EXPECT_NEAR(static_cast<double>(clock.Ticks() - begun), 5000, 50);
  EXPECT_EQ(dialogs.shown.back().title, "Time Out Error");
  EXPECT_EQ(dialogs.shown.back().text, kTimeOut + "Nothing was heard. Is the unit switched on, and is this its cable?");
  EXPECT_FALSE(session.StopRequested);
}

TEST_F(ReadingReferences, TellWhatWasHeardAheadOfATimeOut) {
  session.SerialData = "formatted and at regular intervals";
  clock.onYield = [this] {
    if (plain.open && lineNumber++ == 0) plain.Receive("12:00:00,1");
  };
  dialogs.Expect("Time Out Error, check hardware settings", Answer::Ok);
  EXPECT_EQ(Read(1), std::nullopt);
  EXPECT_EQ(dialogs.shown.back().text,
            kTimeOut + "Bytes heard: 10, but no end of a line. Are the speed and the line end right?");
}

TEST_F(ReadingReferences, TellThatNoLinePassedTheCheckOfItsProtocol) {
  Formatted();
  session.NumberOfParameters = 3;  // a line has two values
  dialogs.Expect("Time Out Error, check hardware settings", Answer::Ok);
  EXPECT_EQ(Read(1), std::nullopt);
  EXPECT_TRUE(dialogs.shown.back().text.starts_with(kTimeOut + "Bytes heard: "));
  EXPECT_TRUE(dialogs.shown.back().text.ends_with(", but no line that passes the check of its protocol."));
}

TEST_F(ReadingReferences, TellATimeOutOfAnInstrumentThatIsAsked) {
  session.SerialData = "sent when requested";
  session.Parameters[1].CommandString = "A?\r";
  session.Parameters[1].name = "Pressure";
  const std::string silence = kTimeOut + "Nothing was heard. Is the unit switched on, and is this its cable?\n";
  dialogs.Expect("Time Out Error, check hardware settings", Answer::Ok);
  EXPECT_EQ(Read(1), std::nullopt);
  EXPECT_EQ(dialogs.shown.back().text, silence + "No answer for the channel Pressure");

  session.Parameters[1].CommandString.clear();
  dialogs.Expect("Time Out Error, check hardware settings", Answer::Ok);
  EXPECT_EQ(Read(1), std::nullopt);
  EXPECT_EQ(dialogs.shown.back().text,
            silence + "No command is entered in Edit Settings, Serial Port, for the channel Pressure");
}

TEST_F(ReadingReferences, OpenThePortWithTheSettingsAndGiveItBack) {
  Formatted();
  session.BaudRate = 2400;
  session.Parity = "E";
  session.DataBits = 7;
  session.StopBits = "2";
  link.SetODataCom();
  ASSERT_TRUE(driver.open);
  Read(1);
  EXPECT_EQ(plain.openings.back().baudRate, 2400);
  EXPECT_EQ(plain.openings.back().parity, "E");
  EXPECT_EQ(plain.openings.back().dataBits, 7);
  EXPECT_EQ(plain.openings.back().stopBits, "2");
  EXPECT_FALSE(plain.open);
  EXPECT_TRUE(driver.open) << "the driver has its device again";
}

TEST_F(ReadingReferences, LeaveToNobodyElseWhatComes) {
  Requested();
  int taken = 0;
  link.MSComm1->onReadyRead = [&] { ++taken; };
  Read(1);
  EXPECT_EQ(taken, 0);
  ASSERT_TRUE(link.MSComm1->onReadyRead != nullptr);
}

TEST_F(ReadingReferences, AreNoneWithoutAPort) {
  session.SerialData = "sent when requested";
  plain.failOpen = [] { throw PortError(ErrorNumber::DeviceUnavailable, "/dev/ttyVelk"); };
  dialogs.Expect("no such serial device", Answer::Cancel);
  EXPECT_EQ(Read(1), std::nullopt);
}

TEST(CanReadReferences, IsForFormattedAndRequestedInstrumentsOnly) {
  Session session;
  const auto can = [&](const char* protocol) {
    session.SerialData = protocol;
    return CanReadReferences(session);
  };
  EXPECT_TRUE(can("formatted and at regular intervals"));
  EXPECT_TRUE(can("sent when requested"));
  for (const char* other :
       {"KESTA version 3", "S&S DAS 104", "Any Serial Data", "HPT - Honeywell eZtrend", "OPC Server"})
    EXPECT_FALSE(can(other)) << other;
}

// --- The reset of a value ---

class ResettingValues : public ReadingReferences {
 protected:
  ResettingValues() {
    session.SerialData = "sent when requested";
    session.Parameters[1].name = "Counter";
    session.Parameters[1].ResetCommand = "R1=\r";
    session.Parameters[2].name = "Depth";
    link.OpenPlainPort(Handshake::None);
  }
  void Reset(const char* name, std::optional<std::string> value) {
    dialogs.ExpectChoice("Reset Parameter Value", name);
    dialogs.ExpectInput("Enter the new value", std::move(value));
    reset.mnuToolsReset_Click();
  }

  bool inUse = false;
  ResetValue reset{session, platform, link, [this] { return inUse; }};
};

TEST_F(ResettingValues, SendTheNumberAheadOfTheLastCharacter) {
  EXPECT_EQ(ResetText("R1=\r", "12.5"), "R1=12.5\r");
  EXPECT_EQ(ResetText("\r", "7"), "7\r");
  Reset("Counter", "100");
  EXPECT_EQ(plain.written, "R1=100\r");
  EXPECT_EQ(dialogs.listsAsked.back().prompt, "Select Parameter");
  EXPECT_EQ(dialogs.listsAsked.back().helpTopic, topic::Parameters);
  EXPECT_EQ(dialogs.listsAsked.back().entries, (std::vector<std::string>{"Counter", "Depth"}));
  EXPECT_EQ(dialogs.inputTitles.back(), "Resetting parameter value");
}

TEST_F(ResettingValues, SendTheDigitsAsTheyWereTypedWithAPoint) {
  Reset("Counter", " 007,50 ");
  EXPECT_EQ(plain.written, "R1=007.50\r");
}

TEST_F(ResettingValues, EndForAnEmptyReply) {
  Reset("Counter", "");
  Reset("Counter", std::nullopt);
  EXPECT_EQ(plain.written, "");
}

TEST_F(ResettingValues, AskAgainForWhatIsNoNumber) {
  dialogs.ExpectChoice("Reset Parameter Value", "Counter");
  dialogs.ExpectInput("Enter the new value", "zero");
  dialogs.Expect("This is no number", Answer::Ok);
  dialogs.ExpectInput("Enter the new value", "1,234.5");
  dialogs.Expect("This number can be read in two ways", Answer::Ok);
  dialogs.ExpectInput("Enter the new value", "0");
  reset.mnuToolsReset_Click();
  EXPECT_EQ(plain.written, "R1=0\r");
}

TEST_F(ResettingValues, SayThatAParameterHasNoCommand) {
  dialogs.ExpectChoice("Reset Parameter Value", "Depth");
  dialogs.Expect("This parameter has no reset command", Answer::Ok);
  reset.mnuToolsReset_Click();
}

TEST_F(ResettingValues, WaitUntilAnAnswerHasCome) {
  inUse = true;
  Reset("Counter", "1");
  Reset("Counter", "2");
  clock.Advance(1000);
  EXPECT_EQ(plain.written, "");
  inUse = false;
  clock.Advance(100);
  EXPECT_EQ(plain.written, "R1=1\rR1=2\r");
}

TEST_F(ResettingValues, TellThatThePortIsClosed) {
  link.ClosePlainPort();
  dialogs.ExpectChoice("Reset Parameter Value", "Counter");
  dialogs.ExpectInput("Enter the new value", "1");
  dialogs.Expect("The port is not open - mnuToolsReset_Click", Answer::Cancel);
  reset.mnuToolsReset_Click();
}

}  // namespace
}  // namespace velk
