#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <map>

#include "instruments/board/board.h"
#include "instruments/table/protocols.h"
#include "platform/settings/settings.h"
#include "support/fake_clock.h"
#include "support/fake_serial_port.h"
#include "support/scripted_dialogs.h"
#include "support/temporary_folder.h"

namespace velk::test {

/// A board that answers from a script: what each text that it is sent is answered with, the last answer for ever.
struct ScriptedBoard {
  std::map<std::string, std::deque<std::string>> answers;
  std::string heard;  ///< all that was sent to it

  explicit ScriptedBoard(FakeDevice& device) : device_(device) {
    answers["Trad\r"] = {"OK\r\n"};
    answers["r\r"] = {std::string(140, '7')};
  }

  /// Hears what was written since the last time, and answers.
  void Listen() {
    pending_ += device_.written;
    heard += std::exchange(device_.written, {});
    while (!pending_.empty()) {
      const std::size_t end = pending_[0] == 'k' || pending_[0] == 'f' ? 1 : pending_.find('\r') + 1;
      if (end == 0) return;
      Answer(pending_.substr(0, end));
      pending_.erase(0, end);
    }
  }

 private:
  void Answer(const std::string& text) {
    const auto found = answers.find(text);
    if (found == answers.end() || found->second.empty()) return;
    device_.waiting += found->second.front();
    if (found->second.size() > 1) found->second.pop_front();
  }

  FakeDevice& device_;
  std::string pending_;
};

/// The board class with a scripted board behind its port, set up for a KESTA version 5 of 22 channels.
struct BoardRig : testing::Test {
  BoardRig() {
    Become("KESTA version 5");
    clock.onYield = [this] {
      if (onRound) onRound();
      unit.Listen();
    };
    board.SetupComPort(&port, 1, 19200, 0);
  }

  void Become(const char* name) {
    session.SerialData = name;
    SetProtocolConstants(session);
  }
  /// What was sent since the last time.
  std::string Sent() {
    unit.Listen();
    return std::exchange(unit.heard, {});
  }
  /// A table of so many channels: channel i has offset i, gain i / 2, an upper alarm of 10 i; two headings, an end.
  static std::string Table(int channels, const std::string& behindEach = "") {
    std::string table = "Channels\r\nNo Offset Gain U L\r\n";
    for (int i = 1; i <= channels; ++i) {
      const std::string half = std::to_string(i / 2) + (i % 2 == 0 ? "" : ".5");
      table += std::to_string(i) + " " + std::to_string(i) + " " + half + " " + std::to_string(10 * i) + " NS" +
               behindEach + "\r\n";
    }
    return table + "OK\r\n";
  }
  template <class Work>
  void ExpectError(int n, const std::string& source, const std::string& text, Work&& work) {
    try {
      work();
      ADD_FAILURE() << "no error: " << text;
    } catch (const BoardError& error) {
      EXPECT_EQ(error.Code(), 0x80040000U + static_cast<std::uint32_t>(n));
      EXPECT_EQ(error.Source().English(), source);
      EXPECT_STREQ(error.what(), text.c_str());
    }
  }

  Gate gate;
  FakeClock clock{gate};
  ScriptedDialogs dialogs{gate};
  TemporaryFolder store;
  SettingsStore settings{store.Path().string()};
  Platform platform{clock, gate, dialogs, settings, English()};
  Session session;
  FakeDevice device;
  FakeSerialPort port{device};
  CAdc12nCom board{session, platform, [](int portNumber) { return "/dev/port" + std::to_string(portNumber); }};
  ScriptedBoard unit{device};
  std::function<void()> onRound;
};

}  // namespace velk::test
