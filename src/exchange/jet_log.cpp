#include "exchange/jet_log.h"

#include <cmath>

#include "base/dates.h"
#include "base/errors.h"
#include "base/numbers.h"
#include "base/text.h"
#include "exchange/texts.h"
#include "log/log_schema.h"
#include "platform/database/catalog.h"
#include "platform/database/jet_copy.h"
#include "platform/files/disk_room.h"
#include "platform/files/file_errors.h"
#include "platform/files/new_file.h"

namespace velk {

namespace {

enum JetType { kBool = 1, kByte, kInt, kLongInt, kMoney, kFloat, kDouble, kDateTime, kText = 10, kMemo = 12 };

const char* DeclaredType(int type) {
  switch (type) {
    case kDateTime:
      return column_type::kDate;
    case kBool:
    case kByte:
    case kInt:
      return column_type::kSmallInteger;
    case kLongInt:
      return column_type::kInteger;
    case kText:
      return column_type::kText50;
    case kMemo:
      return column_type::kLongText;
    default:
      return column_type::kDouble;
  }
}

Table TableOf(const JetTable& foreign, const char* name) {
  Table table{name, {}};
  for (const JetColumn& column : foreign.columns) {
    table.columns.push_back({column.name, DeclaredType(column.type)});
    if (SameName(name, kLogData) && SameName(column.name, "ID") && column.type == kLongInt)
      table.identity = column.name;
  }
  return table;
}

/// A time that was computed another way, with the bits that ours have.
double WithOurBits(double value) {
  constexpr double kSecondsOfADay = 86400;
  constexpr double kGrain = 5e-4;
  if (!IsDateTime(value)) return value;
  const double seconds = (value - std::floor(value)) * kSecondsOfADay;
  const double whole = std::round(seconds);
  if (std::abs(seconds - whole) > kGrain || whole >= kSecondsOfADay || value < 0) return value;
  const auto number = static_cast<int>(whole);
  return std::floor(value) + TimeOfDay(number / 3600, number / 60 % 60, number % 60);
}

/// What no sound file holds, such as one number of two rows.
[[noreturn]] void RaiseDamaged(const std::string& path) {
  throw RuntimeError(ErrorNumber::NotADatabase, text::ForeignUnreadable + path);
}

/// Gives how many rows of it could not be read.
std::int64_t CopyTable(Connection& log, JetReader& reader, const char* name) {
  JetTable foreign;
  if (!reader.NextTable(foreign)) return 0;
  const Table table = TableOf(foreign, name);
  Catalog(log).Append(table);
  std::string marks;
  for (std::size_t i = 0; i < table.columns.size(); ++i) marks += i == 0 ? "?" : ",?";
  Command insert(log, "INSERT INTO " + QuoteName(name) + " VALUES (" + marks + ")");
  std::vector<FieldValue> cells;
  while (reader.NextRow(cells)) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
      auto* moment = foreign.columns[i].type == kDateTime ? std::get_if<double>(&cells[i]) : nullptr;
      if (moment) *moment = WithOurBits(*moment);
      insert.Bind(static_cast<int>(i) + 1, cells[i]);
    }
    insert.Execute();
  }
  return reader.Lost();
}

/// A copy notes by which code page its texts were read, in a number of the engine's that it makes no use of itself.
int CodePageNumber(const JetTools& tools) {
  return static_cast<int>(Val(Mid(tools.charset, 3)));
}

/// Whether a copy has the texts of its file. Those of version 3 are read by the language's code page.
bool HasTextsOf(const std::string& path, const std::string& copy, const JetTools& tools) {
  if (!IsJet3File(path)) return true;
  const auto log = Connection::Open(copy, OpenMode::ReadOnly);
  Command number(*log, "PRAGMA user_version");
  return number.Next() && number.Integer(0) == CodePageNumber(tools);
}

bool HasTable(const std::vector<JetTable>& tables, const char* name) {
  for (const JetTable& table : tables)
    if (SameName(table.name, name)) return true;
  return false;
}

}  // namespace

void PrepareLog(const std::string& path, const JetTools& tools, const Platform& platform) {
  if (!IsJetFile(path)) return;
  const std::string copy = JetCopyOf(path);
  if (FileExists(copy) && HasTextsOf(path, copy, tools)) return TouchJetCopy(copy);
  std::int64_t lost = 0;
  {
    LongTask task(platform.dialogs, platform.clock, text::ReadingForeignLog);
    task.Doing(path);
    lost = CopyJetLog(path, copy, tools, task);
  }
  ClearJetCopies(path);
  if (lost > 0)
    platform.dialogs.Message(
        {text::RowsLostBefore + std::to_string(lost) + "\n\n" + path, {}, Buttons::Ok, BoxIcon::Exclamation});
}

std::int64_t CopyJetLog(const std::string& path, const std::string& copy, const JetTools& tools, LongTask& task) {
  // Its values take about as many bytes here as there.
  const double size = FileBytes(path);
  const auto step = [&](double bytes) { task.Step(bytes, size); };
  std::vector<JetTable> tables;
  JetReader catalogue(tools, "tables", path, {}, step);
  for (JetTable table; catalogue.NextTable(table);) tables.push_back(table);
  if (!HasTable(tables, kLogData))
    throw RuntimeError(ErrorNumber::NoSuchTable, FileErrorText(ErrorNumber::NoSuchTable, path + " (" + kLogData + ")"));

  // Another program may be at the same.
  NewFile file(copy, NewFile::IfThere::Replace);
  std::int64_t lost = 0;
  {
    const auto log = Connection::Open(file.PartName(), OpenMode::CreateNew);
    log->Execute("PRAGMA page_size=16384; PRAGMA journal_mode=MEMORY; PRAGMA cache_size=-65536");
    Transaction transaction(*log);
    log->Execute("PRAGMA user_version=" + std::to_string(CodePageNumber(tools)));
    try {
      for (const char* name : {kLogData, kGraphSettings, kSummaryReport}) {
        if (!HasTable(tables, name)) continue;
        JetReader rows(tools, "rows", path, {name}, step);
        lost += CopyTable(*log, rows, name);
      }
      Catalog(*log).AppendIndex(kLogDataTimes, kLogData, {"Date", "Time"});
    } catch (const RuntimeError& error) {
      if (error.Number() == ErrorNumber::Database) RaiseDamaged(path);
      throw;
    }
    transaction.Commit();
  }
  file.Complete();
  return lost;
}

}  // namespace velk
