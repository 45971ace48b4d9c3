#pragma once

#include <string>
#include <vector>

#include "model/session.h"

namespace velk {

/// The channels that the operator wants to read from afar, by their numbers in CurrentParameters. Where none was
/// chosen, or none of them is there, the first four that are shown on graphs.
std::vector<int> LargeChannels(const Session& session);

/// What the settings keep of a choice: numbers with a blank between.
std::string LargeChannelsText(const std::vector<int>& channels);

}  // namespace velk
