#include "platform/database/catalog.h"

#include <sqlite3.h>

#include <algorithm>

#include "platform/database/command.h"

namespace velk {

bool SameName(const std::string& a, const std::string& b) {
  return sqlite3_stricmp(a.c_str(), b.c_str()) == 0;
}

std::string KeyOf(const Table& table) {
  if (!table.identity.empty()) return QuoteName(table.identity);
  for (const char* name : {"_rowid_", "rowid", "oid"}) {
    const auto isTaken = [&](const Column& column) { return SameName(column.name, name); };
    if (std::none_of(table.columns.begin(), table.columns.end(), isTaken)) return name;
  }
  return {};
}

std::optional<Table> Catalog::Find(const std::string& name) const {
  Command named(connection_, "SELECT name FROM sqlite_schema WHERE type='table' AND name=? COLLATE NOCASE");
  named.Bind(1, name);
  if (!named.Next()) return std::nullopt;
  Table table{named.Text(0), {}};
  named.Reset();

  int keys = 0;
  Command described(connection_, "SELECT name, type, pk FROM pragma_table_info(?)");
  described.Bind(1, table.name);
  while (described.Next()) {
    table.columns.push_back({described.Text(0), described.Text(1)});
    if (described.Integer(2) == 0) continue;
    ++keys;
    if (table.columns.back().type == column_type::kInteger) table.identity = table.columns.back().name;
  }
  if (keys != 1) table.identity.clear();
  return table;
}

void Catalog::Append(const Table& table) {
  std::string list;
  for (const Column& column : table.columns) list += QuoteName(column.name) + " " + column.type + ", ";
  if (table.identity.empty())
    list.resize(list.size() - 2);
  else
    list += "CONSTRAINT PrimaryKey PRIMARY KEY (" + QuoteName(table.identity) + ")";
  connection_.Execute("CREATE TABLE " + QuoteName(table.name) + " (" + list + ")");
}

void Catalog::AppendIndex(const std::string& name, const std::string& table, const std::vector<std::string>& columns) {
  std::string list;
  for (const std::string& column : columns) (list += list.empty() ? "" : ", ") += QuoteName(column);
  connection_.Execute("CREATE INDEX " + QuoteName(name) + " ON " + QuoteName(table) + " (" + list + ")");
}

std::string Catalog::IndexOver(const std::string& table, const std::vector<std::string>& columns) const {
  Command indexes(connection_, "SELECT name FROM pragma_index_list(?) WHERE partial = 0");
  indexes.Bind(1, table);
  while (indexes.Next()) {
    const std::string name = indexes.Text(0);
    Command described(connection_,
                      "SELECT name, \"desc\" = 0 AND coll = 'BINARY' FROM pragma_index_xinfo(?) ORDER BY seqno");
    described.Bind(1, name);
    const auto isNext = [&](const std::string& column) {
      return described.Next() && SameName(described.Text(0), column) && described.Integer(1) == 1;
    };
    if (std::all_of(columns.begin(), columns.end(), isNext)) return name;
  }
  return {};
}

}  // namespace velk
