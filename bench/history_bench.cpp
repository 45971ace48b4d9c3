// What looking back costs: a page of 240 rows and 8 curves out of VELK_BENCH_ROWS (2.6 million, 1.8 GB) with 64
// channels, at a random minute of the job: found and read, drawn on a plot of 900x240, and the live page drawn again
// behind a resize. Figures are medians; the file is in the page cache. The folder has to have room for the log: the
// present one, or VELK_BENCH_FOLDER.
// The bars of whole windows are dragged by flood_bench --drag.

#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <algorithm>
#include <chrono>
#include <random>
#include <vector>

#include "base/dates.h"
#include "bench/long_log.h"
#include "graphs/history_page.h"
#include "log/log_reader.h"
#include "log/page_rows.h"
#include "model/graph_map.h"
#include "platform/drawing/surface_image.h"

namespace velk::bench {

namespace {

constexpr int kCurves = 8;
constexpr double kDay = 46095;  ///< of the first row
constexpr double kSecond = 1.0 / 86400;
constexpr double kPlotWidth = 900 * kTwipsPerPixel, kPlotHeight = 240 * kTwipsPerPixel;

using Time = std::chrono::steady_clock;

double SecondsSince(Time::time_point start) {
  return std::chrono::duration<double>(Time::now() - start).count();
}

double Median(std::vector<double>& seconds) {
  std::nth_element(seconds.begin(), seconds.begin() + static_cast<std::ptrdiff_t>(seconds.size() / 2), seconds.end());
  return seconds[seconds.size() / 2];
}

/// The long log, made once for all benchmarks.
const std::string& LongLog() {
  static const Folder folder;
  static const std::string file = [] {
    std::string made = folder.File("log.mdb");
    Recording(folder).log.CreateLogFile(made);
    FillLog(made);
    return made;
  }();
  return file;
}

/// Every eighth channel is a curve of graph 1.
struct Chart {
  Chart() {
    session.NumberOfParameters = session.TotalParameters = kChannels;
    session.AcquisitionMode = true;
    session.Times.GraphTimeStep = kSecond;
    session.Times.BlockPairsPerPage = 1;
    for (int i = 1; i <= kChannels; ++i) {
      Parameter& channel = session.CurrentParameters[static_cast<std::size_t>(i)];
      channel.max = 500;
      channel.color = i * 0x1D3A57 & 0xFFFFFF;
      channel.FormIndex = i % kCurves == 0 ? 1 : 2;
      channel.GraphVisible = true;
    }
    BuildGraphMap(session, kChannels);
  }

  static double RandomMinute(std::mt19937& random) {
    const long minute = static_cast<long>(random() % static_cast<unsigned long>(RowsToRead() / 60 - 5));
    return JoinDateTime(kDay + static_cast<double>(minute / 1440),
                        TimeOfDay(static_cast<int>(minute % 1440 / 60), static_cast<int>(minute % 60), 0));
  }

  Session session;
  Language english;
  ParameterCurves curves{session, 1};
  SurfaceImage picture1{kPlotWidth, kPlotHeight, 1, QFont()}, pic2{kPlotWidth, kPlotHeight, 1, QFont()},
      picture3{966, kPlotHeight, 1, QFont()};
  HistoryPage page{session, curves, {}, english, {picture1, pic2, picture3}};
};

/// The rows of a page, each looked at.
void FindAndReadAPage(benchmark::State& state) {
  LogReader reader(LongLog());
  Chart chart;
  reader.Choose(RowValues(chart.session, chart.curves, kChannels).Channels());
  std::mt19937 random(1);
  std::vector<double> seconds;
  long long rows = 0;
  for (auto _ : state) {
    const double from = Chart::RandomMinute(random);
    const auto start = Time::now();
    const auto page = RowsOfPage(reader, from, from + 240 * kSecond);
    for (bool isOnRow = page != nullptr; isOnRow; isOnRow = page->Next()) ++rows;
    seconds.push_back(SecondsSince(start));
  }
  state.counters["median_us"] = Median(seconds) * 1e6;
  state.counters["rows"] = static_cast<double>(rows) / static_cast<double>(state.iterations());
}

/// All that a step of the bar does: frame, finding, reading, curves.
void StepOfTheBar(benchmark::State& state) {
  LogReader reader(LongLog());
  Chart chart;
  std::mt19937 random(1);
  std::vector<double> seconds;
  for (auto _ : state) {
    const double from = Chart::RandomMinute(random);
    const auto start = Time::now();
    chart.page.Picture2_Update2(from);
    chart.page.PlotOldData(reader, from, from + 240 * kSecond);
    seconds.push_back(SecondsSince(start));
  }
  state.counters["median_us"] = Median(seconds) * 1e6;
}

/// The live page of 240 rows again, as behind a resize.
void RepaintOfTheLivePage(benchmark::State& state) {
  LogReader reader(LongLog());
  Chart chart;
  std::mt19937 random(1);
  std::vector<double> seconds;
  for (auto _ : state) {
    const double from = Chart::RandomMinute(random);
    const auto start = Time::now();
    chart.pic2.Cls();
    chart.page.ReplotFromLog(reader, from, from + 240 * kSecond, from);
    seconds.push_back(SecondsSince(start));
  }
  state.counters["median_us"] = Median(seconds) * 1e6;
}

BENCHMARK(FindAndReadAPage)->Unit(benchmark::kMicrosecond)->Iterations(500);
BENCHMARK(StepOfTheBar)->Unit(benchmark::kMicrosecond)->Iterations(500);
BENCHMARK(RepaintOfTheLivePage)->Unit(benchmark::kMicrosecond)->Iterations(500);

}  // namespace

}  // namespace velk::bench

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
