#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace sim {

/// The options of a simulator. Prints what is wrong, or the help, and ends the program when it can't go on.
class CommandLine {
 public:
  /// `help` is printed for --help; `program` stands in front of complaints.
  CommandLine(const char* program, const char* help);

  void Flag(std::string_view name, bool& target);
  void Text(std::string_view name, std::string& target);
  void Number(std::string_view name, double& target);
  void Number(std::string_view name, long& target);
  void Number(std::string_view name, int& target);
  /// An option that may stand several times, or has values of its own; `take` gives false for a wrong one.
  void Take(std::string_view name, std::function<bool(std::string_view)> take);

  void Read(int argc, char** argv);

 private:
  [[noreturn]] void Refuse(std::string_view option) const;

  const char* program_;
  const char* help_;
  std::map<std::string_view, bool*> flags_;
  std::map<std::string_view, std::function<bool(std::string_view)>> takers_;
};

/// What simulators that journal what they send are told alike.
struct CommonOptions {
  std::string link;     ///< leads to the device; empty for none
  std::string journal;  ///< empty for none
  long seed = 1;        ///< of values and noise

  void AddCommon(CommandLine& commandLine);
};

/// The text with \r, \n, \t, \\ and \xHH read for what they stand for.
std::string Unescape(std::string_view text);

}  // namespace sim
