#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "windows/sample_job.h"

namespace velk::test {

inline constexpr const char* kLanguages[] = {"English", "Russian"};

/// One window of the program in one of its states.
struct ListedWindow {
  const char* name;   ///< its object name, which is its class and its FormName in data/captions
  const char* state;  ///< what is special about it here; empty for how it usually looks
  int topic;          ///< the help's page that F1 opens in it
  /// Controls whose texts the operator has entered, are put together from messages and values, or are the same in every
  /// language. "Label1_*" stands for all whose names begin with "Label1_".
  std::set<std::string> composed;
  /// Makes it as the program does in a language. It is not shown yet, but for those inside the main window.
  std::function<std::shared_ptr<QWidget>(const std::string& language)> open;

  std::string Title() const { return *state == '\0' ? name : std::string(name) + "-" + state; }
};

/// All windows of the program. A new one is added to tests/FOLDER/windows_of_FOLDER.cpp; a test compares the list with
/// the sources.
const std::vector<ListedWindow>& EveryWindow();

/// The windows of one folder, in a constant of its windows_of_FOLDER.cpp:
///
///   const WindowsOf kFormula([] { return std::vector<ListedWindow>{{"EqEditor", "", ...}}; });
class WindowsOf {
 public:
  explicit WindowsOf(std::vector<ListedWindow> (*list)());
};

using Job = std::shared_ptr<SampleJob>;

inline Job MakeJob(const std::string& language) {
  return std::make_shared<SampleJob>(language);
}

/// A window of a job, which outlives it.
template <class Window, class... Values>
std::shared_ptr<QWidget> On(const Job& job, Values&&... values) {
  struct Held {
    Job job;
    Window window;
  };
  const std::shared_ptr<Held> held(new Held{job, Window(std::forward<Values>(values)...)});
  return {held, &held->window};
}

/// The same for a window that takes the host.
template <class Window, class... Values>
std::shared_ptr<QWidget> Hosted(const Job& job, Values&&... values) {
  return On<Window>(job, job->host, std::forward<Values>(values)...);
}

}  // namespace velk::test
