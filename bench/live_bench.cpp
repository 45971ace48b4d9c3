// What a live job costs: the whole program on a display of its own, drawing and recording 64 channels on 8 windows of a
// unit behind a pseudo-terminal, beside a program that does the least that draws and records the same lines. And how
// often the program wakes up while nothing comes.
//
//   bench/live_bench          60 s a case, or VELK_BENCH_SECONDS; the logs are in the present folder, or
//   VELK_BENCH_FOLDER

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <thread>

#include "bench/flood_unit.h"
#include "bench/long_log.h"
#include "bench/process_watch.h"
#include "platform/database/command.h"
#include "platform/database/connection.h"

namespace velk {

namespace {

using Milliseconds = std::chrono::milliseconds;
using Pace = bench::FloodUnit::Pace;

constexpr int kChannels = 64;
constexpr auto kStart = std::chrono::seconds(20);  ///< a program that shows no row by then has failed
constexpr auto kSettle = std::chrono::seconds(4);  ///< until nothing of the start is left to do

double MeasuredSeconds() {
  const char* const seconds = std::getenv("VELK_BENCH_SECONDS");
  return seconds == nullptr ? 60 : std::atof(seconds);
}

void Rest(double seconds) {
  std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

/// A display that nobody sees.
class Display {
 public:
  Display() {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
    server_ = std::make_unique<bench::Child>(
        std::vector<std::string>{"Xvfb", "-displayfd", std::to_string(ends[1]), "-screen", "0", "1280x1400x24",
                                 "-nolisten", "tcp", "-noreset"},
        std::vector<std::string>{}, ends[1]);
    close(ends[1]);
    std::string number = ":";
    for (char byte = 0; read(ends[0], &byte, 1) == 1 && byte != '\n';) number += byte;
    close(ends[0]);
    if (number == ":") throw std::runtime_error("Xvfb did not start");
    name_ = number;
  }
  const std::string& Name() const { return name_; }
  pid_t Server() const { return server_->Id(); }

 private:
  std::unique_ptr<bench::Child> server_;
  std::string name_;
};

const Display& TheDisplay() {
  static const Display display;
  return display;
}

std::unique_ptr<bench::Child> Start(std::vector<std::string> command) {
  return std::make_unique<bench::Child>(
      std::move(command),
      std::vector<std::string>{"DISPLAY=" + TheDisplay().Name(), "QT_QPA_PLATFORM=xcb", "QT_LOGGING_RULES=*=false"});
}

/// Rows that stand in a log; 0 while there is none.
long long RowsOf(const std::string& log) {
  if (access(log.c_str(), R_OK) != 0) return 0;
  try {
    const auto connection = Connection::Open(log, OpenMode::ReadOnly);
    Command count(*connection, "SELECT max(ID) FROM logData");
    return count.Next() ? count.Integer(0) : 0;
  } catch (const RuntimeError&) {
    return 0;
  }
}

void WaitForRows(const std::string& log) {
  const auto end = std::chrono::steady_clock::now() + kStart;
  while (RowsOf(log) < 2) {
    if (std::chrono::steady_clock::now() > end) throw std::runtime_error("nothing was recorded");
    Rest(0.1);
  }
  std::this_thread::sleep_for(kSettle);
}

struct LiveCost {
  double percent = 0;        ///< of a core
  double serverPercent = 0;  ///< of a core, the display's
  double megabytes = 0;
  double calls = 0, syncs = 0, bytes = 0;  ///< a row
};

LiveCost Measure(pid_t program, const std::string& log) {
  LiveCost cost;
  const double seconds = MeasuredSeconds();
  const double before = bench::CpuSeconds(program), server = bench::CpuSeconds(TheDisplay().Server());
  Rest(seconds);
  cost.percent = 100 * (bench::CpuSeconds(program) - before) / seconds;
  cost.serverPercent = 100 * (bench::CpuSeconds(TheDisplay().Server()) - server) / seconds;
  cost.megabytes = bench::ResidentMegabytes(program);
  const long long first = RowsOf(log);
  const bench::SystemCalls calls = bench::CountSystemCalls(program, seconds);
  const auto rows = static_cast<double>(RowsOf(log) - first);
  cost.calls = static_cast<double>(calls.all) / rows;
  cost.syncs = static_cast<double>(calls.syncs) / rows;
  cost.bytes = static_cast<double>(calls.bytesWritten) / rows;
  return cost;
}

LiveCost RunProgram(Milliseconds interval, const bench::Folder& folder) {
  const std::string log = folder.File("velk.mdb");
  bench::FloodUnit unit(kChannels, interval);
  const auto program = Start(
      {VELK_LIVE_PROGRAM, unit.Device(), log, std::to_string(static_cast<double>(interval.count()) / 1000), "record"});
  WaitForRows(log);
  return Measure(program->Id(), log);
}

LiveCost RunLean(Milliseconds interval, const bench::Folder& folder) {
  const std::string log = folder.File("lean.mdb");
  bench::FloodUnit unit(kChannels, interval);
  const auto program = Start({VELK_LEAN_PROGRAM, unit.Device(), log});
  WaitForRows(log);
  return Measure(program->Id(), log);
}

void Count(benchmark::State& state, const std::string& name, const LiveCost& cost) {
  state.counters[name + "_percent"] = cost.percent;
  state.counters[name + "_display_percent"] = cost.serverPercent;
  state.counters[name + "_MB"] = cost.megabytes;
  state.counters[name + "_calls"] = cost.calls;
  state.counters[name + "_syncs"] = cost.syncs;
  state.counters[name + "_bytes"] = cost.bytes;
}

void LiveJob(benchmark::State& state) {
  const Milliseconds interval(1000 / state.range(0));
  const bench::Folder folder;
  for (auto unused : state) {
    (void)unused;
    const LiveCost lean = RunLean(interval, folder);
    const LiveCost velk = RunProgram(interval, folder);
    Count(state, "velk", velk);
    Count(state, "lean", lean);
    state.counters["ratio"] = velk.percent / lean.percent;
  }
}
BENCHMARK(LiveJob)->ArgName("a_second")->Arg(1)->Arg(10)->Arg(50)->Iterations(1)->UseRealTime();

/// A unit that sends nothing while the program is measured; `state` is what was done ahead of that.
void Resting(benchmark::State& state, const std::string& done) {
  const bench::Folder folder;
  for (auto unused : state) {
    (void)unused;
    bench::FloodUnit unit(kChannels, Milliseconds(500));
    if (done == "connect") unit.SetPace(Pace::Silent);
    const auto program = Start({VELK_LIVE_PROGRAM, unit.Device(), folder.File("velk.mdb"), "1", done});
    std::this_thread::sleep_for(kSettle);
    unit.SetPace(Pace::Silent);
    std::this_thread::sleep_for(kSettle);
    const auto before = bench::WakeUps(program->Id());
    const double cpu = bench::CpuSeconds(program->Id());
    Rest(MeasuredSeconds());
    state.counters["wakeups_a_second"] =
        static_cast<double>(bench::WakeUpsSince(before, program->Id())) / MeasuredSeconds();
    state.counters["percent"] = 100 * (bench::CpuSeconds(program->Id()) - cpu) / MeasuredSeconds();
    const bench::SystemCalls calls = bench::CountSystemCalls(program->Id(), MeasuredSeconds());
    state.counters["calls_a_second"] = static_cast<double>(calls.all) / MeasuredSeconds();
  }
}
BENCHMARK_CAPTURE(Resting, started, std::string("idle"))->Iterations(1)->UseRealTime();
BENCHMARK_CAPTURE(Resting, connected_and_silent, std::string("connect"))->Iterations(1)->UseRealTime();
BENCHMARK_CAPTURE(Resting, paused, std::string("pause"))->Iterations(1)->UseRealTime();

}  // namespace

}  // namespace velk

BENCHMARK_MAIN();
