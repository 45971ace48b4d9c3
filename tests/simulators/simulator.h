#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <string>
#include <utility>
#include <vector>

#include "support/child_program.h"

namespace velk::test {

using Arguments = std::vector<std::string>;

/// The simulator of an own unit as a child process, and a plain reader of its device.
class Simulator {
 public:
  explicit Simulator(Arguments arguments) : program_(VELK_SIM_UNIT, std::move(arguments)) {}
  ~Simulator() { Close(); }
  Simulator(const Simulator&) = delete;
  Simulator& operator=(const Simulator&) = delete;

  /// The path of the device, once it is there; the next call gives the one behind it.
  std::string NextDevice() { return program_.NextLine(); }

  void Open(const std::string& device) { port_ = open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK); }
  void Close() {
    if (port_ >= 0) close(port_);
    port_ = -1;
  }

  /// Reads until `enough` says so or the device hangs up; at most 20 seconds.
  template <class Enough>
  std::string ReadUntil(Enough enough) {
    std::string text;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!enough(text) && std::chrono::steady_clock::now() < end) {
      pollfd state{port_, POLLIN, 0};
      poll(&state, 1, 1000);
      char bytes[4096];
      const ssize_t count = read(port_, bytes, sizeof bytes);
      if (count > 0) text.append(bytes, static_cast<std::size_t>(count));
      if (count == 0 || (count < 0 && errno == EIO)) break;
    }
    return text;
  }
  std::string ReadToTheEnd() {
    return ReadUntil([](const std::string&) { return false; });
  }

  /// The exit code after a signal (0: wait for its own end).
  int End(int signal) {
    if (signal != 0) program_.Signal(signal);
    return program_.ExitCode();
  }

 private:
  ChildProgram program_;
  int port_ = -1;
};

}  // namespace velk::test
