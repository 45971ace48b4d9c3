// The link as the program builds it, on the machine's own port and clock, against a unit of its own process.

#include <gtest/gtest.h>

#include <ctime>

#include "instruments/decoders/own_unit.h"
#include "instruments/link/link.h"
#include "instruments/table/protocols.h"
#include "model/status.h"
#include "model/texts.h"
#include "platform/loop/system_clock.h"
#include "platform/settings/settings.h"
#include "simulators/simulator.h"
#include "support/recording_view.h"
#include "support/scripted_dialogs.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

using namespace test;

struct LinkAndUnit : testing::Test {
  LinkAndUnit() {
    settings.Save("VELK2", "Protocol", "PortDevice1", folder.File("unit"));
    session.SerialData = "KESTA version 4";
    SetProtocolConstants(session);
    session.NumberOfParameters = session.NumberOfChannels;
    session.CurrentStatus = text::StatusAcquiringData;
    link.onLine = [this](const std::string& line) {
      lines.push_back(line);
      clock.Yield();
    };
  }

  Arguments With(Arguments more) const {
    more.insert(more.end(), {"--unit", "kesta4", "--link", folder.File("unit"), "--journal", folder.File("sent")});
    return more;
  }

  /// Runs events until there are so many lines; at most 20 seconds.
  bool Gets(std::size_t count) {
    for (int round = 0; round < 20'000 && lines.size() < count; ++round) {
      clock.WaitRound();
      for (int i = 0; i < 20; ++i) clock.Yield();
    }
    return lines.size() >= count;
  }

  void ExpectWhatTheJournalSays() const {
    auto journal = ReadJournal(folder.File("sent"));
    std::erase_if(journal, [](const SentFrame& frame) { return frame.kind == "gone"; });
    ASSERT_GE(journal.size(), lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) ASSERT_EQ(lines[i], journal[i].text) << i;
  }

  TemporaryFolder folder;
  Gate gate;
  SystemClock clock{gate};
  ScriptedDialogs dialogs{gate};
  SettingsStore settings{folder.File("settings")};
  Platform platform{clock, gate, dialogs, settings, English()};
  Session session;
  RecordingView view;
  MainTimers timers{clock};
  Link link{session, platform, view, timers, MakeSerialPort};
  std::vector<std::string> lines;
};

TEST_F(LinkAndUnit, EveryFrameOfAFloodArrivesOnceAndInOrder) {
  Simulator simulator(With({"--flood"}));
  simulator.NextDevice();
  link.SetODataCom();
  EXPECT_TRUE(Gets(5000));
  link.CloseODataCom();
  EXPECT_EQ(simulator.End(SIGTERM), 0);
  ExpectWhatTheJournalSays();
}

TEST_F(LinkAndUnit, SoundFramesPassTheDecoderAndDamagedOnesMostlyDoNot) {
  Simulator simulator(With({"--interval", "0.002", "--baud", "0", "--damage", "0.1"}));
  simulator.NextDevice();
  link.SetODataCom();
  ASSERT_TRUE(Gets(460));
  link.CloseODataCom();
  lines.resize(460);
  OwnUnitDecoder decoder;
  int accepted = 0, lastLength = 0;
  for (const std::string& line : lines) {
    std::string decoded = line;
    decoder.Orben_ver_3(decoded, session);
    const bool isSound = decoded == line;
    accepted += isSound ? 1 : 0;
    EXPECT_TRUE(!isSound || static_cast<int>(line.size()) == lastLength);
    lastLength = static_cast<int>(line.size());
  }
  // A damaged frame of another length costs itself and the sound one behind it: about 85 in a hundred are left.
  EXPECT_GT(accepted, 350);
  EXPECT_LT(accepted, 430);
}

TEST_F(LinkAndUnit, AfterAHangUpDataGoOnWithinThreeSecondsOfTheReturn) {
  Simulator simulator(With({"--interval", "0.02", "--baud", "0", "--hangup-after", "20", "--return-after", "0.5"}));
  simulator.NextDevice();
  dialogs.Expect(folder.File("unit") + ": the serial device is gone.", Answer::Ok);
  link.SetODataCom();
  ASSERT_TRUE(Gets(20));
  simulator.NextDevice();  // the device is back
  const std::int64_t back = clock.Ticks();
  ASSERT_TRUE(Gets(21));
  EXPECT_LT(clock.Ticks() - back, 3000);
  EXPECT_TRUE(Gets(40));
  link.CloseODataCom();
  EXPECT_EQ(simulator.End(SIGTERM), 0);
  ExpectWhatTheJournalSays();
  EXPECT_EQ(dialogs.shown.size(), 1U);
}

/// What the program takes of the processor while it waits for 2 seconds.
double ProcessorSecondsOfTwo(Clock& clock) {
  const std::clock_t before = std::clock();
  clock.WaitMilliseconds(2000);
  return static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
}

TEST_F(LinkAndUnit, ALostDeviceCostsLittleProcessorTime) {
  {
    Simulator simulator(With({"--interval", "0.02", "--baud", "0"}));
    simulator.NextDevice();
    dialogs.Expect("the serial device is gone.", Answer::Ok);
    link.SetODataCom();
    ASSERT_TRUE(Gets(5));
    EXPECT_EQ(simulator.End(SIGTERM), 0);
  }
  while (link.ODataCom1.IsOpen()) clock.WaitRound();
  const double lost = ProcessorSecondsOfTwo(clock);
  link.CloseODataCom();
  // The rounds of the wait cost something themselves, by the machine up to a tenth of a second.
  EXPECT_LT(lost - ProcessorSecondsOfTwo(clock), 0.1);  // 5% of 2 seconds
}

}  // namespace
}  // namespace velk
