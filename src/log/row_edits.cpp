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

bool IsTaken(Connection& connection, const std::string& table, const std::string& keyColumn, std::int64_t key) {
  Command select(connection, "SELECT 1 FROM " + QuoteName(table) + " WHERE " + keyColumn + " = ?");
  select.Bind(1, key);
  const bool taken = select.Next();
  select.Reset();
  return taken;
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

std::int64_t RestoreRow(Connection& connection, const DeletedRow& row) {
  const Table table = TableOf(connection, row.table);
  const std::string key = KeyOf(table);
  Transaction transaction(connection);
  std::string columns, marks;
  std::vector<FieldValue> values;
  const auto add = [&](const std::string& column, const FieldValue& value) {
    columns += (columns.empty() ? "" : ", ") + column;
    marks += marks.empty() ? "?" : ", ?";
    values.push_back(value);
  };
  if (!IsTaken(connection, row.table, key, row.key)) add(key, row.key);
  for (std::size_t i = 0; i < table.columns.size(); ++i)
    if (table.columns[i].name != table.identity) add(QuoteName(table.columns[i].name), row.fields.at(i));
  Command insert(connection, "INSERT INTO " + QuoteName(row.table) + " (" + columns + ") VALUES (" + marks + ")");
  for (std::size_t i = 0; i < values.size(); ++i) insert.Bind(static_cast<int>(i) + 1, values[i]);
  insert.Execute();
  Command restored(connection, "SELECT last_insert_rowid()");
  restored.Next();
  const std::int64_t given = restored.Integer(0);
  restored.Reset();
  transaction.Commit();
  return given;
}

}  // namespace velk
