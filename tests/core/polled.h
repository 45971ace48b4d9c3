#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/dates.h"
#include "core/rig.h"
#include "instruments/table/protocols.h"

namespace velk::test {

/// The road with a source that the program itself asks for samples.
class Polled : public testing::Test {
 protected:
  /// Three channels, comma and LF, on a protocol that Timer1 reads.
  void Use(std::string_view protocol, const std::string& delimiter = ",", const std::string& terminator = "\n") {
    rig.session.IsOwnUnit = false;
    rig.session.SerialData = std::string(protocol);
    rig.session.Delimiter = delimiter;
    rig.session.Terminator = terminator;
  }
  void ConnectAndStart() {
    rig.acquisition.mnuAcquireConnect_Click();
    rig.acquisition.mnuAcquireStart_Click();
  }
  std::string Now() { return FormatDate(rig.clock.Now(), "hh:mm:ss"); }
  /// An instrument of three channels that is asked, and answers.
  void UseAnsweringInstrument() {
    Use(protocol::SentWhenRequested, ",", "\n");
    rig.session.TheTimeOut = 2;
    for (int i = 1; i <= 3; ++i) rig.session.Parameters[i].CommandString = "V" + std::to_string(i) + "\r\n";
    Respond();
  }
  void Respond() {
    rig.clock.onYield = [this] {
      if (rig.plainPort.written.empty()) return;
      const char number = rig.plainPort.written[1];
      rig.plainPort.written.clear();
      rig.plainPort.Receive(std::string(1, number) + "0.25\r\n");
    };
  }
  void FallSilent() {
    rig.clock.onYield = nullptr;
    rig.plainPort.written.clear();
  }

  Rig rig;
  test::FakeGraphWindow& graph2 = rig.graphs.windows[2];
};

/// The page of an operator panel with these values.
inline std::string PanelPage(const std::vector<std::string>& values) {
  std::string page = "<html><table><tr><td>name</td><td>value</td></tr>";
  for (const std::string& value : values)
    page += "<tr><td><b>name</b></td><td align=right><font>" + value + "&nbsp;psi</font></td></tr>";
  return page + "</table></html>";
}

}  // namespace velk::test
