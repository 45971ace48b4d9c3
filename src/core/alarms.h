#pragma once

#include "model/graph_window.h"
#include "model/main_view.h"
#include "model/parameter.h"
#include "model/session.h"

namespace velk {

/// On which side a value lies outside a parameter's limits. Both comparisons are strict, in 32 bits, the lower one
/// first. A level that is neither a number nor "None" nor empty counts as the number at its front, so as 0.
AlarmSide SideOutOfLimits(const Parameter& parameter, float value);

/// What stands ahead of a name or a value: nothing where the side is None.
inline const char* AlarmMark(AlarmSide side) {
  return side == AlarmSide::Low ? "\u25BC " : side == AlarmSide::High ? "\u25B2 " : "";
}

/// Tests a parameter of the running sample and shows the outcome: its label on the graph, the indicator, the beep.
void TestAlarms(Session& session, MainView& view, int parameter);

/// No parameter is out of its limits any more, and nothing shows that one was: a job begins or ends.
void ClearAlarms(Session& session, MainView& view);

/// Takes the indicator away once no parameter is out of its limits.
void HideAlarmsIfNone(const Session& session, MainView& view);

}  // namespace velk
