// Stop and the frame's close button while an instrument is waited for: the wait is on the stack below them.

#include <gtest/gtest.h>

#include "shell/shell_rig.h"

namespace velk {
namespace {

class WaitingReader : public testing::TestWithParam<const char*> {
 protected:
  /// A job of the protocol, whose instrument says nothing.
  void StartJob() {
    rig.settings->Save("VELK2", "Protocol", "SerialData", GetParam());
    rig.settings->Save("VELK2", "General", "TheTimeOut", "1000");
    rig.settings->Flush();
    if (std::string(GetParam()) == "formatted and at regular intervals")
      rig.dialogs.Expect("Continue with current serial port settings?", Answer::Yes);
    rig.Start();
    rig.Connect();
    rig.Press("Pause");
    ASSERT_EQ(rig.State().CurrentStatus.english, "Acquiring Data");
  }
  /// Lets a tick wait, and does this in its 20th round.
  void InTheWait(const std::function<void()>& act) {
    int rounds = 0;
    rig.clock.onYield = [&] {
      if (++rounds == 20) act();
    };
    rig.clock.Advance(100);
    rig.clock.onYield = nullptr;
    EXPECT_GE(rounds, 20) << "nothing waited";
  }

  test::ShellRig rig;
};

TEST_P(WaitingReader, LeavesWhenTheFrameIsClosed) {
  StartJob();
  InTheWait([this] {
    rig.dialogs.Expect("Are you sure you want to exit VELK?", Answer::Yes);
    rig.Window().close();
    EXPECT_TRUE(rig.Window().isVisible()) << "the reader is on the stack";
  });
  rig.clock.Advance(1000);
  EXPECT_FALSE(rig.Window().isVisible());
  EXPECT_FALSE(rig.plainPort.open);
}

TEST_P(WaitingReader, LeavesAtStopAndIsReadyForTheNextJob) {
  StartJob();
  InTheWait([this] { rig.Press("Stop"); });
  EXPECT_EQ(rig.State().CurrentStatus.english, "Ready");
  EXPECT_FALSE(rig.plainPort.open);
  rig.Connect();
  EXPECT_EQ(rig.State().CurrentStatus.english, "Ready to Acquire");
  rig.Press("Pause");
  EXPECT_EQ(rig.State().CurrentStatus.english, "Acquiring Data");
  InTheWait([this] { rig.Press("Stop"); });
}

INSTANTIATE_TEST_SUITE_P(Protocols, WaitingReader,
                         testing::Values("formatted and at regular intervals", "sent when requested", "S&S DAS 104",
                                         "Data Taker a", "Data Taker b"));

TEST(WaitingForAPage, LeavesWhenTheFrameIsClosed) {
  test::ShellRig rig;
  rig.settings->Save("VELK2", "Protocol", "SerialData", "ORBEN LUMO through HMI");
  rig.settings->Flush();
  rig.Start();
  rig.pages->page = "";
  rig.pages->meanwhile = [&rig] {
    rig.dialogs.Expect("Are you sure you want to exit VELK?", Answer::Yes);
    rig.Window().close();
    EXPECT_FALSE(rig.Window().isVisible()) << "nothing waits on the stack";
    EXPECT_EQ(rig.pages->cancelled, 1);
  };
  rig.clock.Advance(1000);
  EXPECT_FALSE(rig.Window().isVisible());
}

TEST(WaitingForAPage, LeavesWhenTheFrameIsClosedWhileConnectWaitsForIt) {
  test::ShellRig rig;
  rig.settings->Save("VELK2", "Protocol", "SerialData", "ORBEN LUMO through HMI");
  rig.settings->Flush();
  rig.Start();
  rig.pages->page = "";
  rig.pages->meanwhile = [&rig] {
    rig.dialogs.Expect("Are you sure you want to exit VELK?", Answer::Yes);
    rig.Window().close();
    EXPECT_TRUE(rig.Window().isVisible()) << "Connect is on the stack";
  };
  rig.Press("Acquire");
  rig.clock.Advance(1000);
  EXPECT_FALSE(rig.Window().isVisible());
}

}  // namespace
}  // namespace velk
