#include "formula/include_in_graphs.h"

#include <algorithm>

#include "formula/additional_parameters.h"

namespace velk {

std::vector<ComputedChannel> ComputedChannels(const Session& session) {
  std::vector<ComputedChannel> channels;
  const bool stand = AdditionalStandBehindInputs(session);
  for (int i = 1; i <= session.NumberOfFormulae; ++i) {
    const Parameter& channel =
        stand ? session.CurrentParameters[session.NumberOfParameters + i] : session.AdditionalParameters[i];
    channels.push_back({channel.name, channel.GraphVisible});
  }
  return channels;
}

void IncludeInGraphs(Session& session, const std::vector<ComputedChannel>& channels) {
  PlaceBehindFile(session);
  const int count = std::min<int>(session.NumberOfFormulae, static_cast<int>(channels.size()));
  for (int i = 1; i <= count; ++i) {
    const int place = session.NumberOfParameters + i;
    const bool included = channels[static_cast<std::size_t>(i) - 1].included;
    const auto include = [&](Parameter& channel) {
      channel.GraphVisible = included;
      if (included) channel.FormIndex = static_cast<std::int16_t>(place);
    };
    include(session.CurrentParameters[place]);
    if (!ShowsFile(session)) include(session.AdditionalParameters[i]);
  }
  session.TotalParameters = static_cast<std::int16_t>(session.NumberOfParameters + session.NumberOfFormulae);
}

}  // namespace velk
