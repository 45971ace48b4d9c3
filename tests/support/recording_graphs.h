#pragma once

#include <functional>
#include <vector>

#include "model/graph_window.h"

namespace velk::test {

/// A set of strip-chart windows that remembers which one was rebuilt.
class RecordingGraphs : public GraphWindows {
 public:
  void CreateGraphWindows() override {
    ++created;
    if (onCreate) onCreate();
  }
  void UnloadAll() override { ++unloaded; }
  void Rebuild(int graphNumber) override { rebuilt.push_back(graphNumber); }

  int created = 0;
  int unloaded = 0;
  std::vector<int> rebuilt;
  std::function<void()> onCreate;  ///< in CreateGraphWindows
};

}  // namespace velk::test
