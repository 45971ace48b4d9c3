#pragma once

#include <string>
#include <vector>

#include "model/session.h"

namespace velk {

/// The channels that the operator wants to read from afar, by their numbers in CurrentParameters. Where nothing was
/// chosen, or none of the chosen is there, the first four that are shown on graphs; none where the last was taken off.
std::vector<int> LargeChannels(const Session& session);

/// LargeValues once a channel was ticked, or its tick taken off. Channels that were chosen in a longer job stay.
std::string LargeChannelsWith(const Session& session, int channel, bool chosen);

/// What the settings keep of a choice: numbers with a blank between.
std::string LargeChannelsText(const std::vector<int>& channels);

}  // namespace velk
