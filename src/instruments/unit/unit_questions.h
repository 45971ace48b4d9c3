#pragma once

#include <optional>

#include "platform/dialogs/dialogs.h"

namespace velk {

/// A number that the operator types; asked again until it is one. Nothing on Cancel and for an empty answer.
std::optional<double> AskUnitNumber(Dialogs& dialogs, const OperatorText& prompt, const OperatorText& title,
                                    const std::string& preset = {});

/// Whether a number may be sent: one that is sent with an exponent is warned about. Raises Overflow for one that is
/// none.
bool MaySend(Dialogs& dialogs, double value);

}  // namespace velk
