#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/dialogs/dialogs.h"

namespace velk {

/// Asks for the colour of a curve; nothing on Cancel.
std::optional<std::int32_t> AskColour(Dialogs& dialogs, const std::string& name, std::int32_t present);

/// Asks for a number picture by its sample; nothing on Cancel.
std::optional<std::string> AskNumberFormat(Dialogs& dialogs);

/// Why EnteredNumber takes no number from a text.
const MessageText& FaultOfNumber(std::string_view text);

/// Names as the entries of a list: with their numbers in front where two are the same or one is empty.
std::vector<std::string> TellApart(std::vector<std::string> names);

/// Asks for one of these names; gives its place, counted from 1, or nothing on Cancel.
std::optional<int> AskWhich(Dialogs& dialogs, const OperatorText& title, const OperatorText& prompt,
                            const std::vector<std::string>& names, int helpTopic = 0);

}  // namespace velk
