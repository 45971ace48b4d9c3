// A sample computed and drawn by itself, and the road of one without a database.

#include "core/sample_plotter.h"

#include <gtest/gtest.h>

#include "base/dates.h"
#include "core/sample_road.h"
#include "model/graph_map.h"
#include "model/status.h"
#include "model/texts.h"
#include "platform/settings/settings.h"
#include "support/fake_clock.h"
#include "support/fake_graphs.h"
#include "support/recording_view.h"
#include "support/scripted_dialogs.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

constexpr double kSecond = 1.0 / 86400;

/// Two channels on a graph and one that is computed of them.
class Plotter : public testing::Test {
 protected:
  Plotter() {
    session.NumberOfParameters = 2;
    session.NumberOfFormulae = 1;
    session.TotalParameters = 3;
    session.Formula = {"", "{a}+{b}"};
    session.AdditionalParameters.resize(2);
    session.AdditionalParameters[1].name = "sum";
    for (int i = 1; i <= 3; ++i) {
      Parameter& parameter = session.CurrentParameters[i];
      parameter.name = i == 1 ? "a" : i == 2 ? "b" : "sum";
      parameter.max = 100;
      parameter.FormIndex = 1;
      parameter.GraphVisible = true;
      parameter.Gain = 1;
      if (i < 3) session.Parameters[i] = parameter;
    }
    session.CurrentParameters[1].upperalarm = "5";
    BuildGraphMap(session, 3);
    graphs.CreateGraphWindows();
    session.SampleTime = start;
    session.Times.GraphEndTime = session.Times.LastPlotTime = session.Times.GraphPageTime = start;
    session.pixelslength = 120;
  }

  void Draw(const Plotting& plotting) {
    RunProcedure({dialogs, "Draw"}, [&](const Statements& run) { plotter.Draw(run, plotting); });
  }

  const double start = DateSerial(2026, 3, 14) + TimeOfDay(9, 30, 0);
  Session session;
  Gate gate;
  test::FakeClock clock{gate};
  test::ScriptedDialogs dialogs{gate};
  test::RecordingView view;
  test::FakeGraphs graphs{session};
  test::FakeGraphWindow& graph = graphs.windows[1];
  SamplePlotter plotter{session, view};
};

TEST_F(Plotter, ComputesAndDrawsEveryVisibleCurve) {
  session.CurrentValue[1] = 2;
  session.CurrentValue[2] = 3;
  Draw({.samplingRate = kSecond});
  ASSERT_EQ(graph.plots.size(), 3U);
  EXPECT_EQ(graph.plots[2].value, 5.0F);
  EXPECT_EQ(graph.labels[3], 5.0F);
  EXPECT_FALSE(session.FirstPoint);
}

TEST_F(Plotter, DrawsNothingOfAChannelThatStandsOnNoGraph) {
  session.CurrentParameters[2].FormIndex = 0;
  BuildGraphMap(session, 3);
  graphs.CreateGraphWindows();
  session.CurrentValue[1] = 2;
  session.CurrentValue[2] = 3;
  Draw({.samplingRate = kSecond});
  for (int number = 1; number <= kMaxParameters; ++number) {
    const test::FakeGraphWindow& window = graphs.windows[number];
    EXPECT_EQ(window.plots.size(), number == 1 ? 2U : 0U) << "the other two channels, on graph 1; here " << number;
    EXPECT_FALSE(window.labels.contains(2)) << number;
  }
  EXPECT_EQ(session.PreviousValue[2], 3.0F) << "it is measured all the same";
}

TEST_F(Plotter, CutsBlocksByTheRateThatItIsGiven) {
  Draw({.samplingRate = 10 * kSecond});
  ASSERT_EQ(graph.blocks.size(), 1U);
  EXPECT_EQ(graph.blocks[0].first, start);
  EXPECT_EQ(graph.blocks[0].second, start + 10 * kSecond * 120);
  plotter.MoveTimeBase(10 * kSecond);
  EXPECT_EQ(session.Times.GraphEndTime, start + 10 * kSecond * 120);
  EXPECT_EQ(session.Times.LastPlotTime, start);
}

