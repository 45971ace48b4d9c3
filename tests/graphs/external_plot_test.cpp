#include "graphs/external_plot.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <thread>

#include "graphs/external_follower.h"
#include "graphs/history_fixture.h"

namespace velk {
namespace {

using test::JobStart;
using test::kSecond;

/// The page of a followed table, with what came onto it.
struct ExternalPage : testing::Test {
  ExternalPage() {
    live.Fields = {LiveField{.Name = "a", .DisplayName = "A", .Colour = 0x0000FF}};
    curves.Follow(live);
    plot.FollowCurves();
    plot.IntilizeTime(JobStart() + 12 * kSecond);
    plot.onBlock = [this](double start, double end) {
      blocks.push_back(std::lround((start - JobStart()) / kSecond));
      chart.chart.Picture2_Update(start, end);
    };
    plot.onValue = [this](int, double value) { values.push_back(value); };
  }
  static ForeignRow Row(double second, double value) { return {JobStart() + second * kSecond, {value}}; }
  int Poll(const std::vector<ForeignRow>& rows) {
    plot.BeginPoll();
    return plot.PlotData(rows);
  }
  std::size_t Lines() const {
    return static_cast<std::size_t>(
        std::count_if(chart.pic2.calls.begin(), chart.pic2.calls.end(), [](const auto& call) {
          return call.find("0000ff") != std::string::npos || call.find("0000FF") != std::string::npos;
        }));
  }

