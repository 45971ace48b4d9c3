#pragma once

#include <string>
#include <vector>

#include "model/session.h"

namespace velk {

// Curves that change their window, in the graph map and in CurrentParameters. The windows are the caller's.

/// Whether a window has room for a further curve.
bool HasRoomForCurve(const Session& session, int graph);

/// Moves the first curve of the window `from` behind the last one of `to`; the others stay where they are. Nothing
/// happens where `from` has none.
void MoveFirstCurve(Session& session, int from, int to);

/// Takes the curve of a slot out of its window and gives it one of its own: that of the parameter's number, or the
/// first free one where that number stands for a window that has curves. Gives the number.
int TakeCurveOut(Session& session, int graph, int slot);

/// The names of a window's curves, in the order of their slots.
std::vector<std::string> CurveNames(const Session& session, int graph);

}  // namespace velk
