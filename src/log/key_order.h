#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "log/log_layout.h"
#include "platform/database/connection.h"

namespace velk {

/// The keys of all rows of a log with an index over Date and Time, in its order: rows without a date first. Where the
/// file is at rest and has several days, a thread over a connection of its own reads the later half of them. `step` is
/// told every thousand rows how many were read; it may let events run, and throw to leave it. `connection` is held.
std::vector<std::int64_t> KeysByIndex(const std::shared_ptr<Connection>& connection, const LogLayout& layout,
                                      const std::function<void(std::int64_t read)>& step);

}  // namespace velk
