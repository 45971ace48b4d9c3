#pragma once

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <string>
#include <vector>

namespace velk::test {

/// A simulator as a child process. It ends with the test.
class ChildProgram {
 public:
  ChildProgram(std::string program, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), std::move(program));
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
      execv(raw[0], raw.data());
      _exit(127);
    }
    close(ends[1]);
    output_ = ends[0];
  }
  ~ChildProgram() {
    if (child_ > 0) kill(child_, SIGKILL);
    ExitCode();
    close(output_);
  }
  ChildProgram(const ChildProgram&) = delete;
  ChildProgram& operator=(const ChildProgram&) = delete;

  /// The next line of its standard output: the path of the device, or the address.
  std::string NextLine() {
    std::string line;
    for (char byte = 0; read(output_, &byte, 1) == 1 && byte != '\n';) line += byte;
    return line;
  }

  /// Waits for its end; -1 where a signal ended it.
  int ExitCode() {
    int status = 0;
    if (child_ <= 0 || waitpid(child_, &status, 0) != child_) return -1;
    child_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  void Signal(int signal) { kill(child_, signal); }

 private:
  pid_t child_ = -1;
  int output_ = -1;
};

struct SentFrame {
  std::string kind;
  std::string text;
  double sentAt = 0;  ///< seconds since 1970
};

/// The journal of a simulator, its escapes read back.
inline std::vector<SentFrame> ReadJournal(const std::string& path) {
  std::vector<SentFrame> frames;
  std::ifstream file(path);
  for (std::string row; std::getline(file, row);) {
    const std::size_t first = row.find('\t'), second = row.find('\t', first + 1);
    SentFrame frame{row.substr(first + 1, second - first - 1), {}, std::stod(row)};
    for (std::size_t at = second + 1; at < row.size(); ++at) {
      if (row[at] != '\\') {
        frame.text += row[at];
      } else if (const char kind = row[++at]; kind == 'x') {
        frame.text += static_cast<char>(std::stoi(row.substr(at + 1, 2), nullptr, 16));
        at += 2;
      } else {
        frame.text += kind == 'r' ? '\r' : kind == 'n' ? '\n' : kind == 't' ? '\t' : kind;
      }
    }
    frames.push_back(frame);
  }
  return frames;
}

}  // namespace velk::test
