// What the viewer of logs costs over VELK_BENCH_ROWS (2.6 million, 1.8 GB) with 64 channels: its opening, with the grid
// alone and as a window, a page of it, ranges, by themselves and in the window, the search for an event, sorts. The
// folder has to have room for the log:
// the present one, or VELK_BENCH_FOLDER. A log that VELK_BENCH_LOG names stays for the next run.

#include <benchmark/benchmark.h>

#include <QAbstractButton>
#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QTableView>
#include <limits>
#include <numeric>

#include "bench/long_log.h"
#include "log/open_log.h"
#include "reports/log_view.h"
#include "reports/windows/frm_summary_report.h"
#include "reports/windows/log_grid_model.h"

namespace velk::bench {

namespace {

constexpr int kRowsOfPage = 40;
constexpr int kFirstChannel = 3;

/// The long log, made once.
struct Job {
  Job() { MakeLongLog(recording.log, file); }
  static Job& Made() {
    static Job job;
    return job;
  }
  LongTask Task() { return {recording.dialogs, recording.clock, "Bench"}; }
  LogView& View() {
    if (!view) {
      LongTask task = Task();
      view = std::make_unique<LogView>(file, task);
    }
    return *view;
  }

  Folder folder;
  Recording recording{folder};
  const std::string file = LongLogIn(folder);
  std::unique_ptr<LogView> view;
};

void OpenWithItsGrid(benchmark::State& state) {
  Job& job = Job::Made();
  for (auto _ : state) {
    LongTask task = job.Task();
    LogView view(job.file, task);
    LogGridModel model(view, job.recording.english, nullptr);
    QTableView grid;
    grid.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    grid.setModel(&model);
    grid.resize(1000, 600);
    benchmark::DoNotOptimize(grid.grab());
  }
}

/// A machine without printers.
class NoPrinters : public SystemPrinters {
 public:
  std::vector<std::string> Names() const override { return {}; }
  std::string Default() const override { return {}; }
  std::unique_ptr<Printer> Make(const std::string&) const override { return nullptr; }
};

/// The window itself.
struct Viewer {
  explicit Viewer(Job& job)
      : open(job.recording.session, job.recording.platform, job.recording.log),
        task(job.Task()),
        view(job.file, task),
        window(host, {job.recording.session, job.recording.platform, open, choice}, view) {
    window.show();
    QApplication::processEvents();
  }

  const Translation words;
  const NoPrinters printers;
  PrinterChoice choice{printers};
  OpenLog open;
  WindowHost host{Job::Made().recording.dialogs, words};
  LongTask task;
  LogView view;
  frmSummaryReport window;
};

/// From the file to the window's first picture.
void OpenTheViewer(benchmark::State& state) {
  Job& job = Job::Made();
  OpenLog(job.recording.session, job.recording.platform, job.recording.log).EnsureReport(job.file);
  for (auto _ : state) {
    Viewer viewer(job);
    benchmark::DoNotOptimize(viewer.window.grab());
  }
}

void ShowAPageInTheWindow(benchmark::State& state) {
  Viewer viewer(Job::Made());
  auto& grid = *viewer.window.findChild<QTableView*>("logDataGrid");
  int row = 0;
  for (auto _ : state) {
    row = (row + 999'983) % (viewer.view.Count() - kRowsOfPage);
    grid.scrollTo(grid.model()->index(row, 0), QAbstractItemView::PositionAtTop);
    benchmark::DoNotOptimize(grid.viewport()->grab());
  }
}

void SetARangeInTheWindow(benchmark::State& state) {
  Viewer viewer(Job::Made());
  auto& begin = *viewer.window.findChild<QLineEdit*>("txtBeginTime");
  auto& update = *viewer.window.findChild<QAbstractButton*>("cmdUpdate");
  bool isWhole = true;
  for (auto _ : state) {
    isWhole = !isWhole;
    begin.setText(isWhole ? "14-Mar-2026 00:00:00" : "14-Mar-2026 00:10:00");
    update.click();
  }
}

void ShowAPage(benchmark::State& state) {
  LogView& view = Job::Made().View();
  int row = 0;
  for (auto _ : state) {
    row = (row + 999'983) % (view.Count() - kRowsOfPage);
    for (int i = 0; i < kRowsOfPage; ++i)
      for (int column = 0; column < static_cast<int>(view.Columns().size()); ++column)
        benchmark::DoNotOptimize(view.Text(row + i, column));
  }
}

void SearchAllColumns(benchmark::State& state) {
  Job& job = Job::Made();
  LogView& view = job.View();
  std::vector<int> watched(kChannels);
  std::iota(watched.begin(), watched.end(), 0);
  for (auto _ : state) {
    LongTask task = job.Task();
    int reached = 0;
    benchmark::DoNotOptimize(
        view.FindEvent(0, EventSearch(std::numeric_limits<double>::infinity()), watched, task, reached));
  }
  state.counters["rows/s"] =
      benchmark::Counter(static_cast<double>(view.Count()), benchmark::Counter::kIsIterationInvariantRate);
}

void SetARange(benchmark::State& state) {
  LogView& view = Job::Made().View();
  const double first = *view.FirstTime(), last = *view.LastTime();
  for (auto _ : state) {
    view.SetRange(first + 0.01, last - 0.01);
    benchmark::DoNotOptimize(view.Text(0, 2));
    benchmark::DoNotOptimize(view.Text(view.Count() - 1, 2));
  }
  view.SetRange(first, last);
}

void SortForTheFirstTime(benchmark::State& state) {
  Job& job = Job::Made();
  int column = kFirstChannel;
  for (auto _ : state) {
    LongTask task = job.Task();
    job.View().SortBy(column++, false, task);
  }
}

void SortAgain(benchmark::State& state) {
  Job& job = Job::Made();
  bool descending = true;
  for (auto _ : state) {
    LongTask task = job.Task();
    job.View().SortBy(kFirstChannel, descending, task);
    descending = !descending;
  }
}

BENCHMARK(OpenWithItsGrid)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();
BENCHMARK(OpenTheViewer)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();
BENCHMARK(ShowAPage)->Unit(benchmark::kMicrosecond);
BENCHMARK(ShowAPageInTheWindow)->Unit(benchmark::kMicrosecond);
BENCHMARK(SearchAllColumns)->Unit(benchmark::kMillisecond)->Iterations(2)->UseRealTime();
BENCHMARK(SetARange)->Unit(benchmark::kMicrosecond);
BENCHMARK(SetARangeInTheWindow)->Unit(benchmark::kMillisecond);
BENCHMARK(SortForTheFirstTime)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(SortAgain)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace velk::bench
