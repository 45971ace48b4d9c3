#include "core/panel/data_panel.h"

#include <gtest/gtest.h>

#include "core/rig.h"
#include "platform/files/disk_room.h"

namespace velk {
namespace {

using test::Rig;

class Panel : public testing::Test {
 protected:
  Panel() {
    rig.acquisition.onJob = [this](bool stands) { panel.FollowJob(stands); };
    rig.acquisition.onAcquiring = [this] { panel.FollowAcquiring(); };
  }
  void Samples(int count) {
    for (int i = 0; i < count; ++i) rig.Sample(i, 2, 3);
    panel.Look();
  }

  Rig rig;
  DataPanel panel{rig.session, rig.platform, rig.view, rig.recorder, rig.link};
};

TEST_F(Panel, TellsRateAndRowsOfARecordingJob) {
  rig.Connect();
  EXPECT_EQ(rig.view.data, "");
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  Samples(5);
  EXPECT_EQ(rig.view.data, "1.0 samples/s \u00b7 5 rows");
  EXPECT_FALSE(rig.view.dataWarns);
}

TEST_F(Panel, TellsWhichNumberOfValuesCameWhereAnotherIsExpected) {
  rig.ConnectAndStart();
  Samples(1);
  for (int i = 0; i < 3; ++i) {
    rig.clock.Advance(1000);
    rig.road.ProcessLine(FormatDate(rig.clock.Now(), "hh:mm:ss") + " 1 2 3 4\r\n");
  }
  panel.Look();
  EXPECT_NE(rig.view.data.find("3 rejected: 4 values where 3 are expected"), std::string::npos) << rig.view.data;
  EXPECT_EQ(rig.view.data.find("values held since "), 0u) << rig.view.data;
  EXPECT_TRUE(rig.view.dataWarns);
  Samples(2);
  EXPECT_EQ(rig.view.data.find("values held"), std::string::npos) << "values come again";
}

TEST_F(Panel, LooksAlongWithTheOtherPanelsOnceASecond) {
  rig.ConnectAndStart();
  panel.Look();
  rig.view.data = "not told anew";
  rig.clock.Advance(899);
  panel.LookAlong();
  EXPECT_EQ(rig.view.data, "not told anew");
  rig.session.Data.rejected = rig.session.Data.firstLines + 1;
  rig.clock.Advance(1);
  panel.LookAlong();
  EXPECT_NE(rig.view.data.find("1 rejected"), std::string::npos);
  rig.session.Data.rejected += 1;
  rig.clock.Advance(1099);
  EXPECT_EQ(rig.view.data.find("2 rejected"), std::string::npos) << "the next sample is waited for";
  rig.clock.Advance(1);
  EXPECT_NE(rig.view.data.find("2 rejected"), std::string::npos) << "but not for long";
}

TEST_F(Panel, GreysTheValuesOfASilentUnitAndShowsItByThePlug) {
  rig.ConnectAndStart();
  Samples(2);
  EXPECT_FALSE(rig.graphs.windows[1].stale);
  EXPECT_EQ(rig.view.images["connect"], image::ConnectOn);
  rig.timers.Timer2->SetEnabled(false);  // the watchdog would open the port anew meanwhile
  rig.clock.Advance(12'000);
  panel.Look();
  EXPECT_TRUE(rig.graphs.windows[1].stale);
  EXPECT_TRUE(rig.graphs.windows[2].stale);
  EXPECT_EQ(rig.view.data, "no data for 12 s \u00b7 not recording");
  EXPECT_TRUE(rig.view.dataWarns);
  EXPECT_EQ(rig.view.images["connect"], image::ConnectSilent);
  EXPECT_EQ(rig.view.toolTips["connect"], "Connected, but no data come: " + rig.linePort.openings.back().device);
  Samples(1);
  EXPECT_FALSE(rig.graphs.windows[1].stale);
  EXPECT_EQ(rig.view.images["connect"], image::ConnectOn);
  EXPECT_EQ(rig.view.toolTips["connect"], "Connected: " + rig.linePort.openings.back().device);
}

TEST_F(Panel, GreysTheValuesOfAPausedJobAndTellsSinceWhen) {
  rig.ConnectAndStart();
  Samples(2);
  const std::string paused = FormatDate(rig.clock.Now(), "hh:mm:ss");
  rig.acquisition.mnuAcquireStart_Click();
  rig.clock.Advance(60'000);
  EXPECT_EQ(rig.view.data, "paused since " + paused + " \u00b7 not recording");
  EXPECT_FALSE(rig.view.dataWarns);
  EXPECT_TRUE(rig.graphs.windows[1].stale);
  EXPECT_EQ(rig.view.images["connect"], image::ConnectOn) << "nobody waits for data";
  rig.acquisition.mnuAcquireStart_Click();
  panel.Look();
  EXPECT_FALSE(rig.graphs.windows[1].stale) << "a pause is no silence of the unit";
}

TEST_F(Panel, TellsAPauseAndItsEndAtOnce) {
  rig.ConnectAndStart();
  EXPECT_NE(rig.view.data, "");
  Samples(2);
  rig.clock.Advance(300);
  const std::string paused = FormatDate(rig.clock.Now(), "hh:mm:ss");
  rig.acquisition.mnuAcquireStart_Click();
  EXPECT_EQ(rig.view.data, "paused since " + paused + " \u00b7 not recording");
  EXPECT_TRUE(rig.graphs.windows[1].stale);
  rig.clock.Advance(60'300);
  rig.acquisition.mnuAcquireStart_Click();
  EXPECT_EQ(rig.view.data.find("paused"), std::string::npos) << rig.view.data;
  EXPECT_FALSE(rig.graphs.windows[1].stale);
}

TEST_F(Panel, LooksOnceInTwoSecondsWhileNothingIsAcquired) {
  rig.ConnectAndStart();
  rig.acquisition.mnuAcquireStart_Click();
  rig.clock.Advance(10'000);
  int looks = 0;
  for (int ms = 0; ms < 60'000; ms += 100) {
    rig.view.data.clear();
    rig.session.Data.failure = "fault " + std::to_string(ms);
    rig.clock.Advance(100);
    looks += rig.view.data.empty() ? 0 : 1;
  }
  EXPECT_EQ(looks, 30);
}

TEST_F(Panel, LooksOnceASecondWhileAJobStandsAndGoesWithIt) {
  rig.ConnectAndStart();
  rig.Sample(1, 2, 3);
  rig.clock.Advance(1000);
  EXPECT_NE(rig.view.data, "");
  rig.acquisition.mnuAcquireStop_Click();
  EXPECT_EQ(rig.view.data, "");
  EXPECT_FALSE(rig.view.dataWarns);
}

TEST_F(Panel, ShowsTheRecordingWithItsFileItsTimeAndItsRoom) {
  rig.Connect();
  rig.ChooseFile("well.mdb");
  rig.clock.Advance(1000);
  EXPECT_EQ(rig.view.recording, "") << "chosen, and nothing goes there yet";
  rig.acquisition.mnuAcquireStart_Click();
  Samples(3);
  EXPECT_EQ(rig.view.recording, "REC well.mdb  0:00:03");
  EXPECT_EQ(rig.view.recordingTip.find("Rows go to " + rig.Path("well.mdb") + "\nSize: "), 0u) << rig.view.recordingTip;
  EXPECT_NE(rig.view.recordingTip.find("\nFree on this disk: "), std::string::npos);
  rig.acquisition.mnuAcquireStart_Click();
  panel.Look();
  EXPECT_EQ(rig.view.recording, "REC well.mdb  paused");
  rig.acquisition.mnuAcquireStop_Click();
  panel.Look();
  EXPECT_EQ(rig.view.recording, "");
}

TEST_F(Panel, CountsRowsForTheTimeThatTheDiskLastsAndNotSamples) {
  rig.session.SensitivityCriterion = 50;
  rig.Connect();
  rig.ChooseFile("well.mdb");
  rig.session.SamplingRate = 10.0 / 86400;  // a sample a second, and nothing moves: a row each ten seconds
  rig.acquisition.mnuAcquireStart_Click();
  for (int i = 0; i < 31; ++i) rig.Sample(1, 2, 3), panel.Look();
  ASSERT_GE(rig.session.Data.rows, 3);
  ASSERT_LE(rig.session.Data.rows, 8);
  const double rowsASecond = static_cast<double>(rig.session.Data.rows - 1) / 30;
  const auto free = FreeBytes(rig.Path("well.mdb"));
  ASSERT_TRUE(free);
  const double seconds = *free / (BytesPerRow(3) * rowsASecond);
  std::string told = rig.view.recordingTip.substr(rig.view.recordingTip.rfind("lasts for ") + 10);
  std::erase(told, ',');
  EXPECT_NEAR(std::stod(told) / (seconds / 86400), 1, 0.5) << rig.view.recordingTip;
}

TEST_F(Panel, NamesTheFileThatRowsReallyGoToWhenItsShownNameHasFollowedThePages) {
  rig.Connect();
  rig.ChooseFile("well.mdb");
  rig.acquisition.mnuAcquireStart_Click();
  rig.session.CurrentFile = rig.Path("well.002");
  Samples(1);
  EXPECT_EQ(rig.view.recording, "REC well.mdb  0:00:01");
}

TEST_F(Panel, ForgetsAtConnectWhatAnEarlierJobHadCounted) {
  rig.ConnectAndStart();
  Samples(2);
  EXPECT_TRUE(rig.session.Data.hasValues);
  rig.acquisition.mnuAcquireStop_Click();
  rig.Connect();
  EXPECT_FALSE(rig.session.Data.hasValues) << "the labels show no value of an earlier job";
  EXPECT_EQ(rig.session.Data.samples, 0);
}

TEST_F(Panel, SaysWhileTheReportsColumnsAreAskedForThatNothingIsRecorded) {
  rig.Connect();
  rig.ChooseFile();
  std::string during;
  rig.questions.include = [&](SummaryInclusion&) {
    panel.Look();
    during = rig.view.data;
  };
  rig.acquisition.mnuAcquireStart_Click();
  EXPECT_EQ(during, "nothing is recorded until the question is answered");
  panel.Look();
  EXPECT_EQ(rig.view.data, "waiting for the first line \u00b7 0 rows");
}

}  // namespace
}  // namespace velk
