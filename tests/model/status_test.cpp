#include "model/status.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "core/texts.h"
#include "model/texts.h"
#include "support/recording_view.h"

namespace velk {
namespace {

using test::RecordingView;

TEST(Status, StoresTheWordShowsItAndResetsPointerAndCaption) {
  Session session;
  RecordingView view;
  view.hourglass = true;
  ChangeCurrentStatus(session, view, text::StatusReadyToAcquire);
  EXPECT_EQ(session.CurrentStatus.english, "Ready to Acquire");
  EXPECT_EQ(view.panels[1], "Ready to Acquire");
  EXPECT_FALSE(view.hourglass);
  EXPECT_EQ(view.captionResets, 1);
  EXPECT_TRUE(StatusIs(session, text::StatusReadyToAcquire));
  EXPECT_FALSE(StatusIs(session, text::StatusReady));
}

TEST(Status, TellsTheViewTheStatusOnce) {
  Session session;
  RecordingView view;
  ChangeCurrentStatus(session, view, text::StatusCheckingHardware);
  EXPECT_EQ(view.statuses, std::vector<std::string>{"Checking Hardware"});
  EXPECT_TRUE(view.menuEnabled.empty() && view.buttonEnabled.empty() && view.buttonVisible.empty());
}

TEST(Status, WritesTheFileWithAcquiringOnly) {
  Session session;
  session.CurrentFile = "/jobs/frac.mdb";
  RecordingView view;
  ChangeCurrentStatus(session, view, text::StatusReadyToAcquire);
  EXPECT_EQ(view.panels.count(2), 0u);
  ChangeCurrentStatus(session, view, text::StatusAcquiringData);
  EXPECT_EQ(view.panels[2], "Current File: /jobs/frac.mdb");
}

}  // namespace
}  // namespace velk
