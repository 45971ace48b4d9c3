#pragma once

#include <sys/types.h>

#include <map>
#include <string>
#include <vector>

namespace velk::bench {

/// A program that runs beside the bench; it is killed at the end.
class Child {
 public:
  /// `variables` are "NAME=value", over those of the bench. `inherited` stays open in the child; -1: none.
  Child(std::vector<std::string> command, const std::vector<std::string>& variables, int inherited = -1);
  ~Child();
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  pid_t Id() const { return id_; }

 private:
  pid_t id_;
};

/// Seconds that a process has had of a core so far, in user and system mode.
double CpuSeconds(pid_t process);
/// How often each of its threads has slept and been woken so far.
std::map<pid_t, long long> WakeUps(pid_t process);
/// How often since then, by the threads that still live.
long long WakeUpsSince(const std::map<pid_t, long long>& before, pid_t process);
/// Megabytes that it holds in memory, shared ones too.
double ResidentMegabytes(pid_t process);

struct SystemCalls {
  long long all = 0;
  long long syncs = 0;
  long long bytesWritten = 0;  ///< to files
};

/// Counts what a child asks of the system in so many seconds. It runs slower meanwhile, and is stopped behind it: all
/// that is left to do with it is to kill it.
SystemCalls CountSystemCalls(pid_t process, double seconds);

}  // namespace velk::bench
