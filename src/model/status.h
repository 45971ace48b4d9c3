#pragma once

#include "model/main_view.h"
#include "model/session.h"

namespace velk {

/// Stores the status in CurrentStatus and shows it: its word in panel 1, the menu items that go with it, with
/// "Acquiring Data" the file in panel 2. The pointer and the title are put back.
void ChangeCurrentStatus(Session& session, MainView& view, const MessageText& status);

/// Whether the session stands at this status.
bool StatusIs(const Session& session, const MessageText& status);

}  // namespace velk
