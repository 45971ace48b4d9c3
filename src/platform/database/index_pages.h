#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/database/connection.h"

namespace velk {

/// The keys of all rows of a table in the order of an index over these columns, which hold numbers, then of the keys;
/// behind those that are in `keys`. They are taken from the pages of the file where they lie, three times as fast as by
/// a statement. `step` is called behind each page; it may let events run, and throw to leave it. The engine's lock is
/// held meanwhile, and the connection reads only.
///
/// False where a statement has to do it: without such an index, beside a write-ahead log, with texts in these columns,
/// with anything in the pages that doesn't fit together. Some keys may have been taken then. Raises as told at
/// Connection.
bool KeysFromIndex(Connection& connection, const std::string& table, const std::vector<std::string>& columns,
                   std::vector<std::int64_t>& keys, const std::function<void()>& step);

}  // namespace velk
