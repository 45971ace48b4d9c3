#pragma once

#include <string>

#include "journal.h"
#include "line.h"

namespace sim {

/// A cable that is pulled out and plugged in again.
struct HangUp {
  long after = 0;            ///< frames; 0: never
  double away = 3;           ///< seconds
  std::string returnsAs;     ///< the link that leads to the device from then on; empty: the one of before
  bool withinFrame = false;  ///< ahead of it comes the front half of one more frame
};

/// The help text of what belongs to it.
#define SIM_HANG_UP_HELP                                                                                              \
  "  --hangup-after N       takes the device away behind N frames, back --return-after S seconds (default 3) later\n" \
  "  --hangup-within        sends half of the next frame ahead of that\n"                                             \
  "  --return-as PATH       the link that leads to the device from its return on\n"

/// Makes the device and prints its path.
void PlugIn(Line& line);

/// Takes the device away and brings it back; `next` is the frame that half is sent of. Writes "gone" into the journal.
/// False if the program is to end.
bool HangUpAndReturn(const HangUp& hangUp, std::string next, Line& line, Journal& journal);

}  // namespace sim
