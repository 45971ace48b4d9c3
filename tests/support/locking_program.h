#pragma once

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

#include "platform/files/file_lock.h"

namespace velk::test {

/// Another program that holds the lock of a file until it is killed, at the end of the scope.
class LockingProgram {
 public:
  explicit LockingProgram(const std::string& path) {
    int ends[2] = {};
    if (pipe(ends) != 0) return;
    child_ = fork();
    if (child_ == 0) {
      const auto lock = FileLock::Take(path);
      if (write(ends[1], lock ? "1" : "0", 1) == 1) pause();
      _exit(0);
    }
    close(ends[1]);
    char taken = 0;
    if (read(ends[0], &taken, 1) != 1 || taken != '1') Kill();
    close(ends[0]);
  }
  ~LockingProgram() { Kill(); }
  LockingProgram(const LockingProgram&) = delete;
  LockingProgram& operator=(const LockingProgram&) = delete;

  /// Its number; "-1" where it could not take the lock.
  std::string Process() const { return std::to_string(child_); }

 private:
  void Kill() {
    if (child_ <= 0) return;
    kill(child_, SIGKILL);
    waitpid(child_, nullptr, 0);
    child_ = -1;
  }

  pid_t child_ = -1;
};

}  // namespace velk::test
