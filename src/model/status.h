#pragma once

#include <span>
#include <string_view>

#include "model/main_view.h"
#include "model/session.h"

namespace velk {

/// Stores the status in CurrentStatus, shows its word in panel 1, and forces the menu items that go with it.
void ChangeCurrentStatus(Session& session, MainView& view, const MessageText& status);

/// Whether the session stands at this status.
bool StatusIs(const Session& session, const MessageText& status);

}  // namespace velk
