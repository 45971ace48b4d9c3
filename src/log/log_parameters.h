#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/language.h"
#include "model/parameter.h"
#include "platform/dialogs/dialogs.h"

namespace velk {

/// The channels of a log as its file tells them.
struct LogParameters {
  std::vector<Parameter> channels;  ///< name, units, scale, format, graph, colour, IncludeInSummary; all visible
  bool hasGraphSettings = false;    ///< else only the names are the file's, and the rest defaults with a gain of 1
  std::vector<std::string>
      columns;  ///< the columns of logData that hold channels; no fewer than `channels` in a sound log
};

/// Reads what a log tells of its channels, 64 at most. Raises NoSuchTable for a database without logData, and what the
/// opening of the file raises. The file is left as it is, and nothing is held of it.
LogParameters ReadLogParameters(const std::string& path, const Language& language);

/// Whether the file tells its graph settings; tells the operator where it doesn't.
bool LogHasGraphSettings(const LogParameters& file, Dialogs& dialogs);

/// The column of each channel of these names, counted from 0 among `columns`: as ColumnsOfChannels finds them. Nothing
/// where a channel has none.
std::optional<std::vector<int>> PlacesOfChannels(const std::vector<std::string>& names,
                                                 const std::vector<std::string>& columns);

/// The column of each channel, counted from 0 among `columns`: the one that carries its name, or else the one that
/// stands in its place and carries nobody's. Raises Database, with the name and the path, where there is neither.
std::vector<int> ColumnsOfChannels(const LogParameters& parameters, const std::string& path);

}  // namespace velk
