#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "log/log_layout.h"
#include "platform/database/connection.h"

namespace velk {

/// Which row of a log stands at which position, in the order of keys, from 1. Where no row was ever deleted this is
/// computed; only a log with gaps has its keys read, once.
class RowPositions {
 public:
  /// Takes in what was recorded since the last call.
  void Follow(Connection& connection, const LogLayout& layout);
  /// Everything is read anew by the next Follow: rows were deleted.
  void Forget() { *this = RowPositions(); }

  std::int64_t Count() const { return count_; }
  /// Nothing where there is no such row.
  std::optional<std::int64_t> KeyAt(std::int64_t position) const;
  /// 0 where there is no such row.
  std::int64_t PositionOf(std::int64_t key) const;

 private:
  void ReadKeys(Connection& connection, const LogLayout& layout);

  std::int64_t count_ = 0;
  std::int64_t first_ = 0;
  std::int64_t last_ = 0;
  std::vector<std::int64_t> keys_;  ///< empty where there are no gaps
};

}  // namespace velk
