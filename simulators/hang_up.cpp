#include "hang_up.h"

#include <cstdio>

namespace sim {

void PlugIn(Line& line) {
  line.Plug();
  std::printf("%s\n", line.Device().c_str());
  std::fflush(stdout);
}

bool HangUpAndReturn(const HangUp& hangUp, std::string next, Line& line, Journal& journal) {
  if (hangUp.withinFrame) {
    next.resize(next.size() / 2);
    line.Transmit(next);
    journal.Write("cut", next);
  }
  line.Drain();
  line.Unplug();
  journal.Write("gone", {});
  if (!RestUntil(Seconds() + hangUp.away)) return false;
  if (!hangUp.returnsAs.empty()) line.SetLink(hangUp.returnsAs);
  PlugIn(line);
  return true;
}

}  // namespace sim
