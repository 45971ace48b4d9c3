#include "platform/programs/child_program.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "base/scope.h"
#include "platform/files/file_errors.h"

extern char** environ;

namespace velk {

ChildProgram::ChildProgram(const std::string& program, const std::vector<std::string>& arguments) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) RaiseFileError(errno, program);
  output_ = ends[0];
  const OnLeaving done([&] { close(ends[1]); });
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  const OnLeaving gone([&] { posix_spawn_file_actions_destroy(&actions); });
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  std::vector<std::string> words = {program};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  const int error = posix_spawn(&process_, program.c_str(), &actions, nullptr, pointers.data(), environ);
  if (error == 0) return;
  close(output_);
  RaiseFileError(error, program);
}

ChildProgram::~ChildProgram() {
  close(output_);
  if (process_ < 0) return;
  kill(process_, SIGKILL);
  while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
  }
}

ChildProgram::Output ChildProgram::Read(std::string& into, std::size_t most, int milliseconds) {
  pollfd waiting{output_, POLLIN, 0};
  if (poll(&waiting, 1, milliseconds) <= 0) return Output::Waits;
  const std::size_t before = into.size();
  into.resize(before + most);
  const ssize_t count = read(output_, into.data() + before, most);
  into.resize(before + static_cast<std::size_t>(count > 0 ? count : 0));
  if (count < 0 && errno == EINTR) return Output::Waits;
  return count > 0 ? Output::Came : Output::Ended;
}

bool ChildProgram::EndedWell() {
  if (process_ < 0) return false;
  int status = 0;
  while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
  }
  process_ = -1;
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace velk
