// A recorded log runs through the graphs: opened, started, paused, stopped, at any speed.

#include "core/playback/playback.h"

#include "core/playback_fixture.h"

namespace velk {
namespace {

class PlaybackTest : public test::PlaybackFixture {};

// --- A file is chosen ---

TEST_F(PlaybackTest, IsRefusedWhileAnythingElseGoesOn) {
  rig.Connect();
  rig.dialogs.Expect("Unable to Playback while Ready to Acquire", Answer::Ok);
  rig.playback.mnuFilePlayback_Click();
  EXPECT_EQ(rig.dialogs.shown.back().title, "Playback");
  EXPECT_TRUE(StatusIs(rig.session, text::StatusReadyToAcquire));
}

TEST_F(PlaybackTest, AsksForALogInTheFolderOfTheLastOne) {
  rig.dialogs.ExpectOpenFile(std::nullopt);
  rig.playback.mnuFilePlayback_Click();
  EXPECT_EQ(rig.dialogs.filesAsked.back().filter, "Data files (*.mdb)|*.mdb");
  EXPECT_EQ(rig.dialogs.filesAsked.back().directory, rig.folder.Path());
  ExpectReady();
}

TEST_F(PlaybackTest, OfAFileThatIsNotThereComesNothingButItsFolder) {
  Choose("/nowhere/at/all.mdb");
  EXPECT_EQ(rig.session.DefaultDirectory, "/nowhere/at");
  EXPECT_EQ(rig.session.LogFileInUse, "");
  ExpectReady();
}

TEST_F(PlaybackTest, AnAcceptedFileStandsReadyWithItsWindowsAndControls) {
  const std::string file = Record(3);
  const int creations = rig.graphs.creations;
  rig.view.statuses.clear();
  Choose(file);
  EXPECT_EQ(rig.view.statuses, (std::vector<std::string>{"Confirming File Format", "Ready to Playback"}));
  EXPECT_EQ(rig.view.panels[2], "Current File: " + file);
  EXPECT_EQ(rig.session.LogFileInUse, file);
  EXPECT_FALSE(rig.session.AcquisitionMode);
  EXPECT_EQ(rig.graphs.creations, creations + 1);
  EXPECT_TRUE(rig.view.buttonVisible["Pause"] && rig.view.buttonVisible["Stop"] && rig.view.buttonVisible["ScrollBar"]);
  EXPECT_FALSE(rig.view.buttonVisible["RecordToDB"]);
  EXPECT_TRUE(rig.view.menuEnabled["mnuToolsLiveSurvey"]);
  EXPECT_EQ(rig.view.menuCaption["mnuAcquireStart"], "Start");
  EXPECT_EQ(rig.view.speed, 1);
  EXPECT_EQ(rig.timers.Timer3->Interval(), 1000);
  EXPECT_FALSE(rig.timers.Timer3->Enabled());
}

TEST_F(PlaybackTest, TheTimeBaseIsTheDistanceOfTheFirstTwoRows) {
  Choose(Make("slow.mdb", Rows("A DOUBLE", {{17, "1"}, {47, "2"}, {48, "3"}}) +
                              "CREATE TABLE GraphSettings (ParameterName);"
                              "INSERT INTO GraphSettings VALUES ('A')"));
  EXPECT_EQ(rig.session.SampleSeconds, 30);
  EXPECT_EQ(rig.session.PlaybackSamplingRate, 30.0 / 86400);
  EXPECT_EQ(rig.session.Times.GraphTimeStep, 30.0 / 86400);
  for (const double time : {rig.session.StartTime, rig.session.Times.LastPlotTime, rig.session.Times.GraphEndTime,
                            rig.session.Times.GraphPageTime})
    EXPECT_EQ(time, start) << "seconds are zeroed";
  EXPECT_EQ(rig.session.PlaybackParameterCount, 1);
  EXPECT_EQ(rig.session.NumberOfParameters, 1);
  EXPECT_EQ(rig.session.TotalParameters, 1);
}

TEST_F(PlaybackTest, TwoRowsOfOneSecondAndRowsThatRunBackPlayAtASecondARow) {
  for (const int second : {5, 3}) {
    const std::string name = "at" + std::to_string(second) + ".mdb";
    Choose(Make(name, Rows("A DOUBLE", {{5, "1"}, {second, "2"}})), kNoSettings);
    EXPECT_EQ(rig.session.SampleSeconds, 1) << second;
    rig.dialogs.Expect("Playback is Stopped", Answer::Ok);
    Stop();
  }
}

// --- Rows ---

TEST_F(PlaybackTest, PlaysARowATickAndShowsWhereItIs) {
  const std::string file = Record(3);
  Choose(file);
  Press();
  EXPECT_EQ(rig.view.panels[1], "Playing Back");
  EXPECT_EQ(rig.view.menuCaption["mnuAcquireStart"], "Pause");
  EXPECT_EQ(rig.view.images["Pause"], image::PauseRunning);
  EXPECT_TRUE(rig.session.AcquireStarted);
  rig.clock.Advance(999);
  EXPECT_EQ(rig.graphs.windows[1].labels.count(1), 1u) << "of the job that was recorded";
  EXPECT_EQ(rig.view.panels[6], "") << "no row yet";
  rig.clock.Advance(1);
  EXPECT_EQ(rig.view.panels[3], "14-Mar-2026");
  EXPECT_EQ(rig.view.panels[4], "09:30:01");
  EXPECT_EQ(rig.view.panels[6], "Row 1 of 3");
  EXPECT_EQ(rig.session.PlaybackRow, 1);
  EXPECT_EQ(rig.session.SampleTime, DateSerial(2026, 3, 14) + TimeOfDay(9, 30, 1));
  EXPECT_EQ(rig.graphs.windows[1].labels[2], 10.0f);
  Tick();
  EXPECT_EQ(rig.graphs.windows[2].labels[3], 200.0f);
  EXPECT_EQ(rig.view.panels[6], "Row 2 of 3");
}

TEST_F(PlaybackTest, CountsRowsAnewWhereSomeWereDeleted) {
  const std::string file = Record(6);
  Choose(file);
  Press();
  Tick();
  EXPECT_EQ(rig.view.panels[6], "Row 1 of 6");
  Connection::Open(file, OpenMode::ReadWrite)->Execute("DELETE FROM logData WHERE ID IN (4, 5)");
  rig.playback.FollowRows();
  Tick();
  EXPECT_EQ(rig.view.panels[6], "Row 2 of 4");
}

TEST_F(PlaybackTest, CallsWhoFollowsItWithEachRow) {
  std::vector<std::pair<std::int64_t, double>> seen;
  rig.playback.onRow = [&](const LogRow& row) { seen.emplace_back(row.key, row.values[1]); };
  Choose(Record(3));
  PlayAll();
  EXPECT_EQ(seen, (std::vector<std::pair<std::int64_t, double>>{{1, 10}, {2, 20}, {3, 30}}));
}

TEST_F(PlaybackTest, EndsBehindTheLastRowWithABoxAndGivesTheUnitItsPlaceBack) {
  const std::string file = Record(2);
  rig.session.SampleSeconds = 7;
  rig.session.Times.GraphTimeStep = 7 * kSecond;
  rig.session.TotalParameters = 3;
  Choose(file);
  PlayAll();
  EXPECT_EQ(rig.dialogs.shown.back().title, "Playback");
  ExpectReady();
  EXPECT_EQ(rig.session.TotalParameters, 3);
  EXPECT_EQ(rig.session.SampleSeconds, 7);
  EXPECT_EQ(rig.session.Times.GraphTimeStep, 7 * kSecond);
  EXPECT_FALSE(rig.session.AcquireStarted);
  EXPECT_FALSE(rig.view.buttonVisible["Pause"] || rig.view.buttonVisible["Stop"] ||
               rig.view.buttonVisible["ScrollBar"]);
  EXPECT_EQ(rig.view.menuCaption["mnuAcquireStart"], "Start");
  EXPECT_EQ(rig.view.panels[6], "");
  EXPECT_NE(rig.session.GraphForms[1], nullptr) << "what was played can still be looked at";
}

TEST_F(PlaybackTest, DrawsTheSegmentsThatTheJobDrew) {
  rig.Connect();
  rig.clock.SetNow(DateSerial(2026, 3, 14) + TimeOfDay(9, 31, 0));  // a file holds whole seconds
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  // 130 rows: over the end of the first block. Wandering values, exact in 32 bits.
  for (int row = 1; row <= 130; ++row) rig.Sample(row % 50, (7 * row) % 90 + 0.25, row % 9);
  const auto live = rig.graphs.windows;
  rig.acquisition.mnuAcquireStop_Click();
  rig.graphs.windows.clear();
  Choose(rig.Path("job.mdb"));
  PlayAll();
  for (const int graph : {1, 2}) {
    const auto& played = rig.graphs.windows[graph];
    ASSERT_EQ(played.plots.size(), live.at(graph).plots.size());
    for (std::size_t i = 0; i < played.plots.size(); ++i) {
      const auto &a = played.plots[i], &b = live.at(graph).plots[i];
      EXPECT_EQ(a.previousTime, b.previousTime) << i;
      EXPECT_EQ(a.time, b.time) << i;
      EXPECT_EQ(a.previousValue, b.previousValue) << i;
      EXPECT_EQ(a.value, b.value) << i;
      EXPECT_EQ(a.min, b.min);
      EXPECT_EQ(a.max, b.max);
      EXPECT_EQ(a.colour, b.colour);
    }
    EXPECT_EQ(played.blocks, live.at(graph).blocks);
    EXPECT_EQ(played.dates, live.at(graph).dates);
  }
}

TEST_F(PlaybackTest, TheFirstRowOfEachPlaybackDrawsNoLength) {
  const std::string file = Record(2);
  for (int time = 0; time < 2; ++time) {
    rig.graphs.windows.clear();
    Choose(file);
    PlayAll();
    const auto& first = rig.graphs.windows[1].plots.at(0);
    EXPECT_EQ(first.previousTime, first.time);
    EXPECT_EQ(first.previousValue, first.value);
    EXPECT_EQ(rig.graphs.windows[1].plots.at(2).previousTime, first.time);
  }
}

TEST_F(PlaybackTest, RaisesNoAlarmAndRecordsNothing) {
  rig.session.PlaybackParameters[1].upperalarm = "0";
  rig.session.Parameters[2].upperalarm = "5";
  const std::string file = Record(3);
  EXPECT_GT(rig.view.beeps, 0) << "of the job";
  const int beeps = rig.view.beeps;
  Choose(file);
  EXPECT_FALSE(rig.view.buttonVisible["Command1"]) << "the indicator tells of no file";
  PlayAll();
  EXPECT_EQ(rig.view.beeps, beeps);
  for (int i = 1; i <= 3; ++i) EXPECT_FALSE(rig.session.AlarmTriggered[i]);
  EXPECT_EQ(rig.Rows(file).size(), 3u);
}

TEST_F(PlaybackTest, AppliesGainAndOffsetAgain) {
  const std::string file = Record(2);
  rig.session.PlaybackParameters[1].Gain = 2;
  rig.session.PlaybackParameters[1].Offset = 0.5;
  Choose(file);
  PlayAll();
  EXPECT_EQ(rig.graphs.windows[1].labels[1], 4.5f);
  EXPECT_EQ(rig.graphs.windows[1].labels[2], 20.0f);
}

TEST_F(PlaybackTest, AveragesLikeAJobAndBeginsTheAverageAnew) {
  rig.session.SmoothValue[1] = 3;
  rig.session.SmoothHistory[3][1] = 90;
  Choose(Make("three.mdb", Rows("A DOUBLE", {{0, "3"}, {1, "6"}, {2, "9"}})), kNoSettings);
  Press();
  Tick();
  EXPECT_EQ(rig.session.CurrentValue[1], 1.0f) << "(0 + 0 + 3) / 3";
  Tick();
  EXPECT_EQ(rig.session.CurrentValue[1], 3.0f);
  Tick();
  EXPECT_EQ(rig.session.CurrentValue[1], 6.0f);
  rig.dialogs.Expect("End of playback", Answer::Ok);
  Tick();
  EXPECT_EQ(rig.session.SmoothHistory[3][1], 90) << "the unit's average goes on where it was";
}

TEST_F(PlaybackTest, AJobBehindAPlaybackBeginsAsOneWithout) {
  const std::string file = Record(2);
  rig.session.FirstPoint = true;
  rig.session.PreviousValue[1] = 55;
  Choose(file);
  PlayAll();
  EXPECT_TRUE(rig.session.FirstPoint);
  EXPECT_EQ(rig.session.PreviousValue[1], 55.0f);
  rig.graphs.windows.clear();
  rig.ConnectAndStart();
  EXPECT_EQ(rig.session.CurrentValue[1], 0.0f) << "no value of the file";
  EXPECT_FALSE(ShowsFile(rig.session));
  rig.Sample(4, 5, 6);
  EXPECT_EQ(rig.graphs.windows[1].plots.at(0).previousValue, 4.0f);
  EXPECT_EQ(rig.session.TotalParameters, 3);
}

// --- Pause, Resume, Stop ---

TEST_F(PlaybackTest, IsPausedAndResumedAtTheNextRow) {
  Choose(Record(5));
  Press();
  Tick();
  Press();
  EXPECT_EQ(rig.view.panels[1], "Playing Back Paused");
  EXPECT_EQ(rig.view.menuCaption["mnuAcquireStart"], "Resume");
  EXPECT_EQ(rig.view.toolTips["Pause"], "Resume");
  EXPECT_EQ(rig.view.images["Pause"], image::PauseStopped);
  rig.clock.Advance(10'000);
  EXPECT_EQ(rig.session.PlaybackRow, 1);
  Press();
  EXPECT_EQ(rig.view.panels[1], "Playing Back");
  EXPECT_EQ(rig.view.toolTips["Pause"], "Pause");
  Tick();
  EXPECT_EQ(rig.session.PlaybackRow, 2);
}

TEST_F(PlaybackTest, IsStoppedByTheNextTick) {
  Choose(Record(5));
  Press();
  Tick();
  Stop();
  EXPECT_TRUE(rig.session.PlaybackStopRequested);
  EXPECT_TRUE(StatusIs(rig.session, text::StatusPlayingBack));
  rig.dialogs.Expect("Playback is Stopped", Answer::Ok);
  Tick();
  EXPECT_EQ(rig.session.PlaybackRow, 1) << "no row more";
  EXPECT_FALSE(rig.session.PlaybackStopRequested);
  ExpectReady();
}

TEST_F(PlaybackTest, IsStoppedAtOnceWhereNoTickComes) {
  const std::string file = Record(5);
  Choose(file);
  rig.dialogs.Expect("Playback is Stopped", Answer::Ok);
  Stop();
  ExpectReady();
  Choose(file);
  Press();
  Tick();
  Press();
  rig.dialogs.Expect("Playback is Stopped", Answer::Ok);
  Stop();
  ExpectReady();
}

TEST_F(PlaybackTest, StopWhileARowLetsEventsRunEndsBehindThatRow) {
  Choose(Record(5));
  Press();
  bool stopped = false;
  rig.clock.onYield = [&] {
    if (std::exchange(stopped, true)) return;
    Press();  // pauses
    Stop();
  };
  rig.dialogs.Expect("Playback is Stopped", Answer::Ok);
  Tick();
  rig.clock.onYield = nullptr;
  EXPECT_EQ(rig.session.PlaybackRow, 1);
  ExpectReady();
}

TEST_F(PlaybackTest, TicksThatComeWhileARowIsPlayedPlayNoOther) {
  Choose(Record(5));
  Press();
  int depth = 0, deepest = 0;
  rig.clock.onYield = [&] {
    deepest = std::max(deepest, ++depth);
    if (depth == 1) rig.clock.Advance(3000);
    --depth;
  };
  Tick();
  rig.clock.onYield = nullptr;
  EXPECT_EQ(deepest, 1);
  EXPECT_EQ(rig.session.PlaybackRow, 1);
}

TEST_F(PlaybackTest, PlaysAgainAndAnotherFileInOneProcess) {
  const std::string first = Record(2, "first.mdb");
  const std::string second = Record(4, "second.mdb");
  for (const auto& [file, rows] : {std::pair(first, 2), std::pair(second, 4), std::pair(first, 2)}) {
    Choose(file);
    PlayAll();
    EXPECT_EQ(rig.session.PlaybackRow, rows);
    ExpectReady();
  }
}

// --- Speed ---

TEST_F(PlaybackTest, FollowsTheSpeedBarWhileItRuns) {
  Choose(Record(100));
  Press();
  rig.playback.HScroll1_Change(10);
  EXPECT_EQ(rig.session.PlaybackSpeed, 10);
  EXPECT_EQ(rig.view.speed, 10);
  EXPECT_EQ(rig.timers.Timer3->Interval(), 100);
  rig.clock.Advance(500);
  EXPECT_EQ(rig.session.PlaybackRow, 5);
  rig.playback.HScroll1_Change(400);
  EXPECT_EQ(rig.timers.Timer3->Interval(), 2) << "whole milliseconds";
  rig.clock.Advance(20);
  EXPECT_EQ(rig.session.PlaybackRow, 15);
  rig.playback.HScroll1_Change(1000);
  EXPECT_EQ(rig.timers.Timer3->Interval(), 1);
}

TEST_F(PlaybackTest, ASpeedOfTheSettingsBeyondTheBarIsItsEnd) {
  const std::string file = Record(2);
  for (const auto& [stored, speed] : {std::pair(0, 1), std::pair(-7, 1), std::pair(30000, 1000)}) {
    rig.session.PlaybackSpeed = static_cast<std::int16_t>(stored);
    Choose(file);
    EXPECT_EQ(rig.session.PlaybackSpeed, speed);
    rig.dialogs.Expect("Playback is Stopped", Answer::Ok);
    Stop();
  }
}

// --- Faults of a row ---

TEST_F(PlaybackTest, AFaultOfARowIsToldAndCancelStopsWithTheNextTick) {
  Choose(Make("huge.mdb", Rows("A DOUBLE", {{0, "1"}, {1, "1e300"}, {2, "3"}})), kNoSettings);
  Press();
  Tick();
  rig.dialogs.Expect("Overflow", Answer::Retry);
  rig.dialogs.Expect("Overflow", Answer::Cancel);
  Tick();
  EXPECT_EQ(rig.dialogs.shown.back().title, "Playback ... error");
  EXPECT_EQ(rig.session.CurrentValue[1], 1.0f);
  rig.dialogs.Expect("Playback is Stopped", Answer::Ok);
  Tick();
  ExpectReady();
}

TEST_F(PlaybackTest, RestsThePagesOfANetworkedUnitMeanwhile) {
  const std::string file = Record(2);
  rig.timers.Timer5->SetInterval(1'000'000);
  rig.timers.Timer5->SetEnabled(true);
  Choose(file);
  Press();
  Tick();
  EXPECT_FALSE(rig.timers.Timer5->Enabled());
  rig.dialogs.Expect("End of playback", Answer::Ok);
  rig.clock.Advance(3000);
  EXPECT_TRUE(rig.timers.Timer5->Enabled()) << "the unit is asked again";
}

}  // namespace
}  // namespace velk
