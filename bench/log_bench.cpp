// What a recorded row costs: AppendLogRow beside a bare prepared INSERT of the same row, each into a log of its own,
// both write-ahead log with synchronous=FULL. The folder has to be on a real disk: the present one, or
// VELK_BENCH_FOLDER.
//
//   bench/log_bench --benchmark_repetitions=5

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "base/dates.h"
#include "log/log_database.h"
#include "model/session.h"
#include "platform/dialogs/dialogs.h"
#include "platform/loop/gate.h"
#include "platform/loop/system_clock.h"
#include "platform/platform.h"
#include "platform/settings/settings.h"
#include "tests/support/in_english.h"

namespace {

using velk::Session;

constexpr int kChannels = 64;

class NoQuestions : public velk::JobQuestions {
 public:
  velk::FileChoice AppendOrCreate(const std::string&, bool, bool) override { return velk::FileChoice::None; }
  void IncludeInSummary(velk::SummaryInclusion&) override {}
};

class NoGraphs : public velk::GraphWindows {
 public:
  void CreateGraphWindows() override {}
  void UnloadAll() override {}
  void Rebuild(int) override {}
};

class NoDialogs : public velk::Dialogs {
 public:
  using Dialogs::Dialogs;

 protected:
  velk::Answer ShowMessage(const velk::ShownMessage& box) override { throw std::logic_error(box.text); }
  std::optional<std::string> ShowInput(const std::string&, const std::string&, const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> ShowOpenFile(const velk::ShownFileQuestion&) override { return std::nullopt; }
  std::optional<std::string> ShowSaveFile(const velk::ShownFileQuestion&) override { return std::nullopt; }
};

class Folder {
 public:
  Folder() {
    const char* place = std::getenv("VELK_BENCH_FOLDER");
    std::string name = (std::filesystem::path(place == nullptr ? "." : place) / "log_bench-XXXXXX").string();
    path_ = mkdtemp(name.data());
  }
  ~Folder() { std::filesystem::remove_all(path_); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  std::string File(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

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
  velk::Gate gate;
  velk::SystemClock clock(gate);
  NoDialogs dialogs(gate, velk::test::English());
  velk::SettingsStore settings(folder.File("settings"));
  const velk::Platform platform{clock, gate, dialogs, settings, velk::test::English()};
  NoQuestions questions;
  NoGraphs graphs;
  Session session;
  session.NumberOfParameters = kChannels;
  for (int i = 1; i <= kChannels; ++i)
    session.CurrentParameters[static_cast<std::size_t>(i)].name = "Channel " + std::to_string(i);

  velk::LogDatabase log(session, platform, questions, graphs);
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
    const double now = clock.Now();
    const auto bareRow = [&] { bare.Row(session, velk::DatePart(now), velk::TimePart(now)); };
    // Who goes first finds the disk as the other left it; they take turns.
    if (row % 2 == 0) bareSeconds += SecondsOf(bareRow);
    const double seconds = SecondsOf([&] { log.AppendLogRow(); });
    if (row % 2 != 0) bareSeconds += SecondsOf(bareRow);
    logSeconds += seconds;
    state.SetIterationTime(seconds);
  }
  log.Finalise();
  state.counters["bare_us"] = bareSeconds / static_cast<double>(row) * 1e6;
  state.counters["ratio"] = logSeconds / bareSeconds;
}
BENCHMARK(AppendLogRow_64Channels)->UseManualTime()->Unit(benchmark::kMicrosecond)->MinTime(3);

}  // namespace

BENCHMARK_MAIN();
