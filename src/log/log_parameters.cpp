#include "log/log_parameters.h"

#include "log/graph_settings.h"
#include "log/log_layout.h"
#include "log/summary_report.h"
#include "platform/database/connection.h"

namespace velk {

namespace {

/// Channels that carry the names of columns.
std::vector<Parameter> NamedAfter(const std::vector<std::string>& columns, const Language& language) {
  std::vector<Parameter> channels;
  for (const std::string& column : columns) {
    if (channels.size() == kMaxParameters) break;
    Parameter parameter;
    parameter.name = column;
    parameter.GraphVisible = true;
    channels.push_back(parameter);
    FillEmptyFields(channels.back(), static_cast<int>(channels.size()), language);
  }
  return channels;
}

}  // namespace

LogParameters ReadLogParameters(const std::string& path, const Language& language) {
  const auto connection = Connection::Open(path, OpenMode::ReadOnly);
  LogParameters parameters;
  parameters.columns = ReadLogLayout(*connection).channels;
  auto settings = ReadGraphSettings(connection, language);
  parameters.hasGraphSettings = settings.has_value();
  parameters.channels = settings ? *std::move(settings) : NamedAfter(parameters.columns, language);

  std::vector<std::string> names;
  for (const Parameter& channel : parameters.channels) names.push_back(channel.name);
  const std::vector<bool> included = ChannelsInSummary(*connection, names, language);
  for (std::size_t i = 0; i < names.size(); ++i) parameters.channels[i].IncludeInSummary = included[i];
  return parameters;
}

}  // namespace velk
