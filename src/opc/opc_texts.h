#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/operator_text.h"
#include "platform/opc/opc_transport.h"

namespace velk {

/// A value as the list of items shows it: the elements of an array joined with ", ", the first thousand of them;
/// Boolean "True" and "False".
std::string OpcDisplayText(const OpcValue& value);

/// "Good", or "Bad" and the quality in the form that has a blank in front of a positive number. Uncertain is good too.
OperatorText OpcStatusText(std::int32_t quality);

/// The same where a list is filled: two blanks ahead of the number.
OperatorText OpcStatusTextAtFirst(std::int32_t quality);

/// A value as it stands on the line: the first element of an array, Boolean "1" and "0", a text without what would
/// divide or end the line.
std::string OpcLineText(const OpcValue& value, std::string_view delimiter, std::string_view terminator);

/// What an item gives to the line.
struct OpcLineItem {
  bool hasReported = false;  ///< a value came, good or bad
  bool hasFailed = false;    ///< there is none to come; its place on the line stays empty
  OpcValue value = {};
};

/// The line of a moment: the time, and behind it a delimiter and the value of each item. Nothing before each item has
/// reported or failed: columns would shift.
std::optional<std::string> JoinOpcLine(double now, std::span<const OpcLineItem> items, std::string_view delimiter,
                                       std::string_view terminator);

}  // namespace velk
