#pragma once

#include "instruments/reading/port_reader.h"
#include "instruments/reading/time_limit.h"

namespace velk {

enum class LineLength {
  Learned,                ///< FormattedLineLength is set
  TimedOutCheckHardware,  ///< no end of a line came: "Time Out Error, check hardware"
  TimedOutCheckSettings,  ///< one came, but no second: "Time Out Error, check hardware settings"
  Stopped                 ///< StopRequested was set by somebody else, or the device went away
};

/// Learns the length of the lines of an instrument that sends by itself: reads up to the end of the line that is under
/// way, then a whole line, and stores the bytes of that one, terminator included, in FormattedLineLength. Both
/// together take no longer than the limit; a time-out sets StopRequested, and the caller shows its text. A session
/// without a terminator learns nothing and runs out of time. Raises Overflow for a line longer than 32767.
LineLength LearnLineLength(PortReader& reader, Session& session, const TimeLimit& limit);

}  // namespace velk
