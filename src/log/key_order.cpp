#include "log/key_order.h"

#include <span>

#include "log/log_schema.h"
#include "platform/database/command.h"
#include "platform/database/index_pages.h"
#include "platform/database/scan.h"

namespace velk {

namespace {

using Keys = std::vector<std::int64_t>;
using Step = std::function<void(std::int64_t read)>;

constexpr std::size_t kKeysAStep = 1024;

void ReadKeys(const Connection& connection, const LogLayout& layout, Keys& keys, const Step& step) {
  Scan rows(connection, "SELECT 1 FROM logData INDEXED BY " + layout.index + " WHERE Visit(" + layout.key +
                            ") ORDER BY Date, Time, " + layout.key);
  const auto take = [&](std::span<const ScannedField> fields) {
    keys.push_back(fields[0].Integer());
    return keys.size() % kKeysAStep == 0;
  };
  while (rows.Run(take)) step(static_cast<std::int64_t>(keys.size()));
}

/// How many rows there are where none was deleted: room for them is not moved about as they are read.
std::size_t RowsByKeys(const Connection& connection, const LogLayout& layout) {
  constexpr std::int64_t kMost = 100'000'000;
  const std::string from = "(" + layout.key + ") FROM logData";
  Command ends(connection, "SELECT (SELECT min" + from + "), (SELECT max" + from + ")");
  ends.Next();
  const std::int64_t first = ends.Integer(0), last = ends.Integer(1);
  return first > 0 && last - first < kMost ? static_cast<std::size_t>(last - first + 1) : 0;
}

}  // namespace

std::vector<std::int64_t> KeysByIndex(Connection& connection, const LogLayout& layout, const Step& step) {
  Keys keys;
  keys.reserve(RowsByKeys(connection, layout));
  const auto told = [&] { step(static_cast<std::int64_t>(keys.size())); };
  if (KeysFromIndex(connection, kLogData, {"Date", "Time"}, keys, told)) return keys;
  keys.clear();
  ReadKeys(connection, layout, keys, step);
  return keys;
}

}  // namespace velk
