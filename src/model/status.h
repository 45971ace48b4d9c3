#pragma once

#include <span>
#include <string_view>

#include "model/main_view.h"
#include "model/session.h"

namespace velk {

/// Stores the translated word in CurrentStatus, shows it in panel 1, and forces the menu items that go with it.
void ChangeCurrentStatus(Session& session, MainView& view, MessageId status);

/// Whether the session stands at this status; compares translated words.
bool StatusIs(const Session& session, MessageId status);

}  // namespace velk
