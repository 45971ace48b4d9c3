// What looking back costs: a page of 240 rows and 8 curves out of VELK_BENCH_ROWS (2.6 million, 1.8 GB) with 64
// channels, at a random minute of the job: found and read, drawn on a plot of 900x240, and the live page drawn again
// behind a resize. Figures are medians; the file is in the page cache. The folder has to have room for the log: the
// present one, or VELK_BENCH_FOLDER.
//
//   bench/history_bench --drag SECONDS     records 100 rows a second while pages of 8 charts are drawn without a pause;
//                                          fails where a row was more than 50 ms late, is missing, or memory has grown

#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <memory>
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

long ResidentKilobytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.rfind("VmRSS:", 0) == 0) return std::atol(line.c_str() + 6);
  return 0;
}

/// A recording with an hour behind it, looked back into by the pages of 8 charts in turn.
class DraggedRecording {
 public:
  explicit DraggedRecording(int seconds) : rows_(seconds * 100L) {
    recording_.log.CreateLogFile(file_);
    recording_.log.ConnectLogFile(file_);
    recording_.log.OpenLogRecordset();
    Transaction before(*recording_.log.Writing());
    for (int second = 0; second < 3600; ++second) Append(kDay + second * kSecond);
    before.Commit();
    for (auto& chart : charts_) chart = std::make_unique<Chart>();
  }

  int Run() {
    LogReader reader(file_);
    const auto start = Time::now();
    long early = 0, pages = 0;
    for (long row = 0; row < rows_; ++row) {
      const auto due = start + std::chrono::milliseconds(10 * row);
      while (Time::now() < due) longestPage_ = std::max(longestPage_, Took([&] { DrawPage(reader, pages++); }));
      longestAppend_ =
          std::max(longestAppend_, Took([&] { Append(kDay + 0.5 + static_cast<double>(row) * kSecond / 100); }));
      latest_ = std::max(latest_, SecondsSince(due));
      if (row == rows_ / 2) early = ResidentKilobytes();  // caches have filled by then
    }
    const long grown = ResidentKilobytes() - early;
    recording_.log.Finalise();
    const auto held = LogReader(file_).Count();
    std::printf("%ld rows, %ld pages, latest row %.1f ms behind its time, %ld kB grown, %lld rows in the log\n", rows_,
                pages, latest_ * 1e3, grown, static_cast<long long>(held));
    std::printf("longest page %.1f ms, longest append %.1f ms\n", longestPage_ * 1e3, longestAppend_ * 1e3);
    return latest_ <= 0.05 && held == rows_ + 3600 && grown <= 1024 ? 0 : 1;
  }

 private:
  template <class Work>
  static double Took(const Work& work) {
    const auto start = Time::now();
    work();
    return SecondsSince(start);
  }
  void Append(double time) {
    recording_.log.AppendLogRow({time, std::vector<double>(kChannels, static_cast<double>(++appended_ % 500))});
  }
  void DrawPage(LogReader& reader, long page) {
    const double from = kDay + static_cast<double>(page % 55) * 60 * kSecond;
    HistoryPage& chart = charts_[static_cast<std::size_t>(page) % charts_.size()]->page;
    chart.Picture2_Update2(from);
    chart.PlotOldData(reader, from, from + 240 * kSecond);
  }

  const long rows_;
  Folder folder_;
  Recording recording_{folder_};
  const std::string file_ = folder_.File("dragged.mdb");
  std::array<std::unique_ptr<Chart>, 8> charts_;
  long appended_ = 0;
  double latest_ = 0, longestPage_ = 0, longestAppend_ = 0;  ///< seconds
};

}  // namespace

int Drag(int seconds) {
  return DraggedRecording(seconds).Run();
}

}  // namespace velk::bench

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  if (argc == 3 && std::string(argv[1]) == "--drag") return velk::bench::Drag(std::atoi(argv[2]));
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
