#pragma once

#include "base/message_text.h"

/// What charts say. Each with its number in the message database, which never changes its meaning.
namespace velk::text {

// Graphs
inline constexpr MessageText AxisTime{2300, "Time"};
inline constexpr MessageText AxisTimeUnit{2301, "(hh:mm)"};

}  // namespace velk::text
