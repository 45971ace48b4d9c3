#include "log/key_order.h"

#include <atomic>
#include <chrono>
#include <future>
#include <limits>
#include <span>

#include "base/scope.h"
#include "platform/database/command.h"
#include "platform/database/scan.h"

namespace velk {

namespace {

using Keys = std::vector<std::int64_t>;
using Step = std::function<void(std::int64_t read)>;

constexpr std::size_t kKeysAStep = 1024;
constexpr std::chrono::milliseconds kWaitAtOnce(5);

/// The keys of the rows that meet a condition, behind those that are there.
void ReadKeys(const Connection& connection, const LogLayout& layout, const std::string& condition, Keys& keys,
              const Step& step) {
  Scan rows(connection, "SELECT 1 FROM logData INDEXED BY " + layout.index + " WHERE " + condition + "Visit(" +
                            layout.key + ") ORDER BY Date, Time, " + layout.key);
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

/// A date between the first and the last one, as it stands in a statement; empty where there is none.
std::string MiddleDate(const Connection& connection, const LogLayout& layout) {
  const std::string from = "(Date) FROM logData INDEXED BY " + layout.index;
  Command ends(connection, "SELECT (SELECT min" + from + "), (SELECT max" + from + ")");
  ends.Next();
  const double first = ends.Number(0), last = ends.Number(1);
  constexpr double kFarthest = std::numeric_limits<std::int32_t>::max();
  if (!(first > 0 && first < last && last < kFarthest)) return {};
  // A half is there for two days that follow each other.
  return std::to_string(static_cast<std::int64_t>(first + last)) + " / 2.0";
}

}  // namespace

std::vector<std::int64_t> KeysByIndex(const std::shared_ptr<Connection>& connection, const LogLayout& layout,
                                      const Step& step) {
  const std::size_t rows = RowsByKeys(*connection, layout);
  Keys keys;
  keys.reserve(rows);
  const std::string middle = connection->IsRecordedTo() ? std::string() : MiddleDate(*connection, layout);
  if (middle.empty()) {
    ReadKeys(*connection, layout, "", keys, step);
    return keys;
  }
  std::atomic<bool> isLeft = false;
  std::atomic<std::int64_t> readBehind = 0;
  std::future<Keys> behind = std::async(std::launch::async, [&, path = connection->Path()] {
    struct Left {};
    Keys later;
    later.reserve(rows);
    const auto own = Connection::Open(path, OpenMode::ReadOnly);
    const auto count = [&](std::int64_t read) {
      readBehind = read;
      if (isLeft) throw Left{};
    };
    try {
      ReadKeys(*own, layout, "Date >= " + middle + " AND ", later, count);
    } catch (const Left&) {
      later.clear();
    }
    return later;
  });
  const OnLeaving left([&] { isLeft = true; });
  const Step both = [&](std::int64_t read) { step(read + readBehind); };
  ReadKeys(*connection, layout, "Date IS NULL AND ", keys, both);
  ReadKeys(*connection, layout, "Date < " + middle + " AND ", keys, both);
  while (behind.wait_for(kWaitAtOnce) != std::future_status::ready) both(static_cast<std::int64_t>(keys.size()));
  const Keys later = behind.get();
  keys.insert(keys.end(), later.begin(), later.end());
  return keys;
}

}  // namespace velk
