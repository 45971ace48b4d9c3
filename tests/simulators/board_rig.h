#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include "instruments/table/protocols.h"
#include "instruments/unit/unit_settings.h"
#include "model/status.h"
#include "model/texts.h"
#include "platform/loop/system_clock.h"
#include "platform/settings/settings.h"
#include "support/child_program.h"
#include "support/recording_view.h"
#include "support/scripted_dialogs.h"
#include "support/temporary_folder.h"

namespace velk::test {

/// The machine's clock with shorter waits: a board is waited for by seconds and by thousands of rounds. Who has waited
/// for longer than any answer takes here gets none, and is through with his rounds soon.
class HurriedClock : public SystemClock {
 public:
  using SystemClock::SystemClock;
  std::int64_t Ticks() const override {
    rounds_ = 0;
    return 10 * SystemClock::Ticks();
  }
  void WaitRound() override {
    Yield();
    if (++rounds_ < kRoundsOfAnAnswer) usleep(500);
  }

 private:
  static constexpr int kRoundsOfAnAnswer = 6'000;
  mutable int rounds_ = 0;  ///< since somebody asked for the time
};

/// A link to a simulated board of its own process, as it stands in a job that is ready.
struct UnitRig {
  ~UnitRig() { link.CloseODataCom(); }

  /// Starts the simulator and sets the link up for it.
  void Start(const std::string& name, std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--unit", name, "--link", folder.File("unit"), "--journal", folder.File("sent"),
                                       "--table-file", folder.File("table"), "--interval", "0.05"});
    simulator = std::make_unique<ChildProgram>(std::string(VELK_SIMULATORS) + "/velk_sim_board", arguments);
    simulator->NextLine();
    settings.Save("VELK2", "Protocol", "PortDevice1", folder.File("unit"));
    session.SerialData = name;
    SetProtocolConstants(session);
    session.NumberOfParameters = session.NumberOfChannels;
    session.CurrentStatus = text::StatusReadyToAcquire;
    // A pseudo-terminal has no modem lines for the hardware handshake.
    if (session.Handshake != 0) dialogs.Expect("modem lines", Answer::Ok);
    link.SetODataCom();
  }
  /// Runs events until it holds; at most that long.
  bool RunUntil(const std::function<bool()>& holds, double seconds = 15) {
    const std::int64_t end = clock.SystemClock::Ticks() + static_cast<std::int64_t>(seconds * 1000);
    while (!holds() && clock.SystemClock::Ticks() < end) {
      clock.Yield();
      usleep(1000);
    }
    return holds();
  }
  /// Whether frames come in through the line driver.
  bool Streams() {
    const std::int64_t seen = link.LinesSeen();
    return RunUntil([&] { return link.LinesSeen() > seen; });
  }
  /// The texts of the journal's lines of a kind.
  std::vector<std::string> Journal(const std::string& kind) const {
    std::vector<std::string> texts;
    for (const SentFrame& line : ReadJournal(folder.File("sent")))
      if (line.kind == kind) texts.push_back(line.text);
    return texts;
  }
  /// The board's table, a line a channel.
  std::string TableOfBoard() const { return ReadFile(folder.File("table")); }

  TemporaryFolder folder;
  Gate gate;
  HurriedClock clock{gate};
  ScriptedDialogs dialogs{gate};
  SettingsStore settings{folder.File("settings")};
  Platform platform{clock, gate, dialogs, settings, English()};
  Session session;
  RecordingView view;
  MainTimers timers{clock};
  Link link{session, platform, view, timers, MakeSerialPort};
  UnitAccess access{session, platform, link, timers};
  UnitSettings unit{access};
  std::unique_ptr<ChildProgram> simulator;

 private:
  static std::string ReadFile(const std::string& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
  }
};

}  // namespace velk::test
