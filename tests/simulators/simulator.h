#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <fstream>
#include <regex>
#include <string>
#include <vector>

namespace velk::test {

using Arguments = std::vector<std::string>;

/// The simulator as a child process, and a plain reader of its device.
class Simulator {
 public:
  explicit Simulator(Arguments arguments) {
    arguments.insert(arguments.begin(), VELK_SIM_UNIT);
    std::vector<char*> raw;
    for (std::string& argument : arguments) raw.push_back(argument.data());
    raw.push_back(nullptr);
    int ends[2] = {};
    if (pipe(ends) != 0) return;
    child_ = fork();
    if (child_ == 0) {
      dup2(ends[1], STDOUT_FILENO);
      close(ends[0]);
      close(ends[1]);
      execv(VELK_SIM_UNIT, raw.data());
      _exit(127);
    }
    close(ends[1]);
    output_ = ends[0];
  }
  ~Simulator() {
    Close();
    if (child_ > 0) End(SIGKILL);
    close(output_);
  }
  Simulator(const Simulator&) = delete;
  Simulator& operator=(const Simulator&) = delete;

  /// The next line of its standard output: the path of the device.
  std::string NextDevice() {
    std::string line;
    for (char byte = 0; read(output_, &byte, 1) == 1 && byte != '\n';) line += byte;
    return line;
  }

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
    if (signal != 0) kill(child_, signal);
    int status = 0;
    waitpid(child_, &status, 0);
    child_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  pid_t child_ = -1;
  int output_ = -1;
  int port_ = -1;
};

struct JournalEntry {
  std::string kind, text;
};

inline std::vector<JournalEntry> Journal(const std::string& path) {
  std::vector<JournalEntry> entries;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    std::smatch parts;
    static const std::regex picture("[0-9]+\\.[0-9]{3}\t(sound|damaged|cut)\t(.*)");
    if (std::regex_match(line, parts, picture))
      entries.push_back({parts[1], parts[2]});
    else
      ADD_FAILURE() << line;
  }
  return entries;
}

}  // namespace velk::test
