#include "log/log_layout.h"

#include <algorithm>

#include "base/errors.h"
#include "log/log_schema.h"
#include "log/texts.h"
#include "platform/database/catalog.h"
#include "platform/files/file_errors.h"

namespace velk {

namespace {

bool HasColumn(const Table& table, const char* name) {
  return std::any_of(table.columns.begin(), table.columns.end(),
                     [&](const Column& column) { return SameName(column.name, name); });
}

}  // namespace

LogLayout ReadLogLayout(Connection& connection) {
  const Catalog catalog(connection);
  const auto table = catalog.Find(kLogData);
  if (!table)
    throw RuntimeError(ErrorNumber::NoSuchTable,
                       FileErrorText(ErrorNumber::NoSuchTable, connection.Path() + " (" + kLogData + ")"));
  LogLayout layout;
  layout.key = KeyOf(*table);
  for (const char* name : {"Date", "Time"})
    if (!HasColumn(*table, name) || layout.key.empty())
      throw RuntimeError(ErrorNumber::Database, text::NoColumn + (name + (": " + connection.Path())));
  const std::string index = catalog.IndexOver(table->name, {"Date", "Time"});
  if (!index.empty()) layout.index = QuoteName(index);
  layout.hasId = HasColumn(*table, "ID");
  for (const Column& column : table->columns) layout.columns.push_back(column.name);
  for (const Column& column : table->columns)
    if (!SameName(column.name, "ID") && !SameName(column.name, "Date") && !SameName(column.name, "Time"))
      layout.channels.push_back(column.name);
  return layout;
}

}  // namespace velk
