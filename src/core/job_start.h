#pragma once

#include "base/message_text.h"
#include "model/main_view.h"
#include "model/session.h"

namespace velk {

// What Start, Pause and Resume do for a job and for a playback alike.

/// The session and its charts begin at `start`, with rows of `step` days.
void SetStartTimes(Session& session, double start, double step);
/// Writes the time axis of each graph from the start of its page on.
void WriteTimeAxes(const Session& session);

/// What a press of the button Pause would do next, on the button and on its menu item.
void CaptionStartButton(MainView& view, const MessageText& caption, int image);
/// Enables the toolbars of the graph windows.
void ReleaseGraphToolbars(const Session& session);

}  // namespace velk
