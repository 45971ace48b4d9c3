#include "log/log_check.h"

#include <algorithm>
#include <filesystem>
#include <limits>

#include "base/errors.h"
#include "log/log_reader.h"
#include "log/log_schema.h"
#include "platform/database/command.h"

namespace velk {

namespace {

/// The engine's own check can't be interrupted: 16 MiB take it a tenth of a second.
constexpr std::uintmax_t kCheckedAtOnce = std::uintmax_t{16} << 20;
constexpr std::int64_t kMostTicks = 1000;
constexpr int kPageOfRows = 256;

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

/// Rows as the smallest index counts them; one that can't be read raises.
std::int64_t CountedRows(const std::string& path) {
  const auto connection = Connection::Open(path, OpenMode::ReadOnly);
  Command count(*connection, "SELECT count(*) FROM logData");
  return count.Next() ? count.Integer(0) : 0;
}

/// No connection is kept from page to page: what is read may be recorded to meanwhile.
bool ReadsAllRows(const std::string& path, const CheckStep& step) {
  const auto counted = static_cast<double>(CountedRows(path));
  LogReader reader(path);
  reader.Choose({});
  const auto rows = reader.Rows();
  double read = 0;
  for (bool there = rows->First(); there; there = rows->Next()) step(++read, counted);
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
