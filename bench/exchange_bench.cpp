// What comes in and goes out as text: VELK_BENCH_ROWS (2.6 million) of 18 columns into a finished log and out of it,
// beside the sqlite3 program doing the same in the same run, and the first page of a text file of a gigabyte
// (VELK_BENCH_BYTES). A log of the Jet format, made by bench/grow_jet_log.py, is VELK_BENCH_JET: its first opening, and
// a look for new rows in it. The folder has to have room for all of it: the present one, or VELK_BENCH_FOLDER.

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <QTableView>
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

#include "base/dates.h"
#include "bench/long_log.h"
#include "exchange/csv_import.h"
#include "exchange/csv_times.h"
#include "exchange/import_data.h"
#include "exchange/jet_log.h"
#include "exchange/windows/view_data.h"
#include "exchange/write_csv.h"
#include "exchange/write_xml.h"
#include "i18n/windows/window_host.h"

namespace velk::bench {

namespace {

constexpr int kColumns = 18;

/// A line a second with numbers of up to eight digits.
void WriteLines(const std::string& path, long rows, double bytes) {
  std::ofstream file(path, std::ios::binary);
  file << "Date,Time";
  for (int i = 1; i <= kColumns; ++i) file << ",Channel " << i;
  file << "\r\n";
  std::string line;
  for (long row = 0; row < rows && static_cast<double>(file.tellp()) < bytes; ++row) {
    line = CsvDayText(46000.0 + static_cast<double>(row / 86400)) + "," + CsvTimeText(static_cast<int>(row % 86400));
    for (int i = 0; i < kColumns; ++i) {
      const long number = (row * 7919 + i * 104729) % 99'999'999;
      line += "," + std::to_string(number / 1000) + "." + std::to_string(number % 1000 + 1000).substr(1);
    }
    file << line << "\r\n";
  }
}

struct Files {
  static Files& Made() {
    static Files files;
    return files;
  }
  Files() { WriteLines(csv, RowsToRead(), 1e18); }

  LongTask Task() { return {recording.dialogs, recording.clock, "Bench"}; }
  void Import(const std::string& to) {
    const CsvFile file(csv, CodePage::Western);
    LongTask task = Task();
    ImportIntoNewLog(file, PlanOf(file.Shape(), file.Shape().ColumnNames), to, true, recording.english, task);
  }
  const std::string& Log() {
    if (!FileExistsAt(log)) Import(log);
    return log;
  }
  static bool FileExistsAt(const std::string& path) { return std::filesystem::exists(path); }
  int Shell(const std::string& command) const { return std::system(command.c_str()); }

