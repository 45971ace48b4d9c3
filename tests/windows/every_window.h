#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace velk::test {

inline constexpr const char* kLanguages[] = {"English", "Russian"};

/// One window of the program in one of its states.
struct ListedWindow {
  const char* name;   ///< its object name, which is its class and its FormName in data/languages.tsv
  const char* state;  ///< what is special about it here; empty for how it usually looks
  int topic;          ///< the help's page that F1 opens in it
  /// Controls whose texts the operator has entered, are put together from messages and values, or are the same in every
  /// language. "Label1_*" stands for all whose names begin with "Label1_".
  std::set<std::string> composed;
  /// Makes it as the program does in a language. It is not shown yet, but for those inside the main window.
  std::function<std::shared_ptr<QWidget>(const std::string& language)> open;

  std::string Title() const { return *state == '\0' ? name : std::string(name) + "-" + state; }
};

/// All windows of the program. A new one is added here; a test compares the list with the sources.
const std::vector<ListedWindow>& EveryWindow();

}  // namespace velk::test
