#include "log/row_edits.h"

#include "base/errors.h"
#include "platform/database/catalog.h"
#include "platform/files/file_errors.h"

namespace velk {

namespace {

Table TableOf(Connection& connection, const std::string& name) {
  if (auto table = Catalog(connection).Find(name)) return *std::move(table);
  throw RuntimeError(ErrorNumber::NoSuchTable,
                     FileErrorText(ErrorNumber::NoSuchTable, connection.Path() + " (" + name + ")"));
}

}  // namespace

DeletedRow DeleteRow(Connection& connection, const std::string& table, std::int64_t key) {
  const std::string keyColumn = KeyOf(TableOf(connection, table));
  Transaction transaction(connection);
  DeletedRow row{table, key, {}};
  Command select(connection, "SELECT * FROM " + QuoteName(table) + " WHERE " + keyColumn + " = ?");
  select.Bind(1, key);
  if (!select.Next()) throw RuntimeError(ErrorNumber::NoCurrentRecord);
  for (int i = 0; i < select.ColumnCount(); ++i) row.fields.push_back(select.Field(i));
  select.Reset();
  Command remove(connection, "DELETE FROM " + QuoteName(table) + " WHERE " + keyColumn + " = ?");
  remove.Bind(1, key).Execute();
  transaction.Commit();
  return row;
}

void RestoreRow(Connection& connection, const DeletedRow& row) {
  const Table table = TableOf(connection, row.table);
  // The identity is a column, and comes along with the others; the engine's own key has to be named.
  const bool isNamed = table.identity.empty();
  std::string columns = isNamed ? KeyOf(table) : std::string();
  std::string marks = isNamed ? "?" : "";
  for (const Column& column : table.columns) {
    columns += (columns.empty() ? "" : ", ") + QuoteName(column.name);
    marks += marks.empty() ? "?" : ", ?";
  }
  Command insert(connection, "INSERT INTO " + QuoteName(row.table) + " (" + columns + ") VALUES (" + marks + ")");
  int index = 0;
  if (isNamed) insert.Bind(++index, row.key);
  for (const FieldValue& field : row.fields) insert.Bind(++index, field);
  insert.Execute();
}

}  // namespace velk
