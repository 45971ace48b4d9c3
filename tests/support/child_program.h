#pragma once

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <regex>
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

/// What a simulator has sent.
struct SentFrame {
  std::string kind;  ///< "sound", "damaged", "cut", "silent", "gone" where the device went away behind it;
                     ///< of a board also "heard", "mode" and "clock"
  std::string text;
  double sentAt = 0;  ///< seconds since 1970
};

/// A text of a journal with its escapes read back.
inline std::string Unescaped(const std::string& text) {
  std::string bytes;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] != '\\') {
      bytes += text[at];
    } else if (const char kind = text[++at]; kind == 'x') {
      bytes += static_cast<char>(std::stoi(text.substr(at + 1, 2), nullptr, 16));
      at += 2;
    } else {
      bytes += kind == 'r' ? '\r' : kind == 'n' ? '\n' : kind == 't' ? '\t' : kind;
    }
  }
  return bytes;
}

/// The journal of a simulator: a row is the time in seconds, the kind and the text. Another row fails the test; one
/// that is still being written is left out.
inline std::vector<SentFrame> ReadJournal(const std::string& path) {
  static const std::regex head("([0-9]+\\.[0-9]{3})\t(sound|damaged|cut|silent|gone|heard|mode|clock)\t");
  std::vector<SentFrame> frames;
  std::ifstream file(path);
  for (std::string row; std::getline(file, row) && !file.eof();) {
    std::smatch parts;
    if (std::regex_search(row, parts, head, std::regex_constants::match_continuous))
      frames.push_back({parts[2], Unescaped(parts.suffix()), std::stod(parts[1])});
    else
      ADD_FAILURE() << row;
  }
  return frames;
}

}  // namespace velk::test
