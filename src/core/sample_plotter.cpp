#include "core/sample_plotter.h"

#include "core/alarms.h"
#include "core/page_catch_up.h"
#include "formula/additional_parameters.h"
#include "model/graph_window.h"

namespace velk {

void SamplePlotter::Compute(const Statements& run) {
  for (int i = session_.NumberOfParameters + 1; i <= session_.TotalParameters; ++i) ComputeOne(run, i);
}

void SamplePlotter::Draw(const Statements& run, const Plotting& plotting) {
  if (plotting.catchesUp) CatchUpPage(session_, plotting.samplingRate);
  for (int i = 1; i <= session_.TotalParameters; ++i) {
    if (!session_.CurrentParameters[i].GraphVisible) continue;
    if (i > session_.NumberOfParameters && !plotting.isComputed) ComputeOne(run, i);
    session_.Data.channel = i;
    DrawParameter(i, plotting);
    session_.Data.channel = 0;
  }
  session_.FirstPoint = false;
  if (plotting.watchesAlarms) HideAlarmsIfNone(session_, view_);
}

/// The value of a computed channel, unless a decoder fills it.
void SamplePlotter::ComputeOne(const Statements& run, int parameter) {
  const int index = parameter - session_.NumberOfParameters;
  if (index > session_.NumberOfFormulae || session_.Formula[index] == kLinkedParameter) return;
  session_.Data.channel = parameter;
  run([&] { session_.CurrentValue[parameter] = ValueOf(session_, index); });
  session_.Data.channel = 0;
}

void SamplePlotter::DrawParameter(int parameter, const Plotting& plotting) {
  const Parameter& curve = session_.CurrentParameters[parameter];
  const int graph = curve.FormIndex;
  GraphWindow* window = graph >= 1 && graph <= kMaxParameters ? session_.GraphForms[graph] : nullptr;

  if (window && session_.GraphSlots[1][graph] == parameter && session_.SampleTime >= session_.Times.GraphEndTime) {
    const double blockEnd = session_.Times.GraphEndTime + plotting.samplingRate * session_.pixelslength;
    window->Picture2_Update(session_.Times.GraphEndTime, blockEnd);
    if (plotting.movesScrollBar) window->UpdateScroll(blockEnd);
  }
  if (window) window->WriteValuesToLabels(parameter, session_.CurrentValue[parameter]);
  if (session_.FirstPoint || plotting.beginsAnew) {
    session_.Times.LastPlotTime = session_.SampleTime;
    session_.PreviousValue[parameter] = session_.CurrentValue[parameter];
  }
  if (window)
    window->PlotValue(session_.Times.LastPlotTime, session_.SampleTime, session_.PreviousValue[parameter],
                      session_.CurrentValue[parameter], curve.min, curve.max, curve.color, curve.Wrapping);
  if (plotting.watchesAlarms) TestAlarms(session_, view_, parameter);
  session_.PreviousValue[parameter] = session_.CurrentValue[parameter];
}

void SamplePlotter::ReadPageStart() {
  FollowFirstPage(session_);
}

void SamplePlotter::MoveTimeBase(double samplingRate) {
  if (session_.SampleTime >= session_.Times.GraphEndTime)
    session_.Times.GraphEndTime += samplingRate * session_.pixelslength;
  session_.Times.LastPlotTime = session_.SampleTime;
}

}  // namespace velk
