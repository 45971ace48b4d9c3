#include "windows/every_window.h"

namespace velk::test {

namespace {

using List = std::vector<ListedWindow> (*)();

/// Made on first use: the constants that fill it are made in any order.
std::vector<List>& Lists() {
  static std::vector<List> lists;
  return lists;
}

}  // namespace

WindowsOf::WindowsOf(List list) {
  Lists().push_back(list);
}

const std::vector<ListedWindow>& EveryWindow() {
  static const std::vector<ListedWindow> windows = [] {
    std::vector<ListedWindow> all;
    for (const List list : Lists())
      for (ListedWindow& window : list()) all.push_back(std::move(window));
    return all;
  }();
  return windows;
}

}  // namespace velk::test
