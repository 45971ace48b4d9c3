#pragma once

#include <string>
#include <vector>

#include "instruments/reading/line_fault.h"
#include "instruments/reading/line_framing.h"
#include "model/session.h"
#include "platform/ports/serial.h"

namespace velk {

/// Collects the lines of an instrument that buffers its samples and sends them in bursts, or when asked.
class IntermittentLines {
 public:
  std::vector<std::string> BufferedLines{1};  ///< 1 to BufferedLineCount, each with its terminator
  int BufferedLineCount = 0;

  /// Forgets everything; for when a job opens the port.
  void Reset(std::string_view terminator);

  /// Takes what waits in the port and makes BufferedLines the lines that are whole by now; the rest of a line is kept
  /// for the next call. Only a terminator of one character ends a line. At most 256 KiB are taken at once: call again
  /// while bytes wait. Gives whether there are lines.
  bool Receive(SerialPort& port);

  /// Takes what waits in the port and leaves BufferedLines as they are: a call of Receive finds it later. Holds 1 MiB;
  /// further bytes stay in the port.
  void Hold(SerialPort& port);

  /// Drops the line that is not whole yet: its device went away.
  void DropUnfinished() { framing_.DropUnfinished(); }

 private:
  static constexpr std::size_t kMostHeld = 1024 * 1024;
  static constexpr std::size_t kMostAtOnce = 256 * 1024;

  LineFraming framing_;
  bool endsLines_ = false;
};

struct BufferedSample {
  LineFault fault = LineFault::CheckFailed;
  double sampleTime = 0;  ///< the line's own date and time, in days

  bool IsAccepted() const { return fault == LineFault::None; }
};

/// Takes the values of a buffered line into CurrentValue, scaled: the first field is the date and time, in any form of
/// ReadDateField, then comes a field a parameter. A line without the terminator, without a date, with fewer fields than
/// parameters or with a value beyond the 32-bit range is not accepted and changes nothing. Raises Overflow for a gain
/// or an offset beyond that range.
BufferedSample ReadBufferedLine(Session& session, std::string_view line);

}  // namespace velk
