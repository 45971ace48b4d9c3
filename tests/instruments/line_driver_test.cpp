#include "instruments/link/line_driver.h"

#include <gtest/gtest.h>

#include "support/fake_clock.h"
#include "support/fake_serial_port.h"
#include "support/scripted_dialogs.h"

namespace velk {
namespace {

using test::FakeClock;
using test::FakeDevice;
using test::FakeSerialPort;
using test::ScriptedDialogs;
using Lines = std::vector<std::string>;

struct LineDriverTest : testing::Test {
  LineDriverTest() {
    driver.onDataReady = [this](const std::string& line) { lines.push_back(line); };
    gate.onOpened = [this] { driver.GateOpened(); };
    LineDriverSettings settings;
    settings.port.device = "/dev/unit";
    settings.terminator = "\r\n";
    driver.Open(settings);
  }

  void RunEvents() {
    for (int i = 0; i < 100'000 && (driver.LineWaits() || i < 3); ++i) clock.RunPosted();
  }

  static std::string Line(int i) { return "line " + std::to_string(i) + "\r\n"; }
  void ReceiveLines(int from, int to) {
    for (int i = from; i < to; ++i) device.Receive(Line(i));
  }
  void ExpectLines(int count) const {
    ASSERT_EQ(lines.size(), static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) ASSERT_EQ(lines[i], Line(i));
  }

  Gate gate;
  FakeClock clock{gate};
  FakeDevice device;
  LineDriver driver{clock, gate, std::make_unique<FakeSerialPort>(device)};
  Lines lines;
};

TEST_F(LineDriverTest, GivesThePortItsSettings) {
  LineDriverSettings settings;
  settings.port = {"/dev/ttyS1", 4800, "E", 7, "2", Handshake::XonXoff, 2048};
  driver.Open(settings);
  const SerialSettings& given = device.openings.back();
  EXPECT_EQ(given.device, "/dev/ttyS1");
  EXPECT_EQ(given.baudRate, 4800);
  EXPECT_EQ(given.parity, "E");
  EXPECT_EQ(given.dataBits, 7);
  EXPECT_EQ(given.stopBits, "2");
  EXPECT_EQ(given.handshake, Handshake::XonXoff);
  EXPECT_TRUE(driver.IsOpen());
}

TEST_F(LineDriverTest, NeverDeliversFromInsideTheArrivalOfBytes) {
  device.Receive("one\r\n");
  EXPECT_TRUE(lines.empty());
  RunEvents();
  EXPECT_EQ(lines, (Lines{"one\r\n"}));
}

TEST_F(LineDriverTest, PutsHalvesTogether) {
  for (const char* piece : {"10:2", "0:30 1", " 2\r", "\n10:20:31"}) {
    device.Receive(piece);
    RunEvents();
  }
  EXPECT_EQ(lines, (Lines{"10:20:30 1 2\r\n"}));
}

TEST_F(LineDriverTest, DeliversOneLineAnEventInOrder) {
  ReceiveLines(0, 5);
  for (int i = 1; i <= 5; ++i) {
    clock.RunPosted();
    ExpectLines(i);
  }
}

TEST_F(LineDriverTest, AHandlerThatYieldsNeverMeetsTheNextLine) {
  int depth = 0, deepest = 0;
  driver.onDataReady = [&](const std::string& line) {
    deepest = std::max(deepest, ++depth);
    for (int i = 0; i < 3; ++i) clock.Yield();
    lines.push_back(line);
    for (int i = 0; i < 3; ++i) clock.Yield();
    --depth;
  };
  ReceiveLines(0, 200);
  RunEvents();
  EXPECT_EQ(deepest, 1);
  ExpectLines(200);
}

TEST_F(LineDriverTest, TwentyThousandWaitingLinesAreDeliveredInOrderWithoutDepth) {
  int depth = 0, deepest = 0;
  driver.onDataReady = [&](const std::string& line) {
    deepest = std::max(deepest, ++depth);
    clock.Yield();
    lines.push_back(line);
    --depth;
  };
  ReceiveLines(0, 20'000);
  RunEvents();
  EXPECT_EQ(deepest, 1);
  ExpectLines(20'000);
}

TEST_F(LineDriverTest, LinesThatComeDuringAHandlersYieldWaitForTheirTurn) {
  int next = 1;
  clock.onYield = [&] {
    if (next < 50) device.Receive(Line(next++));
  };
  driver.onDataReady = [&](const std::string& line) {
    lines.push_back(line);
    clock.Yield();
  };
  device.Receive(Line(0));
  RunEvents();
  ExpectLines(50);
}

TEST_F(LineDriverTest, ABoxOnTopOfTheHandlerLetsTheNextLinesThrough) {
  ScriptedDialogs dialogs(gate);
  Lines during;
  driver.onDataReady = [&](const std::string& line) {
    lines.push_back(line);
    if (lines.size() > 1) return;
    dialogs.Expect("trouble", Answer::Ok, [&] {
      for (int i = 0; i < 10; ++i) clock.RunPosted();
      during = lines;
    });
    dialogs.Message({"trouble", {}, Buttons::Ok, BoxIcon::None});
    // The box is gone: this line is still being worked on.
    device.Receive(Line(3));
    for (int i = 0; i < 10; ++i) clock.Yield();
    EXPECT_EQ(lines.size(), 3U);
  };
  ReceiveLines(0, 3);
  RunEvents();
  EXPECT_EQ(during, (Lines{Line(0), Line(1), Line(2)}));
  ExpectLines(4);
}

TEST_F(LineDriverTest, AWaitForAnInstrumentLetsTheNextLinesThrough) {
  driver.onDataReady = [&](const std::string& line) {
    lines.push_back(line);
    if (lines.size() == 1)
      for (int i = 0; i < 5; ++i) clock.WaitRound();
  };
  ReceiveLines(0, 3);
  clock.RunPosted();
  ExpectLines(3);
}

TEST_F(LineDriverTest, WhileTheGateIsShutLinesWait) {
  {
    const GateState shut(gate, GateState::Shut);
    ReceiveLines(0, 3);
    for (int i = 0; i < 10; ++i) clock.RunPosted();
    EXPECT_TRUE(lines.empty());
    EXPECT_TRUE(driver.LineWaits());
  }
  RunEvents();
  ExpectLines(3);
}

TEST_F(LineDriverTest, WhileTheQueueIsFullThePortIsNotReadAndNothingIsLost) {
  std::string sent;
  int count = 0;
  {
    const GateState shut(gate, GateState::Shut);
    while (sent.size() < 3 * LineDriver::kQueueBytes) {
      device.Receive(Line(count));
      sent += Line(count++);
    }
    const std::size_t held = sent.size() - device.waiting.size();
    EXPECT_GE(held, LineDriver::kQueueBytes);
    EXPECT_LT(held, LineDriver::kQueueBytes + 4096);
    const int reads = device.reads;
    device.Receive(Line(count++));
    EXPECT_EQ(device.reads, reads);
  }
  RunEvents();
  ExpectLines(count);
  EXPECT_TRUE(device.waiting.empty());
}

TEST_F(LineDriverTest, AQueueFullOfBytesWithoutTerminatorDoesNotBlock) {
  device.Receive(std::string(10 * LineDriver::kQueueBytes, 'x'));
  EXPECT_TRUE(device.waiting.empty());
  device.Receive("\r\nafter\r\n");
  RunEvents();
  EXPECT_EQ(lines, (Lines{"after\r\n"}));
}

TEST_F(LineDriverTest, DropsALineLongerThan64KiB) {
  device.Receive(std::string(64 * 1024 + 1, 'x'));
  device.Receive("\r\nnext\r\n");
  RunEvents();
  EXPECT_EQ(lines, (Lines{"next\r\n"}));
}

TEST_F(LineDriverTest, CloseEmptiesTheQueue) {
  ReceiveLines(0, 5);
  driver.Close();
  EXPECT_FALSE(driver.IsOpen());
  RunEvents();
  EXPECT_TRUE(lines.empty());
}

TEST_F(LineDriverTest, AfterOpeningAgainNothingOfTheOldLineIsLeft) {
  device.Receive("old half");
  driver.Open(driver.Settings());
  device.Receive("new\r\n");
  RunEvents();
  EXPECT_EQ(lines, (Lines{"new\r\n"}));
}

TEST_F(LineDriverTest, CloseInTheHandlerEndsTheDelivery) {
  driver.onDataReady = [&](const std::string& line) {
    lines.push_back(line);
    driver.Close();
  };
  ReceiveLines(0, 3);
  RunEvents();
  ExpectLines(1);
}

TEST_F(LineDriverTest, AHangUpKeepsWholeLinesAndDropsTheHalfOne) {
  int hangUps = 0;
  driver.onHangUp = [&] { ++hangUps; };
  device.Receive("one\r\ntwo\r\nhalf");
  device.HangUp();
  EXPECT_EQ(hangUps, 1);
  EXPECT_FALSE(driver.IsOpen());
  driver.Reopen(driver.Settings().port.device);
  device.Receive("three\r\n");
  RunEvents();
  EXPECT_EQ(lines, (Lines{"one\r\n", "two\r\n", "three\r\n"}));
  EXPECT_EQ(device.openings.back().device, "/dev/unit");
}

TEST_F(LineDriverTest, ADriverThatIsGoneIsNotCalledByAnEventThatWasOnItsWay) {
  FakeDevice other;
  auto gone = std::make_unique<LineDriver>(clock, gate, std::make_unique<FakeSerialPort>(other));
  gone->onDataReady = [this](const std::string& line) { lines.push_back(line); };
  gone->Open({});
  other.Receive("late\r\n");
  gone.reset();
  RunEvents();
  EXPECT_TRUE(lines.empty());
}

TEST_F(LineDriverTest, AFailureToOpenComesThroughAndLeavesItClosed) {
  device.Vanish();
  EXPECT_THROW(driver.Open(driver.Settings()), PortError);
  EXPECT_FALSE(driver.IsOpen());
}

}  // namespace
}  // namespace velk
