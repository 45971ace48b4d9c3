// What a recorded row costs: AppendLogRow beside a bare prepared INSERT of the same row, each into a log of its own,
// both write-ahead log with synchronous=FULL; and what the index over Date and Time adds to a row. What a page of
// history costs: 240 rows out of VELK_BENCH_ROWS (2.6 million, 1.8 GB) with 64 channels, by the index and by bisection.
// The folder has to be on a real disk: the present one, or VELK_BENCH_FOLDER.
//
//   bench/log_bench --benchmark_repetitions=5

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/dates.h"
#include "bench/long_log.h"
#include "log/channels.h"
#include "log/log_reader.h"
#include "log/log_writer.h"
#include "model/session.h"

namespace {

using velk::Session;
using velk::bench::FillLog;
using velk::bench::Folder;
using velk::bench::kChannels;
using velk::bench::Recording;
using velk::bench::RowsToRead;

/// A statement prepared once, bound and stepped for each row.
class BareInsert {
 public:
  explicit BareInsert(const std::string& path) {
    Check(sqlite3_open(path.c_str(), &database_));
    Check(sqlite3_exec(database_, "PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL", nullptr, nullptr, nullptr));
    std::string marks = "NULL";
    for (int i = 0; i < kChannels + 2; ++i) marks += ",?";
    Check(sqlite3_prepare_v2(database_, ("INSERT INTO logData VALUES (" + marks + ")").c_str(), -1, &statement_,
                             nullptr));
  }
  ~BareInsert() {
    sqlite3_finalize(statement_);
    sqlite3_close(database_);
  }
  BareInsert(const BareInsert&) = delete;
  BareInsert& operator=(const BareInsert&) = delete;

  void Row(const Session& session, double date, double time) {
    sqlite3_bind_double(statement_, 1, date);
    sqlite3_bind_double(statement_, 2, time);
    for (int i = 1; i <= kChannels; ++i)
      sqlite3_bind_double(statement_, i + 2, static_cast<double>(session.CurrentValue[static_cast<std::size_t>(i)]));
    if (sqlite3_step(statement_) != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(database_));
    sqlite3_reset(statement_);
  }

 private:
  void Check(int code) {
    if (code != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(database_));
  }
  sqlite3* database_ = nullptr;
  sqlite3_stmt* statement_ = nullptr;
};

template <class Work>
double SecondsOf(Work&& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Rows go to both logs in turn, so that a busy disk is busy for both. `ratio` is the time of AppendLogRow over that of
/// the bare INSERT.
void AppendLogRow_64Channels(benchmark::State& state) {
  const Folder folder;
  Recording recording(folder);
  velk::LogWriter& log = recording.log;
  Session& session = recording.session;
  log.CreateLogFile(folder.File("bare.mdb"));
  log.CreateLogFile(folder.File("log.mdb"));
  log.ConnectLogFile(folder.File("log.mdb"));
  log.OpenLogRecordset();
  BareInsert bare(folder.File("bare.mdb"));

  double bareSeconds = 0;
  double logSeconds = 0;
  std::int64_t row = 0;
  for (auto _ : state) {
    ++row;
    for (int i = 1; i <= kChannels; ++i)
      session.CurrentValue[static_cast<std::size_t>(i)] =
          static_cast<float>(row % 1000) * 0.37f + static_cast<float>(i);
    const double now = recording.clock.Now();
    const auto bareRow = [&] { bare.Row(session, velk::DatePart(now), velk::TimePart(now)); };
    // Who goes first finds the disk as the other left it; they take turns.
    if (row % 2 == 0) bareSeconds += SecondsOf(bareRow);
    const double seconds = SecondsOf([&] { log.AppendLogRow(velk::PresentRow(session, now)); });
    if (row % 2 != 0) bareSeconds += SecondsOf(bareRow);
    logSeconds += seconds;
    state.SetIterationTime(seconds);
  }
  log.Finalise();
  state.counters["bare_us"] = bareSeconds / static_cast<double>(row) * 1e6;
  state.counters["ratio"] = logSeconds / bareSeconds;
}
BENCHMARK(AppendLogRow_64Channels)->UseManualTime()->Unit(benchmark::kMicrosecond)->MinTime(3);

void DropIndex(const std::string& file) {
  velk::Connection::Open(file, velk::OpenMode::ReadWrite)->Execute("DROP INDEX logDataTimes");
}

/// The same row into a log with the index and into one without, in turn. `ratio` is the one over the other.
void IndexOfARow_64Channels(benchmark::State& state) {
  const Folder folder;
  Recording recording(folder);
  recording.log.CreateLogFile(folder.File("with.mdb"));
  recording.log.CreateLogFile(folder.File("without.mdb"));
  DropIndex(folder.File("without.mdb"));
  BareInsert with(folder.File("with.mdb"));
  BareInsert without(folder.File("without.mdb"));
  double seconds[2] = {};
  std::int64_t row = 0;
  for (auto _ : state) {
    ++row;
    const double now = recording.clock.Now();
    for (const bool first : {true, false}) {
      const bool indexed = first == (row % 2 == 0);
      seconds[indexed ? 1 : 0] += SecondsOf(
          [&] { (indexed ? with : without).Row(recording.session, velk::DatePart(now), velk::TimePart(now)); });
    }
  }
  state.counters["without_us"] = seconds[0] / static_cast<double>(row) * 1e6;
  state.counters["ratio"] = seconds[1] / seconds[0];
}
BENCHMARK(IndexOfARow_64Channels)->Unit(benchmark::kMicrosecond)->MinTime(3);

/// A page of 240 rows and 8 channels at a random minute. The argument says whether the file has the index.
void Page_240Of2600000(benchmark::State& state) {
  const Folder folder;
  const std::string file = folder.File("log.mdb");
  Recording(folder).log.CreateLogFile(file);
  if (state.range(0) == 0) DropIndex(file);
  FillLog(file);
  velk::LogReader reader(file);
  reader.Choose({0, 7, 15, 23, 31, 39, 47, 55});
  reader.Page({46095.0, 46095.0}, 1);  // where there is no index, the first search looks at the order of all rows
  std::mt19937 random(1);
  std::vector<double> seconds;
  for (auto _ : state) {
    const long minute = static_cast<long>(random() % static_cast<unsigned long>(RowsToRead() / 60 - 4));
    const double from =
        velk::JoinDateTime(46095.0 + static_cast<double>(minute / 1440),
                           velk::TimeOfDay(static_cast<int>(minute % 1440 / 60), static_cast<int>(minute % 60), 0));
    seconds.push_back(SecondsOf([&] { benchmark::DoNotOptimize(reader.Page({from}, 240)); }));
  }
  std::nth_element(seconds.begin(), seconds.begin() + static_cast<std::ptrdiff_t>(seconds.size() / 2), seconds.end());
  state.counters["median_us"] = seconds[seconds.size() / 2] * 1e6;
}
BENCHMARK(Page_240Of2600000)->ArgName("index")->Arg(1)->Arg(0)->Unit(benchmark::kMicrosecond)->Iterations(500);

}  // namespace

BENCHMARK_MAIN();
