#pragma once

#include "instruments/link/link.h"

#include <gtest/gtest.h>

#include "platform/settings/settings.h"
#include "support/fake_clock.h"
#include "support/fake_serial_port.h"
#include "support/recording_view.h"
#include "support/scripted_dialogs.h"
#include "support/temporary_folder.h"

namespace velk::test {

inline constexpr const char* kDevice = "/dev/ttyVelk";
inline constexpr const char* kLine = "10:20:30 1 2\r\n";

struct LinkTest : testing::Test {
  LinkTest() : LinkTest(English()) {}
  explicit LinkTest(const Language& language) : dialogs(gate, language) {
    settings.Save("VELK2", "Protocol", "PortDevice1", kDevice);
    session.SerialData = "KESTA version 4";
    session.IsOwnUnit = true;
    session.BaudRate = 19200;
    link.onLine = [this](const std::string& line) { lines.push_back(line); };
  }

  void Become(const MessageText& status) { session.CurrentStatus = status; }
  void ExpectImages(bool on) {
    EXPECT_EQ(view.images["connect"], on ? 17 : 16);
    EXPECT_EQ(view.images["disconnect"], on ? 18 : 15);
  }
  /// A line every second for some seconds.
  void ReceiveFor(int seconds) {
    for (int i = 0; i < seconds; ++i) {
      driver.Receive(kLine);
      clock.Advance(1000);
    }
  }

  Gate gate;
  FakeClock clock{gate};
  ScriptedDialogs dialogs;
  TemporaryFolder store;
  SettingsStore settings{store.Path().string()};
  Platform platform{clock, gate, dialogs, settings, English()};
  Session session;
  RecordingView view;
  MainTimers timers{clock};
  FakeDevice plain, driver;
  std::vector<FakeDevice*> toMake{&plain, &driver};
  Link link{session, platform, view, timers, [this] {
              FakeDevice& device = *toMake.front();
              toMake.erase(toMake.begin());
              return std::make_unique<FakeSerialPort>(device);
            }};
  std::vector<std::string> lines;
};

}  // namespace velk::test
