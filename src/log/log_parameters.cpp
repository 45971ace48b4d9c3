#include "log/log_parameters.h"

#include <algorithm>
#include <set>

#include "base/errors.h"
#include "log/field_names.h"
#include "log/graph_settings.h"
#include "log/log_layout.h"
#include "log/summary_report.h"
#include "log/texts.h"
#include "platform/database/catalog.h"
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
    parameter.Gain = 1;
    parameter.FormIndex = static_cast<std::int16_t>(channels.size() + 1);
    FillEmptyTexts(parameter, parameter.FormIndex, language);
    FillEmptyScale(parameter);
    channels.push_back(parameter);
  }
  return channels;
}

/// Counted from 0; -1 where there is none.
int PlaceOf(const std::vector<std::string>& columns, const std::string& name) {
  const auto found =
      std::find_if(columns.begin(), columns.end(), [&](const std::string& column) { return SameName(column, name); });
  return found == columns.end() ? -1 : static_cast<int>(found - columns.begin());
}

/// Where channels of these column names stand.
struct Placing {
  Placing(const std::vector<std::string>& names, const std::vector<std::string>& columns) {
    std::set<int> taken;
    for (const std::string& name : names) {
      places.push_back(PlaceOf(columns, name));
      taken.insert(places.back());
    }
    for (std::size_t i = 0; i < places.size() && !without; ++i) {
      if (places[i] >= 0) continue;
      places[i] = static_cast<int>(i);
      if (i >= columns.size() || !taken.insert(places[i]).second) without = names[i];
    }
  }

  std::vector<int> places;
  std::optional<std::string> without;  ///< the first one that stands nowhere
};

}  // namespace

LogParameters ReadLogParameters(const std::string& path, const Language& language) {
  const auto connection = Connection::Open(path, OpenMode::ReadOnly);
  LogParameters parameters;
  parameters.columns = ReadLogLayout(*connection).channels;
  auto settings = ReadGraphSettings(connection, language);
  parameters.hasGraphSettings = settings && !settings->empty();
  parameters.channels = parameters.hasGraphSettings ? *std::move(settings) : NamedAfter(parameters.columns, language);

  std::vector<std::string> names;
  for (const Parameter& channel : parameters.channels) names.push_back(channel.name);
  const std::vector<bool> included = ChannelsInSummary(*connection, names, language);
  for (std::size_t i = 0; i < names.size(); ++i) parameters.channels[i].IncludeInSummary = included[i];
  return parameters;
}

bool LogHasGraphSettings(const LogParameters& file, Dialogs& dialogs) {
  if (file.hasGraphSettings) return true;
  dialogs.Message({text::NoGraphSettings, text::DatabaseErrorTitle, Buttons::Ok, BoxIcon::Exclamation});
  return false;
}

std::vector<int> ColumnsOfChannels(const LogParameters& parameters, const std::string& path) {
  std::vector<std::string> names;
  for (const Parameter& channel : parameters.channels) names.push_back(channel.name);
  Placing placing(LogColumnNames(names), parameters.columns);
  if (placing.without) throw RuntimeError(ErrorNumber::Database, text::NoColumn + (*placing.without + (": " + path)));
  return std::move(placing.places);
}

std::optional<std::vector<int>> PlacesOfChannels(const std::vector<std::string>& names,
                                                 const std::vector<std::string>& columns) {
  Placing placing(LogColumnNames(names), columns);
  if (placing.without) return std::nullopt;
  return std::move(placing.places);
}

}  // namespace velk
