#pragma once

#include <vector>

#include "platform/ports/serial.h"

namespace velk {

/// What the device that is open at `descriptor`, set up with these settings, has not taken of them. A driver leaves out
/// what its device can't do without an error.
std::vector<PortSetting> UnsupportedSettings(int descriptor, const SerialSettings& settings);

}  // namespace velk
