#pragma once

#include "instruments/unit/unit_talk.h"

namespace velk {

/// Whether a parameter is a channel of the session's unit that can be calibrated on its board: an analog one or a
/// counter, while the windows show the unit's own parameters.
bool CanCalibrateOnBoard(const Session& session, int parameter);

/// Calibrates a channel on the board of its unit by two references, which are asked for. What fails is told in a box;
/// the unit runs and the link is as it was behind it.
void CalibrateOnBoard(const UnitAccess& unit, int channel);

}  // namespace velk