TEST_F(Plotter, WatchesAlarmsOnlyWhenAsked) {
  session.CurrentValue[1] = 50;
  Draw({.samplingRate = kSecond});
  EXPECT_FALSE(session.AlarmTriggered[1]);
  EXPECT_EQ(view.beeps, 0);
  Draw({.samplingRate = kSecond, .watchesAlarms = true});
  EXPECT_TRUE(session.AlarmTriggered[1]);
  EXPECT_EQ(view.beeps, 1);
}

TEST_F(Plotter, MovesTheScrollBarOnlyWhenAsked) {
  Draw({.samplingRate = kSecond});
  EXPECT_TRUE(graph.scrolls.empty());
  Draw({.samplingRate = kSecond, .movesScrollBar = true});
  EXPECT_EQ(graph.scrolls.size(), 1U);
}

TEST_F(Plotter, DrawsSegmentsOfNoLengthWhereItBeginsAnew) {
  session.FirstPoint = false;
  session.PreviousValue[1] = 77;
  session.CurrentValue[1] = 2;
  session.SampleTime = start + 5 * kSecond;
  Draw({.samplingRate = kSecond, .beginsAnew = true});
  EXPECT_EQ(graph.plots.at(0).previousValue, 2.0F);
  EXPECT_EQ(graph.plots.at(0).previousTime, start + 5 * kSecond);
}

TEST_F(Plotter, ComputesHiddenChannelsTooWhereThatRunsAheadOfDrawing) {
  session.CurrentValue[1] = 2;
  session.CurrentValue[2] = 3;
  session.CurrentParameters[3].GraphVisible = false;
  RunProcedure({dialogs, "Compute"}, [&](const Statements& run) { plotter.Compute(run); });
  EXPECT_EQ(session.CurrentValue[3], 5.0F);
  session.CurrentValue[3] = 8;
  session.CurrentParameters[3].GraphVisible = true;
  Draw({.samplingRate = kSecond, .isComputed = true});
  EXPECT_EQ(session.CurrentValue[3], 8.0F) << "once a sample";
}

TEST_F(Plotter, DrawsTheFramesBehindAGapWhereItCatchesUp) {
  session.SampleTime = start + 400 * kSecond;
  Draw({.samplingRate = kSecond, .catchesUp = true});
  ASSERT_EQ(graph.blocks.size(), 4U);
  EXPECT_NEAR((graph.blocks[3].first - start) * 86400, 360, 0.001) << "that of the sample itself";
}

/// A log of a test's own.
class RememberedRows : public SampleLog {
 public:
  void AppendRow(const LogRow& row, bool) override { rows.push_back(row); }
  void AppendRowQuietly(const LogRow& row) override { rows.push_back(row); }
  void FollowPage(const Statements&) override { ++pages; }
  void Finish() override { ++ends; }

  std::vector<LogRow> rows;
  int pages = 0;
  int ends = 0;
};

TEST_F(Plotter, ASampleRunsTheWholeRoadWithoutADatabase) {
  test::TemporaryFolder folder;
  SettingsStore settings{folder.File("settings")};
  Platform platform{clock, gate, dialogs, settings, test::English()};
  RememberedRows log;
  SampleRoad road(session, platform, view, log);
  session.CurrentStatus = text::StatusAcquiringData;
  session.SerialData = "Any Serial Data";
  session.Delimiter = ",";
  session.Terminator = "\r";
  clock.Advance(1000);
  road.ProcessLine("09:30:01,20,30\r");
  ASSERT_EQ(log.rows.size(), 1U);
  EXPECT_EQ(log.rows[0].time, clock.Now());
  EXPECT_EQ(log.rows[0].values, (std::vector<double>{20, 30})) << "the inputs";
  EXPECT_EQ(session.CurrentValue[3], 50.0F) << "computed from them";
  EXPECT_EQ(log.pages, 1);
  session.StopRequested = true;
  road.ProcessLine("09:30:02,20,30\r");
  EXPECT_EQ(log.rows.size(), 1U);
  EXPECT_EQ(log.ends, 1);
}

}  // namespace
}  // namespace velk
