#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/database/connection.h"

namespace velk {

/// How many rows a log has, told at once however long it is. Rows are counted some at a time, from the first one on;
/// for the others the distance of keys stands, which is their number where none was ever deleted.
class RowTally {
 public:
  /// The number of rows, of those too that were recorded since the last call. Counts `most` rows on. `key` as
  /// LogLayout has it.
  std::int64_t Follow(Connection& connection, const std::string& key, int most);

 private:
  std::int64_t counted_ = 0;
  std::optional<std::int64_t> upTo_;  ///< the key of the last one; before the first call nothing
};

}  // namespace velk
