#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace velk {

/// A program that runs beside this one and writes to its standard output. It is ended with this object.
class ChildProgram {
 public:
  /// Starts it, with nothing on its input and its errors unheard. Raises FileNotFound or PermissionDenied with the
  /// path.
  ChildProgram(const std::string& program, const std::vector<std::string>& arguments);
  ~ChildProgram();
  ChildProgram(const ChildProgram&) = delete;
  ChildProgram& operator=(const ChildProgram&) = delete;

  enum class Output { Came, Waits, Ended };
  /// Appends what it has written, at most so many bytes; waits so long for the first of them.
  Output Read(std::string& into, std::size_t most, int milliseconds);
  /// What is readable once it has written.
  int Descriptor() const { return output_; }
  /// Waits for its end; whether it ended by itself and well.
  bool EndedWell();

 private:
  pid_t process_ = -1;
  int output_ = -1;
};

}  // namespace velk
