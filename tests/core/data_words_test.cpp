#include "core/panel/data_words.h"

#include <gtest/gtest.h>

#include "base/dates.h"
#include "core/texts.h"
#include "model/texts.h"

namespace velk {
namespace {

/// A job that has run for a minute without a fault, one sample a second, the last one just now.
class DataPanelWords : public testing::Test {
 protected:
  DataPanelWords() {
    session.CurrentStatus = text::StatusAcquiringData;
    session.SamplingRate = 1.0 / 86400;
    session.TheTimeOut = 5;
    session.Data.hasValues = true;
    session.Data.samples = 60;
    session.Data.lastSample = session.Data.lastLine = session.Data.lastRow = kTicks;
  }
  DataWords At(std::int64_t ticks) const { return WordsOfData(session, ticks, 1.0); }
  std::string Now() const { return At(kTicks).text.English(); }

  static constexpr std::int64_t kTicks = 100'000;
  Session session;
};

TEST_F(DataPanelWords, TellRateAndRows) {
  session.RecordToDB = true;
  session.Data.rows = 1204;
  EXPECT_EQ(Now(), "1.0 samples/s \u00b7 1,204 rows");
  EXPECT_FALSE(At(kTicks).warns);
  EXPECT_FALSE(At(kTicks).stale);
  session.Data.rows = 1;
  EXPECT_EQ(Now(), "1.0 samples/s \u00b7 1 row");
}

TEST_F(DataPanelWords, AreNoneWithoutAJob) {
  for (const MessageText& status : {text::StatusReady, text::StatusCheckingHardware, text::StatusReadyToAcquire,
                                    text::StatusPlayingBack, text::StatusReadyToPlayback}) {
    session.CurrentStatus = status;
    EXPECT_EQ(Now(), "") << status.english;
  }
}

TEST_F(DataPanelWords, SayThatNothingIsRecorded) {
  EXPECT_EQ(Now(), "1.0 samples/s \u00b7 not recording");
}

TEST_F(DataPanelWords, TellSlowRatesByTheMinuteAndByTheHour) {
  const auto rate = [&](double perSecond) { return WordsOfData(session, kTicks, perSecond).text.English(); };
  EXPECT_EQ(rate(25), "25.0 samples/s \u00b7 not recording");
  EXPECT_EQ(rate(0.1), "0.1 samples/s \u00b7 not recording");
  EXPECT_EQ(rate(1.0 / 30), "2.0 samples/min \u00b7 not recording");
  EXPECT_EQ(rate(1.0 / 1800), "2.0 samples/h \u00b7 not recording");
}

TEST_F(DataPanelWords, CountRejectedLinesAndTellTheLastReason) {
  session.Data.rejected = 3;
  session.Data.lastReason = "4 values where 18 are expected";
  EXPECT_EQ(Now(), "1.0 samples/s \u00b7 not recording \u00b7 3 rejected: 4 values where 18 are expected");
  EXPECT_FALSE(At(kTicks).warns) << "others come through";
}

TEST_F(DataPanelWords, LeaveOutTheFirstLineOfAnOwnUnitWhichShowsALengthOnly) {
  session.Data.rejected = session.Data.firstLines = 1;
  EXPECT_EQ(Now(), "1.0 samples/s \u00b7 not recording");
  session.Data.rejected = 2;
  session.Data.lastReason = text::LineFailsCheck;
  EXPECT_EQ(Now(), "1.0 samples/s \u00b7 not recording \u00b7 1 rejected: the line fails its protocol's check");
}

TEST_F(DataPanelWords, WarnWhenEveryLineIsRejected) {
  session.Data.samples = 0;
  session.Data.rejected = 37;
  session.Data.lastReason = "4 values where 18 are expected";
  EXPECT_EQ(Now(), "no values \u00b7 37 rejected: 4 values where 18 are expected \u00b7 not recording");
  EXPECT_TRUE(At(kTicks).warns);
}

TEST_F(DataPanelWords, WarnThatValuesAreHeld) {
  session.RecordToDB = true;
  session.Data.rows = 12;
  session.Data.rejected = 2;
  session.Data.lastReason = "why";
  session.Data.heldSince = DateSerial(2026, 3, 14) + TimeOfDay(14, 2, 11);
  EXPECT_EQ(Now(), "values held since 14:02:11 \u00b7 2 rejected: why \u00b7 12 rows");
  EXPECT_TRUE(At(kTicks).warns);
  EXPECT_FALSE(At(kTicks).stale);
}

TEST_F(DataPanelWords, CallValuesOldThatAreHeldForAsLongAsTheTimeOut) {
  session.Data.rejected = 9;
  session.Data.heldSince = DateSerial(2026, 3, 14) + TimeOfDay(14, 2, 11);
  session.Data.lastLine = kTicks + 5000;
  EXPECT_FALSE(At(kTicks + 4999).stale);
  EXPECT_TRUE(At(kTicks + 5000).stale);
}

/// A rejected block of buffered lines holds nothing: there is no row of it.
TEST_F(DataPanelWords, WarnWhereLinesComeOfWhichNoneIsTakenAnyLonger) {
  session.Data.lastLine = kTicks + 5000;
  EXPECT_EQ(At(kTicks + 4999).text.English(), "1.0 samples/s \u00b7 not recording");
  EXPECT_EQ(At(kTicks + 5000).text.English(), "no values \u00b7 not recording");
  EXPECT_TRUE(At(kTicks + 5000).warns);
  EXPECT_TRUE(At(kTicks + 5000).stale);
}

TEST_F(DataPanelWords, TellHowLongThereWereNoDataFromTheTimeOutOn) {
  session.RecordToDB = true;
  session.Data.rows = 12;
  EXPECT_EQ(At(kTicks + 4999).text.English(), "1.0 samples/s \u00b7 12 rows");
  EXPECT_FALSE(At(kTicks + 4999).stale);
  EXPECT_EQ(At(kTicks + 5000).text.English(), "no data for 5 s \u00b7 12 rows");
  EXPECT_TRUE(At(kTicks + 5000).stale);
  EXPECT_TRUE(At(kTicks + 5000).warns);
  EXPECT_EQ(At(kTicks + 12'900).text.English(), "no data for 12 s \u00b7 12 rows");
  EXPECT_EQ(At(kTicks + 180'000).text.English(), "no data for 3 min \u00b7 12 rows");
}

TEST_F(DataPanelWords, WaitAsLongAsTheSamplingIsSlow) {
  session.SamplingRate = 60.0 / 86400;
  EXPECT_FALSE(At(kTicks + 299'000).stale);
  EXPECT_TRUE(At(kTicks + 300'000).stale);
  session.SamplingRate = 0;
  EXPECT_FALSE(At(kTicks + 999).stale) << "a second at least";
}

TEST_F(DataPanelWords, WarnWhenLinesComeAndNoRow) {
  session.RecordToDB = true;
  session.Data.rows = 7;
  session.Data.lastLine = session.Data.lastSample = kTicks + 6000;
  EXPECT_EQ(At(kTicks + 6000).text.English(), "1.0 samples/s \u00b7 7 rows \u00b7 no row for 6 s");
  EXPECT_TRUE(At(kTicks + 6000).warns);
  session.RecordToDB = false;
  EXPECT_FALSE(At(kTicks + 6000).warns);
}

TEST_F(DataPanelWords, TellSinceWhenTheJobIsPausedAndNothingElseOfTheValues) {
  session.CurrentStatus = text::StatusAcquiringPaused;
  session.Data.pausedSince = DateSerial(2026, 3, 14) + TimeOfDay(14, 2, 11);
  session.RecordToDB = true;
  session.Data.rows = 7;
  const DataWords words = At(kTicks + 60'000);
  EXPECT_EQ(words.text.English(), "paused since 14:02:11 \u00b7 7 rows");
  EXPECT_TRUE(words.stale);
  EXPECT_FALSE(words.warns);
}

TEST_F(DataPanelWords, TellThatTheFirstLineIsAwaited) {
  session.Data.samples = 0;
  EXPECT_EQ(Now(), "waiting for the first line \u00b7 not recording");
  EXPECT_FALSE(At(kTicks).warns);
}

TEST_F(DataPanelWords, TellThatAQuestionHoldsUpTheRecordingInAnyStatus) {
  session.CurrentStatus = text::StatusReadyToAcquire;
  session.Data.asksForReport = true;
  EXPECT_EQ(Now(), "nothing is recorded until the question is answered");
  EXPECT_TRUE(At(kTicks).warns);
}

TEST_F(DataPanelWords, NameWhatGoesWrongWithEachSample) {
  session.Data.failure = "Division by zero";
  EXPECT_EQ(Now(), "1.0 samples/s \u00b7 Division by zero \u00b7 not recording");
  EXPECT_TRUE(At(kTicks).warns);
}

TEST(Durations, AreCutToWholeUnitsAndGoOverToTheNextFromTwoOfItOn) {
  EXPECT_EQ(DurationText(0.9).English(), "0 s");
  EXPECT_EQ(DurationText(119.9).English(), "119 s");
  EXPECT_EQ(DurationText(120).English(), "2 min");
  EXPECT_EQ(DurationText(7199).English(), "119 min");
  EXPECT_EQ(DurationText(7200).English(), "2 h");
  EXPECT_EQ(DurationText(2 * 86400).English(), "2 days");
  EXPECT_EQ(DurationText(4321.0 * 86400).English(), "4,321 days");
}

class RecordingSign : public testing::Test {
 protected:
  RecordingSign() {
    session.Data.recordingSince = DateSerial(2026, 3, 14) + TimeOfDay(9, 30, 0);
    session.TotalParameters = 16;
  }
  Session session;
};

TEST_F(RecordingSign, NamesTheFileAndTheTimeSinceItsStart) {
  const auto after = [&](double seconds) {
    return RecordingText(session, "/jobs/well 7.mdb", session.Data.recordingSince + seconds / 86400).English();
  };
  EXPECT_EQ(after(0), "REC well 7.mdb  0:00:00");
  EXPECT_EQ(after(59), "REC well 7.mdb  0:00:59");
  EXPECT_EQ(after(3661), "REC well 7.mdb  1:01:01");
  EXPECT_EQ(after(100 * 3600), "REC well 7.mdb  100:00:00");
  EXPECT_EQ(after(-5), "REC well 7.mdb  0:00:00") << "the clock was set back";
}

TEST_F(RecordingSign, SaysThatTheJobIsPaused) {
  session.Data.pausedSince = 1;
  EXPECT_EQ(RecordingText(session, "a.mdb", 2).English(), "REC a.mdb  paused");
}

TEST_F(RecordingSign, KeepsBothEndsOfALongName) {
  EXPECT_EQ(RecordingText(session, "/x/a name that is much longer than it should be.mdb", 0).English(),
            "REC a name that is\u2026should be.mdb  0:00:00");
}

TEST_F(RecordingSign, TellsSizeFreeSpaceAndHowLongItLasts) {
  // 16 channels: 40 + 9.5 x 16 = 192 bytes a row; 1.92 GB hold 10 million rows, at 10 a second a million seconds,
  // which are eleven days and a half.
  EXPECT_EQ(RecordingToolTip(session, {"/jobs/a.mdb", 1.25e6, 1.92e9}, 10.0).English(),
            "Rows go to /jobs/a.mdb\nSize: 1.3 MB\nFree on this disk: 1.9 GB, which lasts for 11 days");
  EXPECT_EQ(RecordingToolTip(session, {"/jobs/a.mdb", 1200, 1.92e9}, {}).English(),
            "Rows go to /jobs/a.mdb\nSize: 2 KB\nFree on this disk: 1.9 GB");
  EXPECT_EQ(RecordingToolTip(session, {"/jobs/a.mdb", 1200, {}}, 1.0).English(), "Rows go to /jobs/a.mdb\nSize: 2 KB");
}

}  // namespace
}  // namespace velk
