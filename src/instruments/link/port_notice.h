#pragma once

#include <string>
#include <vector>

#include "base/operator_text.h"
#include "platform/ports/serial.h"

namespace velk {

/// What the operator is told of a device that does not have all of its port settings: each by its name and value.
OperatorText UnsupportedText(const SerialSettings& settings, const std::vector<PortSetting>& unsupported);

}  // namespace velk
