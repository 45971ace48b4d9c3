#pragma once

#include "base/dates.h"
#include "base/language.h"
#include "graphs/parameter_curves.h"
#include "graphs/strip_chart.h"
#include "model/graph_map.h"
#include "support/in_english.h"
#include "support/surface_recording.h"

namespace velk::test {

inline constexpr double kSecond = 1.0 / 86400;

/// 14 March 2026, 09:30:00, the start of every job in these tests.
inline double JobStart() {
  return DateSerial(2026, 3, 14) + TimeOfDay(9, 30, 0);
}

/// Gives a session `count` curves on graph 3, each with the scale 0 to 100.
inline void GiveCurves(Session& session, int count) {
  session.Times.GraphTimeStep = kSecond;
  session.NumberOfParameters = static_cast<std::int16_t>(count);
  for (int i = 1; i <= count; ++i) {
    Parameter& curve = session.CurrentParameters[i];
    curve.name = "Pressure " + std::to_string(i);
    curve.units = "psi";
    curve.min = 0;
    curve.max = 100;
    curve.color = 0x0000FF;
    curve.format = "#0.000";
    curve.FormIndex = 3;
    curve.GraphVisible = true;
  }
  BuildGraphMap(session, count);
}

/// A chart of graph 3 on recordings: the plot is 10966 wide, so that the curves have 10000 to themselves.
struct RecordedChart {
  explicit RecordedChart(int curveCount = 1, double plotHeight = 3600, double pixelDivide = 15)
      : measures{plotHeight, 120, pixelDivide} {
    GiveCurves(session, curveCount);
  }

  /// Runs the block that starts `seconds` behind the start, as the sample does, and tells the page start to all.
  void DrawBlock(double seconds) {
    chart.Picture2_Update(JobStart() + seconds * kSecond, JobStart() + (seconds + 120) * kSecond);
    session.Times.GraphPageTime = chart.TimeOrigin();
  }
  /// A segment of the scale 0 to 100 in red.
  void Plot(double fromSecond, double toSecond, float previous, float value, bool wrapping = false) {
    chart.PlotValue(JobStart() + fromSecond * kSecond, JobStart() + toSecond * kSecond, previous, value, 0, 100,
                    0x0000FF, wrapping);
  }
  void Forget() { picture1.calls.clear(), pic2.calls.clear(), picture3.calls.clear(); }

  Session session;
  Language language;
  ParameterCurves curves{session, 3};
  ChartMeasures measures;
  SurfaceRecording picture1{11066, 5000};
  SurfaceRecording pic2{10966, measures.MaximumTime};
  SurfaceRecording picture3{963, measures.MaximumTime};
  StripChart chart{session.Times, measures, curves, language, {picture1, pic2, picture3}};
};

using Calls = std::vector<std::string>;

}  // namespace velk::test
