// Pages of networked units.

#include <gtest/gtest.h>

#include "base/dates.h"
#include "core/polled.h"
#include "instruments/table/protocols.h"

namespace velk {
namespace {

using test::PanelPage;
using test::Polled;

TEST_F(Polled, PassesThePageOfAPanelToTheRoadAtEachTimer5) {
  Use(protocol::LumoThroughHmi, " ", "\r\n");
  rig.session.daqIPAddress = "10.0.0.5";
  rig.session.daqHTML = "panel.htm";
  rig.pages->page = PanelPage({"1.5", "2.5", "3.5"});
  ConnectAndStart();
  EXPECT_EQ(rig.session.CurrentStatus.english, "Acquiring Data");
  EXPECT_EQ(rig.pages->asked, std::vector<std::string>{"10.0.0.5/panel.htm"}) << "Connect fetches one";
  rig.sources.FollowProtocol();
  EXPECT_TRUE(rig.timers.Timer5->Enabled());
  EXPECT_FALSE(rig.timers.Timer4->Enabled());
  rig.clock.Advance(1100);
  EXPECT_EQ(rig.pages->asked.size(), 3u);
  EXPECT_EQ(rig.session.CurrentValue[1], 1.5f);
  EXPECT_EQ(rig.session.CurrentValue[3], 3.5f);
}

TEST_F(Polled, PassesThePageOfATableToTheRoadAtEachTimer4WhileAcquiring) {
  Use(protocol::HoneywellEZtrend, ";", "\r\n");
  rig.pages->page =
      "<p>Time&nbsp;09:30:15</p><tr><td>1<td>p<td>u<td><b> 12.5 </b><tr><td>2<td>q<td>u<td>-3</td>"
      "<tr><td>3<td>r<td>u<td>0.25</td>";
  rig.acquisition.mnuAcquireConnect_Click();
  rig.sources.FollowProtocol();
  EXPECT_TRUE(rig.timers.Timer4->Enabled());
  EXPECT_FALSE(rig.timers.Timer5->Enabled());
  rig.clock.Advance(1600);
  EXPECT_TRUE(graph2.plots.empty()) << "pages are fetched from the start-up on, but samples come only from Start on";
  EXPECT_EQ(rig.pages->asked.size(), 4u);
  rig.acquisition.mnuAcquireStart_Click();
  rig.clock.Advance(1100);
  EXPECT_EQ(rig.session.CurrentValue[1], 12.5f);
  EXPECT_EQ(rig.session.CurrentValue[2], -3.0f);
  EXPECT_EQ(rig.session.CurrentValue[3], 0.25f);
}

TEST_F(Polled, OnlyOneBoxOfAPageTimerStands) {
  Use(protocol::LumoThroughHmi, " ", "\r\n");
  rig.sources.FollowProtocol();
  rig.pages->fault = PageFault::NoConnection;
  rig.dialogs.Expect(" - Timer5_Timer", Answer::Cancel, [this] { rig.clock.Advance(3000); });
  rig.clock.Advance(600);
  EXPECT_EQ(rig.pages->asked.size(), 2u) << "behind the box it is tried again, ten seconds apart";
  EXPECT_EQ(rig.dialogs.shown.size(), 1u);
}

TEST_F(Polled, AFaultOfThePageIsToldAndTheNextFetchComesTenSecondsAfterCancel) {
  Use(protocol::HoneywellEZtrend, " ", "\r\n");
  rig.sources.FollowProtocol();
  rig.pages->fault = PageFault::TimedOut;
  rig.dialogs.Expect(" - Timer4_Timer", Answer::Cancel);
  rig.clock.Advance(9000);
  EXPECT_EQ(rig.pages->asked.size(), 1u);
  rig.pages->fault.reset();
  rig.pages->page = std::nullopt;
  rig.clock.Advance(2500);
  EXPECT_GE(rig.pages->asked.size(), 2u);
}

TEST_F(Polled, APageWithoutItsCellsIsToldByTheTimersBox) {
  Use(protocol::LumoThroughHmi, " ", "\r\n");
  rig.sources.FollowProtocol();
  rig.pages->page = "<html>out of order</html>";
  rig.dialogs.Expect(" - Timer5_Timer", Answer::Cancel);
  rig.clock.Advance(600);
  rig.sources.ShutDown();
  EXPECT_EQ(rig.pages->cancelled, 1);
  EXPECT_FALSE(rig.timers.Timer5->Enabled());
}

TEST_F(Polled, ConnectPressedWhileAPageIsFetchedWaitsForOneOfItsOwn) {
  Use(protocol::LumoThroughHmi, " ", "\r\n");
  rig.sources.FollowProtocol();
  rig.pages->fault = PageFault::NoConnection;
  rig.pages->meanwhile = [this] { rig.acquisition.mnuAcquireConnect_Click(); };
  rig.dialogs.Expect(" - mnuAcquireConnect_Click", Answer::Cancel);
  rig.clock.Advance(510);
  rig.timers.Timer5->SetEnabled(false);
  EXPECT_EQ(rig.session.CurrentStatus.english, "Ready to Acquire");
  EXPECT_EQ(rig.dialogs.shown.size(), 1u) << "a page that was given up is no fault";
}

}  // namespace
}  // namespace velk
