#pragma once

#include <string>
#include <vector>

#include "platform/database/connection.h"

namespace velk {

/// How logData stands in a file. Files of other programs may have no ID, columns in another order, and no index.
struct LogLayout {
  std::string key;    ///< what rows are ordered and found by, as it stands in a statement: ID, or the engine's own
  std::string index;  ///< the index over Date and Time, as it stands in a statement; empty where there is none
  bool hasId = false;
  std::vector<std::string> columns;   ///< all of them, in order
  std::vector<std::string> channels;  ///< the columns besides ID, Date and Time, in order
};

/// Raises NoSuchTable without logData, and Database where it has no Date or no Time.
LogLayout ReadLogLayout(Connection& connection);

}  // namespace velk
