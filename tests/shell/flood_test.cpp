// Lines that come faster than samples can be made: where each of them ends. Every line carries its number.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <cstdio>

#include "instruments/link/line_driver.h"
#include "platform/database/command.h"
#include "platform/loop/system_clock.h"
#include "shell/shell_rig.h"
#include "support/pty.h"

namespace velk::test {
namespace {

/// 200 bytes: so wide that a few of them fill the queue.
std::string Line(int number) {
  char text[256];
  std::snprintf(text, sizeof text, "09:30:00 %062d %062d %062d\r\n", number, -number, 0);
  return text;
}

std::string Lines(int from, int to) {
  std::string lines;
  for (int number = from; number <= to; ++number) lines += Line(number);
  return lines;
}

struct Flood : testing::Test {
  Flood() {
    rig.Start();
    rig.State().SensitivityCriterion = 0;  // every sample is drawn and logged
    rig.Connect();
  }

  void StartRecording() {
    rig.dialogs.ExpectSaveFile(log);
    rig.Press("Record");
    rig.Press("Pause");
  }

  /// The first line after Start only shows the decoder how long the next ones are.
  void SendFirstLine() {
    rig.linePort.Receive(Line(0));
    rig.clock.RunPosted();
  }

  bool WasProcessed(int number) { return rig.State().CurrentValue[1] == static_cast<float>(number); }

  ShellRig rig;
  std::string log = rig.folder.File("flood.mdb");
};

TEST_F(Flood, EveryLineBecomesARowInOrderThoughTheQueueIsTooShortForAll) {
  constexpr int kLines = 1600;
  ASSERT_GT(Lines(1, kLines).size(), LineDriver::kQueueBytes);
  StartRecording();
  SendFirstLine();
  rig.linePort.Receive(Lines(1, kLines));
  EXPECT_FALSE(rig.linePort.waiting.empty()) << "what the queue does not hold stays in the port";
  for (int i = 0; i < kLines; ++i) rig.clock.RunPosted();
  EXPECT_TRUE(rig.linePort.waiting.empty());
  EXPECT_EQ(rig.State().SampleSkips, 0);
  rig.Press("Stop");

  const auto connection = Connection::Open(log, OpenMode::ReadOnly);
  Command rows(*connection, "SELECT * FROM logData ORDER BY ID");
  int number = 0;
  while (rows.Next()) {
    ++number;
    ASSERT_EQ(std::get<double>(rows.Field(3)), number);
    ASSERT_EQ(std::get<double>(rows.Field(4)), -number);
  }
  EXPECT_EQ(number, kLines);
}

TEST_F(Flood, WhileAQuestionStandsEveryLineIsEitherSwallowedByTheGuardOrProcessed) {
  constexpr int kLines = 100;
  rig.Press("Pause");
  SendFirstLine();
  int swallowed = 0, processed = 0;
  rig.State().LastPageTime = 0;  // the next sample is the first of a page, and nothing records
  rig.dialogs.Expect("File name not supplied, save the data now?", Answer::No, [&] {
    rig.linePort.Receive(Lines(2, kLines + 1));
    for (int number = 2; number <= kLines + 1; ++number) {
      const int skips = rig.State().SampleSkips;
      rig.clock.RunPosted();
      processed += WasProcessed(number);
      swallowed += rig.State().SampleSkips == skips + 1;
    }
  });
  rig.linePort.Receive(Line(1));
  rig.clock.RunPosted();
  EXPECT_EQ(swallowed, 28) << "the 29th overruns the sample that does not come back, and ends the guard's hold";
  EXPECT_EQ(processed, kLines - 28);
  EXPECT_TRUE(rig.linePort.waiting.empty());
}

TEST_F(Flood, LinesThatComeInAPauseAreTakenFromThePortAndLeaveNoRow) {
  StartRecording();
  SendFirstLine();
  rig.linePort.Receive(Lines(1, 10));
  for (int i = 0; i < 10; ++i) rig.clock.RunPosted();
  rig.Press("Pause");
  rig.linePort.Receive(Lines(11, 3000));
  for (int i = 0; i < 3000; ++i) rig.clock.RunPosted();
  EXPECT_TRUE(rig.linePort.waiting.empty());
  EXPECT_EQ(rig.application->RowsRecorded(), 10);
  rig.Press("Pause");
  rig.linePort.Receive(Line(3001));
  rig.clock.RunPosted();
  EXPECT_EQ(rig.application->RowsRecorded(), 11);
}

/// The real port on a terminal that takes what there is room for.
TEST(FloodOnATerminal, EveryLineReachesASampleThatYieldsInOrder) {
  constexpr int kLines = 5000;
  Pty unit;
  Gate gate;
  SystemClock clock(gate);
  LineDriver driver(clock, gate, MakeSerialPort());
  gate.onOpened = [&] { driver.GateOpened(); };
  int received = 0, depth = 0;
  bool inOrder = true;
  driver.onDataReady = [&](const std::string& line) {
    ++depth;
    clock.Yield();
    inOrder = inOrder && line == Line(++received) && depth == 1;
    clock.Yield();
    --depth;
  };
  LineDriverSettings settings;
  settings.port.device = unit.Device();
  settings.port.baudRate = 19200;
  driver.Open(settings);

  const std::string sent = Lines(1, kLines);
  QElapsedTimer running;
  running.start();
  for (std::size_t at = 0; received < kLines && running.elapsed() < 60'000;) {
    at += unit.Send(std::string_view(sent).substr(at));
    QCoreApplication::processEvents();
  }
  EXPECT_EQ(received, kLines);
  EXPECT_TRUE(inOrder);
  driver.onDataReady = nullptr;
}

}  // namespace
}  // namespace velk::test
