#include "log/channels.h"

namespace velk {

std::vector<std::string> ChannelNames(const Session& session) {
  std::vector<std::string> names;
  for (int i = 1; i <= session.NumberOfParameters; ++i)
    names.push_back(session.CurrentParameters[static_cast<std::size_t>(i)].name);
  return names;
}

LogRow PresentRow(const Session& session, double time) {
  const auto first = session.CurrentValue.begin() + 1;
  return {time, {first, first + session.NumberOfParameters}};
}

}  // namespace velk