  Folder folder;
  Recording recording{folder};
  const std::string csv = folder.File("in.csv");
  const std::string log = folder.File("log.mdb");
};

void CountRows(benchmark::State& state) {
  state.counters["rows/s"] =
      benchmark::Counter(static_cast<double>(RowsToRead()), benchmark::Counter::kIsIterationInvariantRate);
}

void TextIntoALog(benchmark::State& state) {
  Files& files = Files::Made();
  for (auto _ : state) files.Import(files.folder.File("imported.mdb"));
  CountRows(state);
}

void TextIntoATableBySqlite3(benchmark::State& state) {
  Files& files = Files::Made();
  const std::string to = files.folder.File("peer.db");
  for (auto _ : state) {
    std::filesystem::remove(to);
    if (files.Shell("sqlite3 " + to + " '.mode csv' '.import " + files.csv + " logData'") != 0)
      state.SkipWithError("sqlite3 failed");
  }
  CountRows(state);
}

void LogIntoText(benchmark::State& state) {
  Files& files = Files::Made();
  const ExportSource source(files.Log(), ExportMode::LogToCsv);
  std::vector<int> fields;
  for (int i = 1; i < static_cast<int>(source.Fields().size()); ++i) fields.push_back(i);
  for (auto _ : state) {
    LongTask task = files.Task();
    WriteCsv(source, fields, files.folder.File("out.csv"), task);
  }
  CountRows(state);
}

void LogIntoXml(benchmark::State& state) {
  Files& files = Files::Made();
  const ExportSource source(files.Log(), ExportMode::LogToXml);
  for (auto _ : state) {
    LongTask task = files.Task();
    WriteXml(source, files.folder.File("out.xml"), task);
  }
  CountRows(state);
}

void LogIntoTextBySqlite3(benchmark::State& state) {
  Files& files = Files::Made();
  for (auto _ : state)
    if (files.Shell("sqlite3 -csv -header " + files.Log() + " 'SELECT * FROM logData ORDER BY Date ASC, Time ASC' > " +
                    files.folder.File("peer.csv")) != 0)
      state.SkipWithError("sqlite3 failed");
  CountRows(state);
}

void FirstPageOfALongFile(benchmark::State& state) {
  const char* wanted = std::getenv("VELK_BENCH_BYTES");
  Files& files = Files::Made();
  const std::string path = files.folder.File("long.csv");
  if (!Files::FileExistsAt(path)) WriteLines(path, 1'000'000'000, wanted == nullptr ? 1e9 : std::atof(wanted));
  const Translation english;
  WindowHost host(files.recording.dialogs, english);
  for (auto _ : state) {
    CsvFile file(path, CodePage::Western);
    CsvTable table(file);
    ViewData window(host, table, 46000, [](const CsvTable&, double) {});
    benchmark::DoNotOptimize(window.grab());
    state.PauseTiming();
    while (file.Index(1 << 22)) {
    }
    state.ResumeTiming();
  }
  rusage used{};
  getrusage(RUSAGE_SELF, &used);
  state.counters["MB at most"] = static_cast<double>(used.ru_maxrss) / 1024;
}

/// Skips a bench where no log of the Jet format was made.
const char* JetLogOf(benchmark::State& state) {
  const char* file = std::getenv("VELK_BENCH_JET");
  if (file == nullptr) state.SkipWithError("VELK_BENCH_JET names no file");
  return file;
}

void JetLogOpensFirst(benchmark::State& state) {
  const char* const file = JetLogOf(state);
  if (file == nullptr) return;
  Folder folder;
  Recording recording{folder};
  const std::string copy = folder.File("copy.mdb");
  for (auto _ : state) {
    std::filesystem::remove(copy);
    LongTask task(recording.dialogs, recording.clock, "Bench");
    CopyJetLog(file, copy, {VELK_JET_READER}, task);
  }
}

/// The rows behind the last one of a day: the work of the child, and the longest piece of ours.
void PollOfAJetLog(benchmark::State& state) {
  const char* const file = JetLogOf(state);
  if (file == nullptr) return;
  ImportData data;
  data.Initialize({true, file, "logData", "Date", "Time", {LiveField{.Name = "ID"}}}, {VELK_JET_READER});
  double longest = 0;
  rusage before{}, after{};
  getrusage(RUSAGE_CHILDREN, &before);
  for (auto _ : state) {
    const auto clock = [] {
      return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch()).count();
    };
    double begin = clock();
    const auto read = data.ReadData({45362, 43000});
    std::vector<ForeignRow> rows;
    for (bool goesOn = true; goesOn;) {
      goesOn = read->Read(rows);
      longest = std::max(longest, clock() - begin);
      std::this_thread::sleep_for(std::chrono::milliseconds(12));
      begin = clock();
    }
  }
  getrusage(RUSAGE_CHILDREN, &after);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  state.counters["longest piece, ms"] = longest;
  state.counters["child, s"] = benchmark::Counter(
      seconds(after.ru_utime) + seconds(after.ru_stime) - seconds(before.ru_utime) - seconds(before.ru_stime),
      benchmark::Counter::kAvgIterations);
}

// First: the memory of the others is not its own.
BENCHMARK(FirstPageOfALongFile)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(TextIntoALog)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
BENCHMARK(TextIntoATableBySqlite3)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
BENCHMARK(LogIntoText)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
BENCHMARK(LogIntoTextBySqlite3)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
BENCHMARK(JetLogOpensFirst)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
BENCHMARK(PollOfAJetLog)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(LogIntoXml)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();

}  // namespace

}  // namespace velk::bench
