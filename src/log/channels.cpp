#include "log/channels.h"

namespace velk {

std::vector<std::string> ChannelNames(const Session& session) {
  std::vector<std::string> names;
  for (int i = 1; i <= session.NumberOfParameters; ++i)
    names.push_back(session.CurrentParameters[static_cast<std::size_t>(i)].name);
  return names;
}

LogRow PresentRow(const Session& session, double time) {
  LogRow row{time, {}};
  row.values.reserve(static_cast<std::size_t>(session.NumberOfParameters));
  for (int i = 1; i <= session.NumberOfParameters; ++i)
    row.values.push_back(static_cast<double>(session.CurrentValue[static_cast<std::size_t>(i)]));
  return row;
}

}  // namespace velk
