#pragma once

#include "instruments/link/link.h"

namespace velk {

/// What Connect asks of an instrument on the serial line: the board is set up and the port opened; where the line
/// driver serves, it takes the device over and a first line is waited for, 15 seconds at most and no longer than
/// TheTimeOut.
void CheckPort(Session& session, const Platform& platform, Link& link);

}  // namespace velk
