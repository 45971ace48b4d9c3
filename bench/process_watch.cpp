#include "bench/process_watch.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>

namespace velk::bench {

namespace {

namespace fs = std::filesystem;

constexpr int kSystemCallStop = SIGTRAP | 0x80;

/// The value of a row of a status file of the system, such as "VmRSS:".
long long StatusValue(const fs::path& file, const std::string& name) {
  std::ifstream status(file);
  for (std::string word; status >> word;)
    if (long long value = 0; word == name && status >> value) return value;
  return 0;
}

std::vector<pid_t> ThreadsOf(pid_t process) {
  std::vector<pid_t> threads;
  for (const auto& entry : fs::directory_iterator("/proc/" + std::to_string(process) + "/task"))
    threads.push_back(std::stoi(entry.path().filename().string()));
  return threads;
}

template <class... Values>
long Trace(int request, pid_t thread, Values... values) {
  return ptrace(static_cast<__ptrace_request>(request), thread, values...);
}

class Tracer {
 public:
  explicit Tracer(pid_t process) : process_(process) {
    for (const pid_t thread : ThreadsOf(process)) {
      if (Trace(PTRACE_SEIZE, thread, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_TRACECLONE) != 0)
        throw std::runtime_error("the program can't be traced");
      Trace(PTRACE_INTERRUPT, thread, nullptr, nullptr);
    }
  }

  SystemCalls Run(double seconds) {
    WakeOften();
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    for (;;) {
      int status = 0;
      const pid_t thread = waitpid(-1, &status, __WALL);
      if (std::chrono::steady_clock::now() >= end) return counted_;
      if (thread < 0 && errno == EINTR) continue;
      if (thread < 0 || (thread == process_ && !WIFSTOPPED(status))) throw std::runtime_error("the program has ended");
      if (WIFSTOPPED(status)) Go(thread, status);
    }
  }

 private:
  /// A program that does nothing must not hold up the end of the count.
  static void WakeOften() {
    struct sigaction action {};
    action.sa_handler = [](int) {};
    sigaction(SIGALRM, &action, nullptr);
    itimerval timer{};
    timer.it_value.tv_usec = timer.it_interval.tv_usec = 100'000;
    setitimer(ITIMER_REAL, &timer, nullptr);
  }

  void Go(pid_t thread, int status) {
    const int signal = WSTOPSIG(status);
    const bool isEvent = status >> 16 != 0;
    if (signal == kSystemCallStop) Note(thread);
    Trace(PTRACE_SYSCALL, thread, nullptr, signal == kSystemCallStop || isEvent ? 0 : signal);
  }

  void Note(pid_t thread) {
    __ptrace_syscall_info info{};
    if (Trace(PTRACE_GET_SYSCALL_INFO, thread, sizeof info, &info) <= 0) return;
    if (info.op == PTRACE_SYSCALL_INFO_ENTRY) {
      const auto call = static_cast<long>(info.entry.nr);
      ++counted_.all;
      if (call == SYS_fsync || call == SYS_fdatasync || call == SYS_msync) ++counted_.syncs;
      const bool writes = call == SYS_pwrite64 || (call == SYS_write && IsFile(static_cast<int>(info.entry.args[0])));
      writes_[thread] = writes;
    } else if (info.op == PTRACE_SYSCALL_INFO_EXIT && writes_[thread] && info.exit.rval > 0) {
      counted_.bytesWritten += info.exit.rval;
    }
  }

  bool IsFile(int descriptor) const {
    std::error_code error;
    const fs::path target =
        fs::read_symlink("/proc/" + std::to_string(process_) + "/fd/" + std::to_string(descriptor), error);
    return !error && fs::is_regular_file(target, error);
  }

  pid_t process_;
  SystemCalls counted_;
  std::map<pid_t, bool> writes_;  ///< the call that a thread is in writes to a file
};

}  // namespace

Child::Child(std::vector<std::string> command, const std::vector<std::string>& variables, int inherited) : id_(fork()) {
  if (id_ != 0) return;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (inherited >= 0) fcntl(inherited, F_SETFD, 0);
  for (const std::string& variable : variables) {
    const std::size_t equals = variable.find('=');
    setenv(variable.substr(0, equals).c_str(), variable.substr(equals + 1).c_str(), 1);
  }
  std::vector<char*> raw;
  for (std::string& word : command) raw.push_back(word.data());
  raw.push_back(nullptr);
  execvp(raw[0], raw.data());
  _exit(127);
}

Child::~Child() {
  kill(id_, SIGKILL);
  // A traced one tells of its threads first, each by its own number.
  for (int status = 0;;) {
    const pid_t ended = waitpid(-1, &status, __WALL);
    if ((ended < 0 && errno != EINTR) || (ended == id_ && !WIFSTOPPED(status))) return;
  }
}

double CpuSeconds(pid_t process) {
  clockid_t clock{};
  timespec used{};
  if (clock_getcpuclockid(process, &clock) != 0 || clock_gettime(clock, &used) != 0)
    throw std::runtime_error("the program has ended");
  return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) * 1e-9;
}

std::map<pid_t, long long> WakeUps(pid_t process) {
  std::map<pid_t, long long> all;
  for (const pid_t thread : ThreadsOf(process))
    all[thread] = StatusValue("/proc/" + std::to_string(process) + "/task/" + std::to_string(thread) + "/status",
                              "voluntary_ctxt_switches:");
  return all;
}

long long WakeUpsSince(const std::map<pid_t, long long>& before, pid_t process) {
  long long all = 0;
  for (const auto& [thread, count] : WakeUps(process)) {
    const auto found = before.find(thread);
    all += count - (found == before.end() ? 0 : found->second);
  }
  return all;
}

double ResidentMegabytes(pid_t process) {
  return static_cast<double>(StatusValue("/proc/" + std::to_string(process) + "/status", "VmRSS:")) / 1024;
}

SystemCalls CountSystemCalls(pid_t process, double seconds) {
  return Tracer(process).Run(seconds);
}

}  // namespace velk::bench
