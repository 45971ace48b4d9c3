#include "core/page_catch_up.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <memory>

#include "base/dates.h"
#include "base/language.h"
#include "graphs/parameter_curves.h"
#include "graphs/strip_chart.h"
#include "model/graph_map.h"
#include "support/fake_graphs.h"
#include "support/surface_recording.h"

namespace velk {
namespace {

constexpr double kOneSecond = 1.0 / 86400;

/// A graph window that is nothing but its chart.
class ChartWindow : public test::FakeGraphWindow {
 public:
  ChartWindow(Session& session, const ChartMeasures& measures)
      : measures_(measures), curves_(session, 1), chart_(session.Times, measures_, curves_, english_, surfaces_) {}

  void Picture2_Update(double blockStart, double blockEnd) override {
    FakeGraphWindow::Picture2_Update(blockStart, blockEnd);
    chart_.Picture2_Update(blockStart, blockEnd);
  }
  double TimeOrigin() const override { return chart_.TimeOrigin(); }

 private:
  const ChartMeasures measures_;
  Language english_;
  ParameterCurves curves_;
  SurfaceRecording header_{11000, 250}, plot_{11000, PlotHeight(measures_)}, axis_{963, PlotHeight(measures_)};
  ChartSurfaces surfaces_{header_, plot_, axis_};
  StripChart chart_;
};

/// A job of one channel that began at 09:30 and has drawn its first block.
struct CaughtJob {
  explicit CaughtJob(double pageHeight = 3600) {
    session.MaximumTime = pageHeight;
    session.TotalParameters = session.NumberOfParameters = 1;
    session.CurrentParameters[1].FormIndex = 1;
    session.CurrentParameters[1].GraphVisible = true;
    BuildGraphMap(session, 1);
    window = std::make_unique<ChartWindow>(session, MeasuresOf(session));
    session.GraphForms[1] = window.get();
    session.Times.GraphTimeStep = kOneSecond;
    session.Times.GraphPageTime = session.Times.GraphEndTime = start;
    Block();
  }
  /// As a sample that reaches the end of the blocks does.
  void Block() {
    const double end = session.Times.GraphEndTime + 120 * kOneSecond;
    window->Picture2_Update(session.Times.GraphEndTime, end);
    const double page = session.Times.GraphPageTime;
    FollowFirstPage(session);
    pages += session.Times.GraphPageTime != page;
    session.Times.GraphEndTime = end;
  }
  void CatchUpTo(double seconds) {
    session.SampleTime = start + seconds * kOneSecond;
    CatchUpPage(session, kOneSecond);
  }
  double SecondsOf(double time) const { return (time - start) * 86400; }

  const double start = DateSerial(2026, 3, 14) + TimeOfDay(9, 30, 0);
  Session session;
  std::unique_ptr<ChartWindow> window;
  int pages = 0;  ///< turned by Block
};

TEST(CatchUpPage, LeavesTheBlockOfTheSampleToTheSample) {
  CaughtJob job;
  job.CatchUpTo(239);
  EXPECT_EQ(job.window->blocks.size(), 1u);
  job.CatchUpTo(240.5);
  ASSERT_EQ(job.window->blocks.size(), 2u) << "the one from 120 to 240 seconds was left out";
  EXPECT_NEAR(job.SecondsOf(job.window->blocks[1].first), 120, 0.001);
  EXPECT_NEAR(job.SecondsOf(job.session.Times.GraphEndTime), 240, 0.001);
  // The block ends at the bottom of the page of 240 seconds, so the origin goes half way to 120.
  EXPECT_NEAR(job.SecondsOf(job.session.Times.GraphPageTime), 60, 0.001);
}

TEST(CatchUpPage, StandsWhereSamplesWouldHaveBroughtIt) {
  for (const double height : {3600.0, 1800.0, 7200.0, 9001.0, 900.0}) {
    for (const int blocks : {3, 7, 20, 61}) {
      CaughtJob caughtUp(height), walked(height);
      const double seconds = blocks * 120 + 60;
      caughtUp.CatchUpTo(seconds);
      for (int block = 1; block < blocks; ++block) walked.Block();
      EXPECT_EQ(caughtUp.session.Times.GraphEndTime, walked.session.Times.GraphEndTime) << height << " " << blocks;
      EXPECT_EQ(caughtUp.session.Times.GraphPageTime, walked.session.Times.GraphPageTime) << height << " " << blocks;
      EXPECT_EQ(caughtUp.window->TimeOrigin(), walked.window->TimeOrigin()) << height << " " << blocks;
    }
  }
}

TEST(CatchUpPage, CountsEachPageAsIfTheSamplesHadCome) {
  for (const double height : {3600.0, 9001.0, 900.0}) {
    for (const int blocks : {3, 20, 5040}) {  // the last one is a week
      CaughtJob caughtUp(height), walked(height);
      caughtUp.CatchUpTo(blocks * 120 + 60);
      for (int block = 1; block < blocks; ++block) walked.Block();
      EXPECT_EQ(caughtUp.session.PagesTurned, walked.pages) << height << " " << blocks;
    }
  }
}

TEST(CatchUpPage, DrawsOnlyWhatCanStandOnTheFinalPageOrPushesTheOldOneOff) {
  CaughtJob job;
  job.CatchUpTo(7 * 86400);
  EXPECT_EQ(job.window->blocks.size(), 1u + 6u) << "two pages of two blocks, and two more";
  const double end = job.SecondsOf(job.session.Times.GraphEndTime);
  EXPECT_GT(end, 7 * 86400 - 120.001);
  EXPECT_LE(end, 7 * 86400 + 0.001);
}

TEST(CatchUpPage, BringsASampleOntoThePageHoweverFarItIs) {
  for (const double seconds : {1e5, 1e7, 1e9, 2e11}) {  // the last one is in the year 8363
    CaughtJob job;
    job.CatchUpTo(seconds);
    job.Block();  // the sample's own
    const double row = job.SecondsOf(job.session.SampleTime) - job.SecondsOf(job.session.Times.GraphPageTime);
    EXPECT_GE(row, 0) << seconds;
    EXPECT_LT(row, 240) << seconds;
  }
}

TEST(CatchUpPage, LeavesAPageWhoseBlocksHaveNoLength) {
  CaughtJob job;
  job.session.pixelslength = 1e-300;
  job.CatchUpTo(600);
  EXPECT_EQ(job.window->blocks.size(), 1u);
}

}  // namespace
}  // namespace velk
