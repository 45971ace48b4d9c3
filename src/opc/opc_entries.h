#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/opc/opc_value.h"

namespace velk {

// What is typed into the windows of OPC. Nothing for what can't be taken.

/// Milliseconds, 0 to 2147483647; an empty text is 0.
std::optional<std::int32_t> EnteredUpdateRate(std::string_view text);
/// Percent, 0 to 100; an empty text is 0.
std::optional<float> EnteredDeadBand(std::string_view text);
/// Milliseconds between two looks at the values, 50 to 10000.
std::optional<int> EnteredDisplayInterval(std::string_view text);
/// A value to be written, as texts that the server's type is made of; elements of an array stand between commas.
OpcValue EnteredOpcValue(const std::string& text, bool isArray);

}  // namespace velk
