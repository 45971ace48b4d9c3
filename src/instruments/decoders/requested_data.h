#pragma once

#include <string>

#include "instruments/decoders/decoder.h"
#include "instruments/reading/heard.h"
#include "instruments/reading/port_reader.h"

namespace velk {

/// Rest ahead of each command: the instrument needs it between two requests.
inline constexpr int kRequestRestMilliseconds = 210;

struct RequestedLine {
  std::string line;       ///< empty when stopped, out of time, or without its device
  bool timedOut = false;  ///< the caller tells the operator; StopRequested is set
  int parameter = 0;      ///< the one that was asked for last
  Heard heard = {};       ///< of its answer
};

/// Asks for each parameter with its CommandString and makes one line of the answers: the sample time as a number, then
/// the delimiter and the answer of each parameter, then the terminator. An answer ends in LF; the CRs and LFs at its
/// end are taken off, the rest is the value, unchecked. An answer that takes longer than TheTimeOut sampling intervals
/// ends the line and sets StopRequested. Raises PortNotOpen.
RequestedLine Requested_data(SerialPort& port, Clock& clock, Session& session);

/// What a time-out of a request is told with: the port, what was heard, and the channel that was asked for.
OperatorText RequestTimeOutText(const OperatorText& port, const Session& session, const RequestedLine& requested);

namespace decoder {
/// Shows the time-out of a request in a box.
extern const Decoder Requested_data;
}  // namespace decoder

}  // namespace velk
