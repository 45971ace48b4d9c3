#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "log/log_layout.h"
#include "platform/database/connection.h"

namespace velk {

/// The keys of all rows of a log with an index over Date and Time, in its order: rows without a date first. They come
/// from the pages of the file where it is at rest. `step` is told every thousand rows or so how many were read; it may
/// let events run, and throw to leave it. The connection is held meanwhile.
std::vector<std::int64_t> KeysByIndex(Connection& connection, const LogLayout& layout,
                                      const std::function<void(std::int64_t read)>& step);

}  // namespace velk
