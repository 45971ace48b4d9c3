#include "log/log_check.h"

#include <algorithm>
#include <filesystem>
#include <limits>
#include <vector>

#include "base/errors.h"
#include "log/log_layout.h"
#include "log/log_reader.h"
#include "log/log_schema.h"
#include "platform/database/command.h"

namespace velk {

namespace {

/// The engine's own check can't be interrupted: 16 MiB take it a tenth of a second.
constexpr std::uintmax_t kCheckedAtOnce = std::uintmax_t{16} << 20;
constexpr std::int64_t kMostTicks = 1000;
constexpr int kPageOfRows = 256;
constexpr int kRowsCounted = 4096;  ///< at a time, in a millisecond

bool MeansDamage(const RuntimeError& error) {
  return error.Number() == ErrorNumber::Database || error.Number() == ErrorNumber::NotADatabase ||
         error.Number() == ErrorNumber::DeviceIOError;
}

/// The engine's check of a table, or of the whole file.
bool PassesCheck(const std::string& path, const std::string& table) {
  const auto connection = Connection::Open(path, OpenMode::ReadOnly);
  if (!table.empty() && !Catalog(*connection).Find(table)) return true;
  Command check(*connection, "PRAGMA quick_check" + (table.empty() ? "" : "(" + QuoteName(table) + ")"));
  return check.Next() && check.Text(0) == "ok";
}

/// Those behind `last`, which becomes the last of them; how many there are, kRowsCounted at most.
int CountOn(Connection& connection, const LogLayout& layout, std::vector<FieldValue>& last) {
  const std::string columns = "Date, Time, " + layout.key;
  Command page(connection, "SELECT " + columns + " FROM logData INDEXED BY " + layout.index +
                               (last.empty() ? "" : " WHERE (" + columns + ") > (?, ?, ?)") + " ORDER BY " + columns +
                               " LIMIT " + std::to_string(kRowsCounted));
  for (std::size_t i = 0; i < last.size(); ++i) page.Bind(static_cast<int>(i) + 1, last[i]);
  int rows = 0;
  for (; page.Next(); ++rows) last = {page.Field(0), page.Field(1), page.Field(2)};
  return rows;
}

/// Rows as the index over Date and Time counts them, which tells where the table itself ends early; 0 without an index.
/// Rows without a time may be left out.
std::int64_t IndexedRows(const std::string& path, const CheckStep& step) {
  std::int64_t counted = 0;
  std::vector<FieldValue> last;
  for (int rows = kRowsCounted; rows == kRowsCounted; counted += rows) {
    const auto connection = Connection::Open(path, OpenMode::ReadOnly);
    const LogLayout layout = ReadLogLayout(*connection);
    if (layout.index.empty()) return 0;
    rows = CountOn(*connection, layout, last);
    step(0, 0);
  }
  return counted;
}

/// No connection is kept from page to page: what is read may be recorded to meanwhile.
bool ReadsAllRows(const std::string& path, const CheckStep& step) {
  const std::int64_t counted = IndexedRows(path, step);
  LogReader reader(path);
  reader.Choose({});
  const auto of = static_cast<double>(std::max(counted, reader.Tally(1)));
  const auto rows = reader.Rows();
  std::int64_t read = 0;
  for (bool there = rows->First(); there; there = rows->Next()) step(static_cast<double>(++read), of);
  return read >= counted;
}

}  // namespace

bool IsWholeLog(const std::string& path, const CheckStep& step) {
  try {
    std::error_code unknown;
    if (std::filesystem::file_size(path, unknown) <= kCheckedAtOnce) return PassesCheck(path, {});
    return ReadsAllRows(path, step) && PassesCheck(path, kGraphSettings) && PassesCheck(path, kSummaryReport);
  } catch (const RuntimeError& error) {
    if (!MeansDamage(error)) throw;
    return false;
  }
}

bool CanReadBack(const JobRows& rows, Clock& clock) {
  const std::int64_t began = clock.Ticks();
  try {
    LogReader reader(rows.path);
    KeySpan rest{rows.after + 1, std::numeric_limits<std::int64_t>::max()};
    for (std::int64_t read = 0; read < rows.count && clock.Ticks() - began < kMostTicks;) {
      const auto page = reader.Page({}, rest, kPageOfRows);
      if (page.empty()) return false;
      read += static_cast<std::int64_t>(page.size());
      rest.first = page.back().key + 1;
    }
    return true;
  } catch (const RuntimeError& error) {
    return !MeansDamage(error);
  }
}

}  // namespace velk
