#include "core/job_start.h"

#include "model/graph_map.h"
#include "model/graph_window.h"

namespace velk {

void SetStartTimes(Session& session, double start, double step) {
  session.StartTime = session.LastPageTime = start;
  session.PagesTurned = 0;
  session.Times.GraphTimeStep = step;
  session.Times.LastPlotTime = session.Times.GraphEndTime = session.Times.GraphPageTime = start;
}

void WriteTimeAxes(const Session& session) {
  const TimeBase& times = session.Times;
  const double blockEnd = times.GraphPageTime + times.GraphTimeStep * session.pixelslength;
  ForEachGraphWindow(session, [&](GraphWindow& window) { window.WriteDate(times.GraphPageTime, blockEnd); });
}

void CaptionStartButton(MainView& view, const MessageText& caption, int image) {
  view.SetButtonImage("Pause", image);
  view.SetButtonToolTip("Pause", caption);
  view.SetMenuCaption("mnuAcquireStart", caption);
}

void ReleaseGraphToolbars(const Session& session) {
  ForEachGraphWindow(session, [](GraphWindow& window) { window.EnableToolbar(); });
}

}  // namespace velk
