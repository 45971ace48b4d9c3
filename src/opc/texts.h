#pragma once

#include "base/message_text.h"

/// What the OPC objects say. Each with its number in the message database, which never changes its meaning.
namespace velk::text {

// A call that failed; its name, its number in decimal and in hexadecimal stand between the parts
inline constexpr MessageText OpcFunctionBefore{3300, "The OPC function '"};
inline constexpr MessageText OpcFunctionNumber{3301, "' has returned an error of "};
inline constexpr MessageText OpcFunctionHex{3302, " or Hex 0x"};
inline constexpr MessageText OpcFunctionTitle{3303, "OPC Function error"};

}  // namespace velk::text
