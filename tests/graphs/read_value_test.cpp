#include "graphs/read_value.h"

#include "graphs/history_fixture.h"

namespace velk::test {

namespace {

struct ReadJob : RecordedJob {
  explicit ReadJob(int curveCount = 1) : RecordedJob(curveCount) {}
  std::optional<ReadPoint> At(double second, int slot = 1) {
    return ReadValueAt(session, curves, slot, open.Reader(), JobStart() + second * kSecond);
  }
  ParameterCurves curves{session, 3};
};

}  // namespace

TEST(ReadValue, TakesTheRowOfTheSecond) {
  ReadJob job(2);
  job.Append(5, {10, 20});
  job.Append(6, {11, 21});
  const auto point = job.At(6, 2);
  ASSERT_TRUE(point.has_value());
  EXPECT_EQ(point->value, 21);
  EXPECT_DOUBLE_EQ(point->time, JobStart() + 6 * kSecond);
}

TEST(ReadValue, TakesTheFirstRowUpToOneRowLengthBehindTheTime) {
  ReadJob job;
  job.session.Times.GraphTimeStep = 10 * kSecond;
  job.Append(5, {10});
  job.Append(17, {11});
  EXPECT_EQ(job.At(7)->value, 11);
  EXPECT_EQ(job.At(5)->value, 10);
  EXPECT_FALSE(job.At(18).has_value());
  EXPECT_FALSE(job.At(6.5).has_value()) << "17 lies beyond 16.5";
}

TEST(ReadValue, FindsTheRowOfATimeWithinItsSecond) {
  ReadJob job;
  job.Append(5, {10});
  EXPECT_EQ(job.At(5.5)->value, 10);
  EXPECT_FALSE(job.At(6.0).has_value());
}

TEST(ReadValue, ComputesAChannelFromTheRow) {
  ReadJob job;
  job.session.CurrentParameters[1].name = "rate";
  job.Compute("avg({rate})*2");
  job.session.AdditionalParameters[1].AverageCount = 3;
  job.Append(5, {10});
  EXPECT_EQ(job.At(5, 2)->value, 20);
  EXPECT_EQ(job.session.AdditionalParameters[1].AverageCount, 3);
}

TEST(ReadValue, OfAPlayedFileGoesByTheNamesOfItsColumns) {
  ReadJob job(2);
  job.Append(5, {10, 20});
  job.PlayWithColumnsTurned();
  EXPECT_EQ(job.At(5, 1)->value, 20);
  EXPECT_EQ(job.At(5, 2)->value, 10);
}

TEST(ReadValue, InPlaybackHasGainAndOffsetOnceMore) {
  ReadJob job;
  job.session.CurrentParameters[1].Gain = 2;
  job.session.CurrentParameters[1].Offset = 5;
  job.Append(5, {10});
  EXPECT_EQ(job.At(5)->value, 10);
  job.log.Finalise();
  job.session.AcquisitionMode = false;
  job.session.CurrentStatus = text::StatusPlayingBack;
  EXPECT_EQ(job.At(5)->value, 25);
}

TEST(ReadValue, CaptionsNameTimeAndValueByThePictureOfTheCurve) {
  Parameter curve;
  curve.name = "Treating Pressure";
  curve.format = "#0.0";
  EXPECT_EQ(ReadValueCaption(curve, {JobStart() + 65 * kSecond, 1204.56F}, English()),
            "Treating Pressure at 09:31:05 : 1204.6");
  EXPECT_EQ(ReadValueCaption(curve, {JobStart() + 65 * kSecond, 1204.56F}, InBrackets()),
            "<Treating Pressure>< at >09:31:05 : 1204.6");
}

}  // namespace velk::test
