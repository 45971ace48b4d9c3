// Samples of polled instruments go on behind boxes, though the box stands on a tick that waits.

#include <gtest/gtest.h>

#include "core/polled.h"

namespace velk {
namespace {

using test::PanelPage;

class BehindBoxes : public test::Polled {};

TEST_F(BehindBoxes, SamplesGoOnBehindABoxThatStandsOverAWaitingTick) {
  UseAnsweringInstrument();
  ConnectAndStart();
  rig.clock.Advance(1500);
  const std::size_t before = graph2.plots.size();
  std::size_t behindTheBox = 0;
  rig.dialogs.Expect("the operator reads", Answer::Ok, [&] {
    rig.clock.Advance(8000);
    behindTheBox = graph2.plots.size();
  });
  const auto respond = rig.clock.onYield;
  bool shown = false;
  rig.clock.onYield = [&] {
    if (rig.sources.IsRunning() && rig.session.SampleBusy && !std::exchange(shown, true))
      rig.dialogs.Message({"the operator reads", ""});
    respond();
  };
  rig.clock.Advance(1500);
  EXPECT_GE(behindTheBox, before + 3);
  EXPECT_EQ(rig.session.CurrentStatus.english, "Acquiring Data") << "the tick below the box has not run out of time";
  const std::size_t after = graph2.plots.size();
  rig.clock.Advance(3000);
  EXPECT_GE(graph2.plots.size(), after + 2);
  rig.acquisition.mnuAcquireStop_Click();
  EXPECT_FALSE(rig.sources.IsRunning());
}

TEST_F(BehindBoxes, AReaderThatLostItsPortToALaterTickGivesNothing) {
  Use(protocol::DataTakerA, ",", "\n");
  ConnectAndStart();
  rig.dialogs.Expect("the operator reads", Answer::Ok, [&] {
    rig.plainPort.Receive("00\r\n" + Now() + ",40,50,60\r\n");
    rig.clock.Advance(1600);
  });
  bool shown = false;
  rig.clock.onYield = [&] {
    // What the first reader holds has no end yet.
    if (rig.session.SampleBusy && rig.plainPort.waiting.empty() && !std::exchange(shown, true))
      rig.dialogs.Message({"the operator reads", ""});
  };
  rig.plainPort.Receive(Now() + ",1,2,3");
  rig.clock.Advance(60);
  rig.acquisition.mnuAcquireStop_Click();
  ASSERT_TRUE(shown);
  EXPECT_FALSE(graph2.plots.empty());
  for (const auto& plot : graph2.plots) EXPECT_EQ(plot.value, 60.0f) << "\"3\" and \"00\" make no 300";
}

TEST_F(BehindBoxes, ATickAboveABoxLeavesOnceTheBoxIsAnswered) {
  Use(protocol::Das104, ",", "\r");  // a silent one is waited for without an end
  ConnectAndStart();
  int rounds = 0;
  rig.dialogs.Expect("are you sure", Answer::Ok, [&] {
    rounds = 0;
    rig.clock.Advance(3000);
    EXPECT_LT(rounds, 400) << "a tick that finds the box answered does not begin to wait";
  });
  bool shown = false;
  rig.clock.onYield = [&] {
    ++rounds;
    if (!std::exchange(shown, true)) {
      rig.dialogs.Message({"are you sure", ""});
      rig.dialogs.topIsAnswered = false;
      return rig.acquisition.mnuAcquireStop_Click();
    }
    if (rounds == 200) rig.dialogs.topIsAnswered = true;
    if (rounds == 5000) rig.acquisition.mnuAcquireStop_Click();  // it would wait for ever
  };
  rig.clock.Advance(60);
  ASSERT_TRUE(shown);
  EXPECT_LT(rounds, 5000);
  EXPECT_FALSE(rig.sources.IsRunning());
}

TEST_F(BehindBoxes, PagesGoOnBehindTheBoxOfAFaultAndBehindItsCancel) {
  Use(protocol::LumoThroughHmi, " ", "\r\n");
  rig.pages->page = PanelPage({"1.5", "2.5", "3.5"});
  ConnectAndStart();
  rig.sources.FollowProtocol();
  rig.clock.Advance(1100);
  ASSERT_EQ(rig.session.CurrentValue[1], 1.5f);
  rig.pages->fault = PageFault::TimedOut;
  rig.dialogs.Expect(" - Timer5_Timer", Answer::Cancel, [this] {
    rig.clock.Advance(30'000);
    EXPECT_EQ(rig.dialogs.shown.size(), 1u) << "one box of a timer";
    rig.pages->fault.reset();
    rig.pages->page = PanelPage({"7.5", "2.5", "3.5"});
    rig.clock.Advance(11'000);
    EXPECT_EQ(rig.session.CurrentValue[1], 7.5f) << "nobody is there to answer the box at night";
  });
  rig.clock.Advance(600);
  rig.pages->page = PanelPage({"8.5", "2.5", "3.5"});
  rig.clock.Advance(1100);
  EXPECT_EQ(rig.session.CurrentValue[1], 8.5f) << "the fault was over when it was left";
}

TEST_F(BehindBoxes, PagesGoOnBehindABoxThatComesWhileAPageIsFetched) {
  Use(protocol::LumoThroughHmi, " ", "\r\n");
  rig.pages->page = PanelPage({"1.5", "2.5", "3.5"});
  ConnectAndStart();
  rig.sources.FollowProtocol();
  rig.clock.Advance(1100);
  rig.dialogs.Expect("the operator reads", Answer::Ok, [this] {
    rig.pages->page = PanelPage({"7.5", "2.5", "3.5"});
    rig.clock.Advance(5000);
    EXPECT_EQ(rig.session.CurrentValue[1], 7.5f);
    rig.pages->page = PanelPage({"9.5", "2.5", "3.5"});
  });
  rig.pages->meanwhile = [this] { rig.dialogs.Message({"the operator reads", ""}); };
  rig.clock.Advance(510);
  EXPECT_EQ(rig.session.CurrentValue[1], 7.5f) << "nothing of the page lay below the box";
  rig.clock.Advance(1100);
  EXPECT_EQ(rig.session.CurrentValue[1], 9.5f);
  rig.acquisition.mnuAcquireStop_Click();
  EXPECT_FALSE(rig.sources.IsRunning());
}

}  // namespace
}  // namespace velk
