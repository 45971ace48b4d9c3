#include "core/alarms.h"

#include <cstring>
#include <string_view>

#include "base/numbers.h"

namespace velk {

namespace {

/// Asked of each channel at each sample: a length that is known makes one comparison of it.
bool IsSet(const std::string& level) {
  constexpr std::string_view kNone = kNoAlarm;
  const bool isNone = level.size() == kNone.size() && std::memcmp(level.data(), kNone.data(), kNone.size()) == 0;
  return !level.empty() && !isNone;
}

float Level(const std::string& level) {
  return static_cast<float>(Val(level));
}

void ShowIndicator(MainView& view, bool on) {
  view.SetButtonVisible("Command1", on);
  view.SetButtonVisible("Alarms", on);
  if (on) view.SetButtonEnabled("Alarms", true);
}

}  // namespace

AlarmSide SideOutOfLimits(const Parameter& parameter, float value) {
  if (IsSet(parameter.loweralarm) && Level(parameter.loweralarm) > value) return AlarmSide::Low;
  if (IsSet(parameter.upperalarm) && Level(parameter.upperalarm) < value) return AlarmSide::High;
  return AlarmSide::None;
}

void TestAlarms(Session& session, MainView& view, int parameter) {
  const Parameter& tested = session.CurrentParameters[parameter];
  const AlarmSide side = SideOutOfLimits(tested, session.CurrentValue[parameter]);
  const bool alarmed = side != AlarmSide::None;
  const bool labelIsAsEver = !alarmed && !session.AlarmTriggered[parameter];
  session.AlarmTriggered[parameter] = alarmed;
  if (labelIsAsEver) return;
  const int graph = tested.FormIndex;
  if (graph >= 1 && graph <= kMaxParameters)
    if (GraphWindow* window = session.GraphForms[graph]) window->ShowAlarm(parameter, side);
  if (!alarmed) return;
  ShowIndicator(view, true);
  view.Beep();
}

void ClearAlarms(Session& session, MainView& view) {
  for (int i = 1; i <= kMaxParameters; ++i) {
    if (!session.AlarmTriggered[i]) continue;
    session.AlarmTriggered[i] = false;
    const int graph = session.CurrentParameters[i].FormIndex;
    GraphWindow* window = graph >= 1 && graph <= kMaxParameters ? session.GraphForms[graph] : nullptr;
    if (window) window->ShowAlarm(i, AlarmSide::None);
  }
  ShowIndicator(view, false);
}

void HideAlarmsIfNone(const Session& session, MainView& view) {
  // Without a way out of the loop all are looked at at once.
  bool any = false;
  for (int i = 1; i <= kMaxParameters; ++i) any |= session.AlarmTriggered[i];
  if (!any) ShowIndicator(view, false);
}

}  // namespace velk
