#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "model/graph_window.h"
#include "model/session.h"

namespace velk::test {

/// A graph window that remembers what it was told to draw.
class FakeGraphWindow : public GraphWindow {
 public:
  struct Plot {
    double previousTime, time;
    float previousValue, value;
    double min, max;
    std::int32_t colour;
    bool wrapping;
  };

  void Picture2_Update(double blockStart, double blockEnd) override { blocks.push_back({blockStart, blockEnd}); }
  void WriteDate(double blockStart, double blockEnd) override { dates.push_back({blockStart, blockEnd}); }
  void UpdateScroll(double upTo) override { scrolls.push_back(upTo); }
  void WriteValuesToLabels(int parameter, float value) override { labels[parameter] = value; }
  void PlotValue(double previousTime, double time, float previousValue, float value, double min, double max,
                 std::int32_t colour, bool wrapping) override {
    plots.push_back({previousTime, time, previousValue, value, min, max, colour, wrapping});
    if (onPlot) onPlot();
  }
  void ShowAlarm(int parameter, AlarmSide side) override { alarms.emplace_back(parameter, side); }
  void ShowValuesStale(bool shown) override { stale = shown; }
  double TimeOrigin() const override { return origin; }
  void EnableToolbar() override { ++toolbarsEnabled; }
  void RefreshForm() override { ++refreshes; }
  void UpdateParametersDefs() override {}

  double origin = 0;
  bool stale = false;
  std::vector<std::pair<double, double>> blocks, dates;
  std::vector<double> scrolls;
  std::map<int, float> labels;
  std::vector<Plot> plots;
  std::vector<std::pair<int, AlarmSide>> alarms;
  int toolbarsEnabled = 0;
  int refreshes = 0;
  std::function<void()> onPlot;
};

/// Makes a FakeGraphWindow for every entry of GraphList.
class FakeGraphs : public GraphWindows {
 public:
  explicit FakeGraphs(Session& session) : session_(session) {}

  void CreateGraphWindows() override {
    UnloadAll();
    if (onCreate) onCreate();
    for (int k = 1; k <= session_.GraphCount; ++k) {
      const int graph = session_.GraphList[k];
      session_.GraphForms[graph] = &windows[graph];
    }
    ++creations;
  }
  void UnloadAll() override {
    session_.GraphForms.fill(nullptr);
    ++unloads;
  }
  void Rebuild(int graphNumber) override { rebuilt.push_back(graphNumber); }

  std::function<void()> onCreate;  ///< runs ahead of each; may throw
  std::map<int, FakeGraphWindow> windows;
  std::vector<int> rebuilt;
  int creations = 0;
  int unloads = 0;

 private:
  Session& session_;
};

}  // namespace velk::test
