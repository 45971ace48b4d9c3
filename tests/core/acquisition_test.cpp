#include "core/acquisition.h"

#include <gtest/gtest.h>

#include "base/dates.h"
#include "core/panel/data_words.h"
#include "core/rig.h"
#include "model/texts.h"

namespace velk {
namespace {

using test::Rig;

class Job : public testing::Test {
 protected:
  void ExpectStatus(const char* status) { EXPECT_EQ(rig.session.CurrentStatus.english, status); }
  std::string CurrentVelk(const char* key) { return rig.settings.Get("CurrentVelk", "DBase", key, "missing"); }

  Rig rig;
};

// --- Connect ---

TEST_F(Job, ConnectCopiesParametersBuildsGraphsAndIsReadyToAcquire) {
  rig.session.NumberOfFormulae = 1;
  rig.session.AdditionalParameters.resize(2);
  rig.session.Formula.resize(2);
  rig.session.AdditionalParameters[1].name = "Computed";
  rig.session.AdditionalParameters[1].FormIndex = 9;
  rig.session.AdditionalParameters[1].GraphVisible = true;
  rig.session.CurrentFile = "old.mdb";
  rig.session.SampleBusy = true;
  rig.session.SampleSkips = 5;
  rig.session.StopRequested = true;
  rig.Connect();
  ExpectStatus("Ready to Acquire");
  EXPECT_TRUE(rig.session.AcquisitionMode);
  EXPECT_EQ(rig.session.TotalParameters, 4);
  EXPECT_EQ(rig.session.CurrentParameters[3].name, "Channel 3");
  EXPECT_EQ(rig.session.CurrentParameters[4].name, "Computed");
  EXPECT_EQ(rig.session.GraphCount, 3);
  EXPECT_EQ(rig.graphs.creations, 1);
  EXPECT_EQ(rig.session.CurrentFile, "");
  EXPECT_EQ(rig.view.panels[2], "Current File: ");
  EXPECT_FALSE(rig.session.SampleBusy);
  EXPECT_EQ(rig.session.SampleSkips, 0);
  EXPECT_FALSE(rig.session.StopRequested);
  EXPECT_EQ(rig.session.Times.GraphTimeStep, rig.session.SamplingRate);
  EXPECT_TRUE(rig.view.menuEnabled["mnuAcquireStart"]);
  EXPECT_TRUE(rig.view.menuEnabled["mnuAcquireStop"]);
  EXPECT_FALSE(rig.view.hourglass);
}

TEST_F(Job, ConnectShowsStartAndStopAndSwitchesRecordingOff) {
  rig.session.RecordToDB = true;
  rig.Connect();
  EXPECT_EQ(rig.view.images["Pause"], image::PauseStopped);
  EXPECT_EQ(rig.view.toolTips["Pause"], "Start");
  EXPECT_TRUE(rig.view.buttonVisible["Pause"]);
  EXPECT_TRUE(rig.view.buttonVisible["Stop"]);
  EXPECT_FALSE(rig.session.RecordToDB);
  EXPECT_EQ(rig.view.images["RecordToDB"], image::RecordOff);
}

TEST_F(Job, ConnectRefusesOutsideReady) {
  rig.Connect();
  rig.dialogs.Expect("Unable to acquire data while Ready to Acquire", Answer::Ok);
  rig.acquisition.mnuAcquireConnect_Click();
  EXPECT_EQ(rig.dialogs.shown.back().title, "Acquire Data");
  EXPECT_EQ(rig.graphs.creations, 1);
}

TEST_F(Job, ConnectHandsTheLineFromThePlainPortToTheLineDriver) {
  rig.Connect();
  ASSERT_EQ(rig.plainPort.openings.size(), 1u);
  EXPECT_FALSE(rig.plainPort.open);
  EXPECT_TRUE(rig.linePort.open);
  EXPECT_EQ(rig.linePort.openings.back().baudRate, 19200);
  EXPECT_EQ(rig.view.images["connect"], image::ConnectOn);
  EXPECT_EQ(rig.view.images["disconnect"], image::DisconnectOn);
}

TEST_F(Job, ConnectTellsATimeOutAndIsReadyAllTheSame) {
  rig.session.TheTimeOut = 3;
  std::int64_t waited = 0;
  rig.dialogs.Expect("Time Out Error, check hardware", Answer::Ok, [&] { waited = rig.clock.Ticks(); });
  rig.acquisition.mnuAcquireConnect_Click();
  EXPECT_EQ(rig.dialogs.shown.back().title, "Time Out Error");
  EXPECT_EQ(rig.dialogs.shown.back().icon, BoxIcon::Critical);
  EXPECT_EQ(waited, 3000);
  EXPECT_EQ(rig.dialogs.shown.back().text,
            "Time Out Error, check hardware\n\nCom Port 1: " + rig.linePort.openings.back().device +
                "\nNothing was heard. Is the unit switched on, and is this its cable?");
  ExpectStatus("Ready to Acquire");
}

TEST_F(Job, ConnectTellsThatBytesCameWithoutTheEndOfALine) {
  rig.clock.onYield = [this, come = false]() mutable {
    if (rig.linePort.open && !std::exchange(come, true)) rig.linePort.Receive("12:00:00 1 2");
  };
  rig.dialogs.Expect("\nBytes heard: 12, but no end of a line. Are the speed and the line end right?", Answer::Ok);
  rig.acquisition.mnuAcquireConnect_Click();
  rig.clock.onYield = nullptr;
}

TEST_F(Job, ConnectWaitsFifteenSecondsAtMost) {
  rig.session.SamplingRate = 600.0 / 86400;
  rig.dialogs.Expect("Time Out Error, check hardware", Answer::Ok);
  rig.acquisition.mnuAcquireConnect_Click();
  EXPECT_EQ(rig.clock.Ticks(), 15'000);
}

TEST_F(Job, StopEndsAConnectThatWaits) {
  int rounds = 0;
  rig.clock.onYield = [&] {
    if (++rounds != 10) return;
    EXPECT_TRUE(rig.acquisition.IsConnecting());
    EXPECT_TRUE(rig.view.buttonVisible["Stop"]);
    rig.acquisition.mnuAcquireStop_Click();
  };
  rig.acquisition.mnuAcquireConnect_Click();
  ExpectStatus("Ready");
  EXPECT_EQ(rig.session.GraphForms[1], nullptr);
  EXPECT_FALSE(rig.view.hourglass);
}

TEST_F(Job, ConnectTellsAMissingPortOnceAndLeavesTheRestToTheWatchdog) {
  for (test::FakeDevice* device : {&rig.plainPort, &rig.linePort})
    device->failOpen = [device] { throw PortError(ErrorNumber::DeviceUnavailable, device->openings.back().device); };
  rig.dialogs.Expect(" - EnablePort", Answer::Cancel);
  rig.acquisition.mnuAcquireConnect_Click();
  EXPECT_EQ(rig.dialogs.shown.size(), 1u);
  ExpectStatus("Ready to Acquire");
  EXPECT_TRUE(rig.timers.Timer2->Enabled());
}

TEST_F(Job, ConnectWithoutParametersTouchesNoPort) {
  rig.session.NumberOfParameters = 0;
  rig.acquisition.mnuAcquireConnect_Click();
  ExpectStatus("Ready to Acquire");
  EXPECT_TRUE(rig.plainPort.openings.empty());
  EXPECT_TRUE(rig.linePort.openings.empty());
}

// --- Start, Pause, Resume ---

TEST_F(Job, StartTakesTheMinuteAndSetsTheTimesOfTheGraphs) {
  rig.clock.SetNow(DateSerial(2026, 3, 14) + TimeOfDay(9, 30, 41));
  rig.ConnectAndStart();
  ExpectStatus("Acquiring Data");
  const double start = DateSerial(2026, 3, 14) + TimeOfDay(9, 30, 0);
  EXPECT_EQ(rig.session.StartTime, start);
  EXPECT_EQ(rig.session.Times.LastPlotTime, start);
  EXPECT_EQ(rig.session.Times.GraphEndTime, start);
  EXPECT_EQ(rig.session.Times.GraphPageTime, start);
  EXPECT_EQ(rig.session.LastPageTime, start);
  EXPECT_TRUE(rig.session.AcquireStarted);
  const auto axis = std::make_pair(start, start + rig.session.SamplingRate * 120);
  EXPECT_EQ(rig.graphs.windows[1].dates, std::vector{axis});
  EXPECT_EQ(rig.graphs.windows[2].dates, std::vector{axis});
}

TEST_F(Job, StartTurnsTheButtonIntoPauseAndShowsTheRecordingButton) {
  rig.ConnectAndStart();
  EXPECT_EQ(rig.view.images["Pause"], image::PauseRunning);
  EXPECT_EQ(rig.view.toolTips["Pause"], "Pause");
  EXPECT_EQ(rig.view.menuCaption["mnuAcquireStart"], "Pause");
  EXPECT_TRUE(rig.view.buttonVisible["RecordToDB"]);
  EXPECT_TRUE(rig.view.buttonEnabled["RecordToDB"]);
  EXPECT_EQ(rig.graphs.windows[1].toolbarsEnabled, 1);
  EXPECT_NEAR(rig.session.SampleSeconds, 1, 1e-12);
  EXPECT_FALSE(rig.timers.Timer1->Enabled()) << "the line driver brings the samples";
}

TEST_F(Job, PauseAndResumeKeepTheStartTime) {
  rig.ConnectAndStart();
  const double start = rig.session.StartTime;
  rig.acquisition.mnuAcquireStart_Click();
  ExpectStatus("Acquiring Paused");
  EXPECT_EQ(rig.view.toolTips["Pause"], "Resume");
  EXPECT_EQ(rig.view.images["Pause"], image::PauseStopped);
  rig.clock.Advance(200'000);
  rig.session.SampleBusy = true;
  rig.session.SampleSkips = 7;
  rig.acquisition.mnuAcquireStart_Click();
  ExpectStatus("Acquiring Data");
  EXPECT_EQ(rig.session.StartTime, start);
  EXPECT_FALSE(rig.session.SampleBusy);
  EXPECT_EQ(rig.session.SampleSkips, 0);
  EXPECT_EQ(rig.graphs.windows[1].dates.size(), 1u) << "the axis is written once a job";
}

TEST_F(Job, StartDoesNothingInReady) {
  rig.acquisition.mnuAcquireStart_Click();
  ExpectStatus("Ready");
  EXPECT_FALSE(rig.session.AcquireStarted);
}

TEST_F(Job, StartAsksForTheFileThatIsMissing) {
  rig.Connect();
  rig.session.RecordToDB = true;
  rig.dialogs.Expect("File Name not Supplied", Answer::Ok);
  rig.dialogs.ExpectSaveFile(std::nullopt);
  rig.acquisition.mnuAcquireStart_Click();
  ExpectStatus("Ready to Acquire");

  rig.dialogs.Expect("File Name not Supplied", Answer::Ok);
  rig.dialogs.ExpectSaveFile(rig.Path("job.mdb"));
  rig.acquisition.mnuAcquireStart_Click();
  ExpectStatus("Acquiring Data");
  EXPECT_EQ(rig.session.LogFileInUse, rig.Path("job.mdb"));
  EXPECT_TRUE(rig.log.RecordsetIsOpen());
}

TEST_F(Job, StopBehindTheQuestionForTheFileBeginsNoJob) {
  rig.Connect();
  rig.session.RecordToDB = true;
  rig.dialogs.Expect("File Name not Supplied", Answer::Ok, [this] { rig.acquisition.mnuAcquireStop_Click(); });
  rig.dialogs.ExpectSaveFile(rig.Path("job.mdb"));
  rig.acquisition.mnuAcquireStart_Click();
  ExpectStatus("Ready");
  EXPECT_FALSE(rig.session.AcquireStarted);
}

TEST_F(Job, StartNotesTheRecordingInTheSettings) {
  rig.Connect();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  EXPECT_EQ(CurrentVelk("TheFileName"), rig.Path("job.mdb"));
  EXPECT_EQ(CurrentVelk("StartedAt"), FormatDate(rig.clock.Now(), "dd-mmm-yyyy hh:mm:ss"));
  EXPECT_EQ(CurrentVelk("NumberOfParameters"), "3");
  EXPECT_EQ(rig.settings.Get("CurrentVelk", "Parameters", "Parameter1", ""), "BLANK");
}

TEST_F(Job, StartLeavesAStatusThatCanBeLeftWhenTheLogCannotBeMade) {
  rig.Connect();
  rig.ChooseFile();
  rig.session.CurrentFile = rig.Path("no such folder/job.mdb");
  rig.dialogs.Expect(" - mnuAcquireStart_Click", Answer::Cancel);
  rig.acquisition.mnuAcquireStart_Click();
  EXPECT_EQ(rig.dialogs.shown.back().buttons, Buttons::RetryCancel);
  ExpectStatus("Ready to Acquire");
  EXPECT_EQ(rig.view.toolTips["Pause"], "Start");
  rig.ChooseFile("other.mdb");
  rig.acquisition.mnuAcquireStart_Click();
  ExpectStatus("Acquiring Data");
}

// --- Stop ---

TEST_F(Job, StopGoesToReadyAndUnloadsTheGraphs) {
  rig.ConnectAndStart();
  rig.acquisition.mnuAcquireStop_Click();
  ExpectStatus("Ready");
  EXPECT_FALSE(rig.session.AcquireStarted);
  EXPECT_TRUE(rig.session.StopRequested);
  EXPECT_EQ(rig.session.GraphForms[1], nullptr);
  for (const char* button : {"Pause", "Stop", "RecordToDB"}) EXPECT_FALSE(rig.view.buttonVisible[button]) << button;
  EXPECT_EQ(rig.view.images["Pause"], image::PauseStopped);
  EXPECT_EQ(rig.view.images["RecordToDB"], image::RecordOff);
  EXPECT_EQ(rig.view.menuCaption["mnuAcquireStart"], "Start");
}

TEST_F(Job, StopLeavesOneSelfContainedFile) {
  rig.Connect();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  rig.Sample(10, 20, 30);
  EXPECT_TRUE(std::filesystem::exists(rig.Path("job.mdb-wal")));
  rig.acquisition.mnuAcquireStop_Click();
  EXPECT_FALSE(std::filesystem::exists(rig.Path("job.mdb-wal")));
  EXPECT_FALSE(std::filesystem::exists(rig.Path("job.mdb-shm")));
  EXPECT_EQ(rig.Rows(rig.Path("job.mdb")).size(), 1u);
}

TEST_F(Job, StopTellsOfRowsOfTheJobThatCannotBeReadBack) {
  rig.Connect();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  rig.Sample(10, 20, 30);
  rig.Sample(11, 21, 31);
  Connection::Open(rig.Path("job.mdb"), OpenMode::ReadWrite)->Execute("DELETE FROM logData");
  rig.dialogs.Expect("Not all rows of this job can be read back from [" + rig.Path("job.mdb") +
                         "]. Keep the file as it is, and have the disk checked.",
                     Answer::Ok);
  rig.acquisition.mnuAcquireStop_Click();
  ExpectStatus("Ready");
}

TEST_F(Job, AnotherFileInTheMiddleOfAJobTellsOfRowsOfTheFirstThatCannotBeReadBack) {
  rig.ConnectAndStart();
  rig.dialogs.ExpectSaveFile(rig.Path("first.mdb"));
  rig.acquisition.RecordToDB_Click();
  rig.Sample(10, 20, 30);
  rig.acquisition.RecordToDB_Click();
  Connection::Open(rig.Path("first.mdb"), OpenMode::ReadWrite)->Execute("DELETE FROM logData");
  rig.dialogs.ExpectSaveFile(rig.Path("second.mdb"));
  rig.acquisition.RecordToDB_Click();
  rig.dialogs.Expect("Not all rows of this job can be read back from [" + rig.Path("first.mdb") + "]", Answer::Ok);
  rig.Sample(11, 21, 31);
  rig.acquisition.mnuAcquireStop_Click();
  EXPECT_EQ(rig.Rows(rig.Path("second.mdb")).size(), 1u);
}

TEST_F(Job, StopFromPausedAndFromReadyToAcquireGoesToReady) {
  rig.ConnectAndStart();
  rig.acquisition.mnuAcquireStart_Click();
  rig.acquisition.mnuAcquireStop_Click();
  ExpectStatus("Ready");
  rig.Connect();
  rig.acquisition.mnuAcquireStop_Click();
  ExpectStatus("Ready");
}

TEST_F(Job, APauseEndsWithItsJobSoThatAPlaybackIsNotGrey) {
  rig.ConnectAndStart();
  rig.acquisition.mnuAcquireStart_Click();
  EXPECT_TRUE(HasStaleValues(rig.session, rig.clock.Ticks()));
  rig.acquisition.mnuAcquireStop_Click();
  rig.session.CurrentStatus = text::StatusPlayingBack;
  EXPECT_FALSE(HasStaleValues(rig.session, rig.clock.Ticks()));
}

TEST_F(Job, ASecondJobAppendsToTheFileOfTheFirst) {
  for (int job = 0; job < 2; ++job) {
    rig.Connect();
    rig.questions.choice = FileChoice::Append;
    rig.ChooseFile();
    rig.acquisition.mnuAcquireStart_Click();
    rig.Sample(10 + job, 20, 30);
    rig.acquisition.mnuAcquireStop_Click();
  }
  const auto rows = rig.Rows(rig.Path("job.mdb"));
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[1].a, 11.0);
}

TEST_F(Job, ALogThatWasAppendedToKeepsTheGraphSettingsOfItsOwnChannels) {
  rig.Connect();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  EXPECT_TRUE(rig.log.HoldsPresentChannels());
  rig.acquisition.mnuAcquireStop_Click();
  EXPECT_FALSE(rig.log.HoldsPresentChannels()) << "no log is open";

  std::swap(rig.session.Parameters[1].name, rig.session.Parameters[2].name);
  rig.Connect();
  rig.questions.choice = FileChoice::Append;
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  EXPECT_FALSE(rig.log.HoldsPresentChannels());
}

// --- The recording button ---

TEST_F(Job, TheButtonBeginsToRecordInTheMiddleOfAJob) {
  rig.ConnectAndStart();
  rig.Sample(10, 20, 30);
  rig.dialogs.ExpectSaveFile(rig.Path("late.mdb"));
  rig.acquisition.RecordToDB_Click();
  ExpectStatus("Acquiring Data");
  EXPECT_TRUE(rig.session.RecordToDB);
  EXPECT_EQ(rig.view.images["RecordToDB"], image::RecordOn);
  EXPECT_EQ(rig.session.LogFileInUse, rig.Path("late.mdb"));
  EXPECT_TRUE(rig.view.menuEnabled["mnuViewSummaryReport"]);
  EXPECT_EQ(CurrentVelk("TheFileName"), rig.Path("late.mdb"));
  EXPECT_EQ(rig.graphs.windows[1].refreshes, 1);
  rig.Sample(11, 21, 31);
  rig.acquisition.RecordToDB_Click();
  EXPECT_FALSE(rig.session.RecordToDB);
  EXPECT_EQ(rig.view.images["RecordToDB"], image::RecordOff);
  EXPECT_FALSE(rig.log.RecordsetIsOpen());
  rig.Sample(12, 22, 32);
  rig.acquisition.mnuAcquireStop_Click();
  EXPECT_EQ(rig.Rows(rig.Path("late.mdb")).size(), 1u);
}

TEST_F(Job, TheButtonPausesWhileTheFileIsChosen) {
  rig.ConnectAndStart();
  rig.dialogs.ExpectSaveFile(std::nullopt, [this] { ExpectStatus("Acquiring Paused"); });
  rig.acquisition.RecordToDB_Click();
  ExpectStatus("Acquiring Data");
  EXPECT_FALSE(rig.session.RecordToDB);
}

TEST_F(Job, TheButtonWorksWhilePausedWithoutResuming) {
  rig.ConnectAndStart();
  rig.acquisition.mnuAcquireStart_Click();
  rig.dialogs.ExpectSaveFile(rig.Path("paused.mdb"));
  rig.acquisition.RecordToDB_Click();
  ExpectStatus("Acquiring Paused");
  EXPECT_TRUE(rig.session.RecordToDB);
  rig.acquisition.mnuAcquireStart_Click();
  rig.Sample(1, 2, 3);
  rig.acquisition.mnuAcquireStop_Click();
  EXPECT_EQ(rig.Rows(rig.Path("paused.mdb")).size(), 1u);
}

TEST_F(Job, AFileThatCannotBeMadeLeavesTheJobRunningUnrecorded) {
  rig.ConnectAndStart();
  rig.Sample(10, 20, 30);
  rig.dialogs.ExpectSaveFile(rig.Path("no such folder/late.mdb"));
  rig.dialogs.Expect(" - Toolbar1_ButtonClick", Answer::Cancel);
  rig.acquisition.RecordToDB_Click();
  ExpectStatus("Acquiring Data");
  EXPECT_FALSE(rig.session.RecordToDB);
  EXPECT_EQ(rig.session.CurrentFile, "");
  rig.Sample(11, 21, 31);
  EXPECT_EQ(rig.graphs.windows[2].plots.size(), 2u);
}

// --- A log that can't be written ---

TEST_F(Job, AFullDiskShowsOneBoxCountsTheRowsAndGoesOnByItself) {
  rig.Connect();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  rig.Sample(10, 20, 30);
  rig.log.CloseLogRecordset();  // each append fails from here on
  rig.dialogs.Expect("- ProcessLine", Answer::Cancel);
  rig.Sample(11, 21, 31);
  EXPECT_EQ(rig.view.panels[5], "Rows not recorded: 1");
  rig.Sample(12, 22, 32);
  EXPECT_EQ(rig.view.panels[5], "Rows not recorded: 2") << "and no second box";
  rig.log.OpenLogRecordset();
  rig.Sample(13, 23, 33);
  EXPECT_EQ(rig.view.panels[5], "Rows not recorded: 2");
  rig.acquisition.mnuAcquireStop_Click();
  const auto rows = rig.Rows(rig.Path("job.mdb"));
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[1].a, 13.0);
}

TEST_F(Job, RetryWritesTheValuesAndTheTimeOfTheRowThatFailed) {
  rig.Connect();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  rig.log.CloseLogRecordset();
  double failedAt = 0;
  rig.dialogs.Expect("- ProcessLine", Answer::Retry, [&] {
    failedAt = TimePart(CDate(FormatDate(rig.clock.Now(), "hh:mm:ss")));
    rig.log.OpenLogRecordset();
    rig.Sample(99, 98, 97);
  });
  rig.Sample(10, 20, 30);
  EXPECT_EQ(rig.session.CurrentValue[1], 99.0f) << "the newest values stand again";
  rig.acquisition.mnuAcquireStop_Click();
  const auto rows = rig.Rows(rig.Path("job.mdb"));
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0].a, 99.0);
  EXPECT_EQ(rows[1].a, 10.0);
  EXPECT_EQ(rows[1].c, 30.0);
  EXPECT_EQ(rows[1].time, failedAt);
}

TEST_F(Job, RetryOfAFailedRowWritesItAndTakesItOffTheCount) {
  rig.Connect();
  rig.ChooseFile();
  rig.acquisition.mnuAcquireStart_Click();
  rig.log.CloseLogRecordset();
  rig.dialogs.Expect("- ProcessLine", Answer::Retry);
  rig.dialogs.Expect("- ProcessLine", Answer::Retry, [this] { rig.log.OpenLogRecordset(); });
  rig.Sample(10, 20, 30);
  EXPECT_EQ(rig.view.panels[5], "");
  rig.acquisition.mnuAcquireStop_Click();
  EXPECT_EQ(rig.Rows(rig.Path("job.mdb")).size(), 1u);
}

}  // namespace
}  // namespace velk
