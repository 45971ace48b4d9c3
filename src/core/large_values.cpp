#include "core/large_values.h"

#include <sstream>

namespace velk {

namespace {

constexpr std::size_t kOfThemselves = 4;

bool IsThere(const Session& session, int channel) {
  return channel >= 1 && channel <= session.TotalParameters && session.CurrentParameters[channel].GraphVisible;
}

}  // namespace

std::vector<int> LargeChannels(const Session& session) {
  std::vector<int> channels;
  std::istringstream words(session.LargeValues);
  for (int channel = 0; words >> channel;)
    if (IsThere(session, channel)) channels.push_back(channel);
  if (!channels.empty()) return channels;
  for (int i = 1; i <= session.TotalParameters && channels.size() < kOfThemselves; ++i)
    if (IsThere(session, i)) channels.push_back(i);
  return channels;
}

std::string LargeChannelsText(const std::vector<int>& channels) {
  std::string text;
  for (const int channel : channels) text += (text.empty() ? "" : " ") + std::to_string(channel);
  return text;
}

}  // namespace velk
