#include "core/large_values.h"

#include <algorithm>
#include <sstream>

namespace velk {

namespace {

constexpr std::size_t kOfThemselves = 4;

bool IsThere(const Session& session, int channel) {
  return channel >= 1 && channel <= session.TotalParameters && session.CurrentParameters[channel].GraphVisible;
}

/// Stands among the chosen ones where the operator has taken the last tick off.
constexpr int kNoneOfThese = 0;

std::vector<int> Stored(const Session& session) {
  std::vector<int> channels;
  std::istringstream words(session.LargeValues);
  for (int channel = 0; words >> channel;) channels.push_back(channel);
  return channels;
}

}  // namespace

std::vector<int> LargeChannels(const Session& session) {
  std::vector<int> channels = Stored(session);
  const bool wantsNone = std::find(channels.begin(), channels.end(), kNoneOfThese) != channels.end();
  std::erase_if(channels, [&](int channel) { return !IsThere(session, channel); });
  if (!channels.empty() || wantsNone) return channels;
  for (int i = 1; i <= session.TotalParameters && channels.size() < kOfThemselves; ++i)
    if (IsThere(session, i)) channels.push_back(i);
  return channels;
}

std::string LargeChannelsWith(const Session& session, int channel, bool chosen) {
  std::vector<int> channels = LargeChannels(session);
  std::erase(channels, channel);
  if (chosen) channels.push_back(channel);
  if (channels.empty()) channels.push_back(kNoneOfThese);
  for (const int other : Stored(session))
    if (other > 0 && other <= kMaxParameters && !IsThere(session, other)) channels.push_back(other);
  std::sort(channels.begin(), channels.end());
  return LargeChannelsText(channels);
}

std::string LargeChannelsText(const std::vector<int>& channels) {
  std::string text;
  for (const int channel : channels) text += (text.empty() ? "" : " ") + std::to_string(channel);
  return text;
}

}  // namespace velk
