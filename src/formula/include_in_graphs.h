#pragma once

#include <string>
#include <vector>

#include "model/session.h"

namespace velk {

/// A computed channel as the window ComputedParameters shows it.
struct ComputedChannel {
  std::string name;
  bool included = false;  ///< it is computed, drawn and watched
};

/// The computed channels 1 to NumberOfFormulae, in order.
std::vector<ComputedChannel> ComputedChannels(const Session& session);

/// Switches the computed channels on and off, `channels` in the same order. One that is switched on gets a graph window
/// of its own. For a file that is played back this holds for that file only, and the caller has seen to the room. Graph
/// map and windows are the caller's.
void IncludeInGraphs(Session& session, const std::vector<ComputedChannel>& channels);

}  // namespace velk
