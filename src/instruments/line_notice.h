#pragma once

#include <string>
#include <vector>

#include "i18n/translator.h"
#include "platform/serial.h"

namespace velk {

/// What the operator is told of a device that does not have all of its line settings: each by its name and value.
std::string UnsupportedText(const clstranslation& translator, const SerialSettings& settings,
                            const std::vector<LineSetting>& unsupported);

}  // namespace velk
