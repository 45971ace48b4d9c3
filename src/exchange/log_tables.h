#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base/language.h"
#include "platform/database/connection.h"

namespace velk {

// The tables of a log that is made from rows of another kind.

/// Makes logData with a column for each name, and one of comments behind them where there are any; GraphSettings and
/// SummaryReport, both empty. logData has no index yet.
void CreateLogTables(Connection& log, const std::vector<std::string>& names, bool hasComments,
                     const Language& language);

/// A colour for a curve for which nobody has chosen one: of sixteen that can be told apart, by its place.
std::int32_t CurveColour(std::size_t place);

/// A row of GraphSettings for each name: scale 0 to 100, a graph of its own, a colour of sixteen that can be told
/// apart.
void FillGraphSettings(const std::shared_ptr<Connection>& log, const std::vector<std::string>& names,
                       const Language& language);

/// Whether rows of these columns fit into a log: Date, Time and columns of just these names stand behind its ID, in
/// order. False for a database without a log; raises where it can't be read.
bool CheckLogCompatible(const std::string& path, const std::vector<std::string>& names);

/// Whether logData of two files has the same column names, of which the first 36 are looked at. Raises as above.
bool CompareSettingsFile(const std::string& path, const std::string& settingsSourceFile);

/// Puts the graph settings of another log in the place of a log's own. All or nothing.
void ImportGraphSettings(const std::string& path, const std::string& settingsSourceFile);

}  // namespace velk
