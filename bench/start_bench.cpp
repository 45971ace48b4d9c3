// What a start costs: the velk program from the fork of its process to its first painted window, and the most memory
// that it held until it waits for the operator; against a program that shows an empty main window of the toolkit
// ("bare"), and one that shows it with empty bars. The three take turns.
//
//   bench/start_bench         offscreen; QT_QPA_PLATFORM=xcb xvfb-run bench/start_bench on a real display

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "bench/full_store.h"
#include "tests/support/pty.h"

namespace velk {

namespace {

constexpr int kStarts = 25;         ///< of each program
constexpr int kLongestMs = 30'000;  ///< a start that takes longer has failed
/// From the first picture until nothing of the start is left to do.
constexpr auto kSettle = std::chrono::milliseconds(150);

struct Start {
  double milliseconds = 0;     ///< from the fork to the first picture
  double cpuMilliseconds = 0;  ///< of the process, until it has settled: what a busy machine does not change
  double megabytes = 0;        ///< the most that was resident at once
};

std::int64_t Nanoseconds() {
  return std::chrono::steady_clock::now().time_since_epoch() / std::chrono::nanoseconds(1);
}

/// VmHWM of a running process.
double PeakMegabytes(pid_t process) {
  std::ifstream status("/proc/" + std::to_string(process) + "/status");
  for (std::string word; status >> word;)
    if (word == "VmHWM:" && status >> word) return std::stod(word) / 1024;
  throw std::runtime_error("no memory figure");
}

double Milliseconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) * 1000 + static_cast<double>(time.tv_usec) / 1000;
}

struct Program {
  const char* name;
  const char* file;
  bool bars = false;
};

constexpr Program kPrograms[] = {
    {"velk", VELK_PROGRAM}, {"bare", VELK_EMPTY_WINDOW}, {"bars", VELK_EMPTY_WINDOW, true}};

[[noreturn]] void Become(const Program& program, const std::string& configHome, int tellTo) {
  if (program.bars) setenv("VELK_EMPTY_BARS", "1", 1);
  setenv("LD_PRELOAD", VELK_FIRST_PAINT, 1);
  setenv("VELK_FIRST_PAINT_FD", std::to_string(tellTo).c_str(), 1);
  setenv("XDG_CONFIG_HOME", configHome.c_str(), 1);
  dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);  // the toolkit's remarks on the display
  execl(program.file, program.file, nullptr);
  _exit(127);
}

/// When the child's window stood there, as the child tells it.
std::int64_t FirstPaint(int told) {
  std::int64_t painted = 0;
  pollfd state{told, POLLIN, 0};
  if (poll(&state, 1, kLongestMs) != 1 || read(told, &painted, sizeof painted) != sizeof painted)
    throw std::runtime_error("the program showed no window");
  return painted;
}

Start StartOnce(const Program& program, const std::string& configHome) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  const std::int64_t begin = Nanoseconds();
  const pid_t child = fork();
  if (child == 0) Become(program, configHome, ends[1]);
  close(ends[1]);
  Start start;
  start.milliseconds = static_cast<double>(FirstPaint(ends[0]) - begin) / 1e6;
  std::this_thread::sleep_for(kSettle);
  start.megabytes = PeakMegabytes(child);
  kill(child, SIGKILL);
  rusage used{};
  wait4(child, nullptr, 0, &used);
  start.cpuMilliseconds = Milliseconds(used.ru_utime) + Milliseconds(used.ru_stime);
  close(ends[0]);
  return start;
}

double Median(const std::vector<Start>& starts, double Start::*figure) {
  std::vector<double> values;
  for (const Start& start : starts) values.push_back(start.*figure);
  std::nth_element(values.begin(), values.begin() + static_cast<long>(values.size() / 2), values.end());
  return values[values.size() / 2];
}

/// All programs in turn; the first turn only brings the files into memory.
void Compare(benchmark::State& state, const std::string& configHome) {
  std::map<std::string, std::vector<Start>> starts;
  for (auto step : state) {
    for (int turn = 0; turn <= kStarts; ++turn) {
      for (const Program& program : kPrograms) {
        const Start start = StartOnce(program, configHome);
        if (turn > 0) starts[program.name].push_back(start);
      }
    }
    state.SetIterationTime(Median(starts["velk"], &Start::milliseconds) / 1000);
  }
  const auto count = [&](const std::string& unit, double Start::*figure) {
    for (const Program& program : kPrograms)
      state.counters[std::string(program.name) + "_" + unit] = Median(starts[program.name], figure);
    for (const char* empty : {"bare", "bars"})
      state.counters["ratio_" + unit + "_" + empty] = Median(starts["velk"], figure) / Median(starts[empty], figure);
  };
  count("ms", &Start::milliseconds);
  count("cpu_ms", &Start::cpuMilliseconds);
  count("MB", &Start::megabytes);
}

/// Without any settings, as after the installation.
void StartWithoutSettings(benchmark::State& state) {
  const QTemporaryDir configHome;
  Compare(state, configHome.path().toStdString());
}
BENCHMARK(StartWithoutSettings)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

/// Everything set, a unit on the line, in Russian.
void StartWithAllSettingsInRussian(benchmark::State& state) {
  const bench::FullStore full;
  const test::Pty unit;
  SettingsStore store(full.Path());
  store.Save("VELK2", "General", "Current_language", "Russian");
  store.Save("VELK2", "Protocol", "SerialData", "KESTA version 5");
  store.Save("VELK2", "Protocol", "PortDevice1", unit.Device());
  store.Flush();
  Compare(state, full.ConfigHome());
}
BENCHMARK(StartWithAllSettingsInRussian)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace velk

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