  test::RecordedChart chart;
  LiveImport live;
  ExternalCurves curves{live};
  TimeBase& times = chart.session.Times;
  ChartMeasures measures{3600, 120, 15};
  ExternalPlot plot{times, chart.chart, curves, measures, 1};
  std::vector<long> blocks;
  std::vector<double> values;
};

TEST_F(ExternalPage, BeginsAtTheMinute) {
  EXPECT_EQ(plot.FormStart(), JobStart());
  EXPECT_EQ(plot.LastRead(), JobStart());
  EXPECT_EQ(times.GraphEndTime, JobStart());
  EXPECT_FALSE(plot.HasRows());
}

TEST_F(ExternalPage, DrawsEachRowOnceThoughPollsBringTheLastSecondAgain) {
  EXPECT_EQ(Poll({Row(1, 10), Row(2, 20)}), 2);
  EXPECT_EQ(plot.LastRead(), Row(2, 0).time);
  EXPECT_EQ(Poll({Row(2, 20)}), 0);
  EXPECT_EQ(Poll({Row(2, 20), Row(2, 21), Row(3, 30)}), 2);
  EXPECT_EQ(Poll({Row(3, 30)}), 0);
  EXPECT_EQ(values, (std::vector<double>{10, 20, 21, 30}));
}

TEST_F(ExternalPage, DrawsRowsOfOnePollInOrderOfTime) {
  EXPECT_EQ(Poll({Row(3, 30), Row(1, 10), Row(2, 20)}), 3);
  EXPECT_EQ(values, (std::vector<double>{10, 20, 30}));
  EXPECT_EQ(Poll({Row(2, 99), Row(4, 40)}), 1) << "one that is older than the last is not read again";
}

TEST_F(ExternalPage, DrawsTheFrameOfEachBlockThatRowsReach) {
  Poll({Row(1, 10), Row(119, 20)});
  EXPECT_EQ(blocks, (std::vector<long>{0}));
  Poll({Row(120, 30)});
  EXPECT_EQ(blocks, (std::vector<long>{0, 120}));
  Poll({Row(500, 40)});
  EXPECT_EQ(blocks, (std::vector<long>{0, 120, 240, 360, 480}));
  EXPECT_EQ(times.GraphPageTime, chart.chart.TimeOrigin());
}

TEST_F(ExternalPage, DoesNotDrawTheBlocksOfAMonth) {
  Poll({Row(1, 10)});
  Poll({Row(30 * 86400, 20)});
  EXPECT_LT(blocks.size(), 10U);
  EXPECT_GT(times.GraphEndTime, Row(30 * 86400, 0).time);
  EXPECT_LE(chart.chart.TimeOrigin(), Row(30 * 86400, 0).time);
}

TEST_F(ExternalPage, KeepsTheRowsOfThePageOnly) {
  std::vector<ForeignRow> rows;
  for (int second = 1; second <= 1200; ++second) rows.push_back(Row(second, 1));
  Poll(rows);
  EXPECT_LT(plot.Rows().size(), 400U);
  EXPECT_LE(plot.Rows().front().time, times.GraphPageTime);
  EXPECT_EQ(plot.Rows().back().time, Row(1200, 0).time);
}

TEST_F(ExternalPage, TellsACurveOnceThatCannotBeDrawn) {
  live.Fields[0].max = live.Fields[0].min;
  curves.Follow(live);
  Poll({Row(1, 10), Row(2, 20)});
  EXPECT_EQ(plot.TakeLeftOut(), 1);
  EXPECT_EQ(plot.TakeLeftOut(), 0);
  Poll({Row(3, 30)});
  EXPECT_EQ(plot.TakeLeftOut(), 0);
  plot.FollowCurves();
  Poll({Row(4, 40)});
  EXPECT_EQ(plot.TakeLeftOut(), 1) << "its scale was edited";
}

TEST_F(ExternalPage, LeavesACurveOpenWhereAValueIsMissing) {
  Poll({Row(1, 10), Row(2, 20)});
  chart.Forget();
  Poll({Row(3, std::nan(""))});
  Poll({Row(4, 40)});
  EXPECT_EQ(Lines(), 0U);
  Poll({Row(5, 50)});
  EXPECT_EQ(Lines(), 1U);
}

/// A second process writes; VELK_FOLLOW_SECONDS makes it ten rows a second for so long.
class FollowedWhileWritten : public ExternalPage {
 protected:
  /// Rows of 10 a second of their own time from `first` on, numbered from 1.
  void Follow(double first, int count, double pauseMs) {
    plot.IntilizeTime(first);
    const std::string database = folder.File("rig 7.mdb");
    Connection::Open(database, OpenMode::CreateNew)->Execute("CREATE TABLE r (d DATE, t DATE, a DOUBLE)");
    live = {true, database, "r", "d", "t", live.Fields};
    const std::string script = std::string(VELK_SOURCE_DIR) + "/tests/support/fill_database.py";
    const std::string command = "python3 -B '" + script + "' '" + database + "' r " + std::to_string(count) + " " +
                                std::to_string(static_cast<long>(DatePart(first))) + " " +
                                std::to_string(StartAt(first).second) + " " + std::to_string(pauseMs);
    int ended = -1;
    std::thread writer([&] { ended = std::system(command.c_str()); });
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(60'000) +
                          std::chrono::milliseconds(static_cast<long>(count * pauseMs * 2));
    ExternalFollower follower(plot, {});
    // A process of its own takes its own time; what was read to its end is complete.
    while (values.size() < static_cast<std::size_t>(count) && std::chrono::steady_clock::now() < deadline) {
      follower.Begin(live);
      while (follower.IsReading()) {
        follower.ReadPiece();
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
      }
    }
    writer.join();
    EXPECT_EQ(ended, 0);
    ASSERT_EQ(values.size(), static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) ASSERT_EQ(values[static_cast<std::size_t>(i)], i + 1);
  }

  /// Looks at a table that stands, until all of a look is drawn.
  void Look(ExternalFollower& follower) {
    follower.Begin(live);
    while (follower.IsReading()) follower.ReadPiece();
  }

  static int Count(int preset) {
    const char* seconds = std::getenv("VELK_FOLLOW_SECONDS");
    return seconds != nullptr ? std::atoi(seconds) * 10 : preset;
  }
  static double Pause() { return std::getenv("VELK_FOLLOW_SECONDS") != nullptr ? 100 : 2; }

  test::TemporaryFolder folder;
};

TEST_F(FollowedWhileWritten, BringsEveryRowOnceAndInOrder) {
  Follow(JobStart(), Count(600), Pause());
}

TEST_F(FollowedWhileWritten, BringsEveryRowOfATableWhoseRowsLieInNoOrder) {
  plot.IntilizeTime(DateSerial(2026, 3, 15));
  // What is drawn is written down: no pages that are copied, no curve that wraps a hundred times.
  plot.onBlock = {};
  live.Fields[0].max = 25'000;
  curves.Follow(live);
  const std::string database = folder.File("rig 7.mdb");
  // 7919 and 25,000 have no factor in common: each second once.
  Connection::Open(database, OpenMode::CreateNew)
      ->Execute(
          "CREATE TABLE r (d DATE, t DATE, a DOUBLE);"
          "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 24999)"
          "INSERT INTO r SELECT 46096, (i * 7919 % 25000) / 86400.0, i * 7919 % 25000 FROM n");
  live = {true, database, "r", "d", "t", live.Fields};
  ExternalFollower follower(plot, {});
  Look(follower);
  ASSERT_EQ(values.size(), 25'000U);
  for (std::size_t i = 0; i < values.size(); ++i) ASSERT_EQ(values[i], static_cast<double>(i));
  Look(follower);
  EXPECT_EQ(values.size(), 25'000U) << "each of them once";
}

TEST_F(FollowedWhileWritten, BringsEveryRowOverMidnight) {
  const int count = Count(600);
  Follow(DateSerial(2026, 3, 15) - count / 20 * kSecond, count, Pause());
}

}  // namespace
}  // namespace velk
