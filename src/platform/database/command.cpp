#include "platform/database/command.h"

#include <sqlite3.h>

#include <limits>

namespace velk {

Command::Command(const Connection& connection, const std::string& sql) : connection_(connection) {
  const int code = sqlite3_prepare_v3(connection.Handle(), sql.c_str(), static_cast<int>(sql.size()) + 1,
                                      SQLITE_PREPARE_PERSISTENT, &statement_, nullptr);
  if (code != SQLITE_OK) connection.Raise(code);
}

Command::~Command() {
  sqlite3_finalize(statement_);
}

Command& Command::Bind(int index, const FieldValue& value) {
  struct Binder {
    sqlite3_stmt* statement;
    int index;
    int operator()(std::monostate) const { return sqlite3_bind_null(statement, index); }
    int operator()(std::int64_t number) const { return sqlite3_bind_int64(statement, index, number); }
    int operator()(double number) const { return sqlite3_bind_double(statement, index, number); }
    int operator()(const std::string& text) const {
      return sqlite3_bind_text64(statement, index, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    }
  };
  const int code = std::visit(Binder{statement_, index}, value);
  if (code != SQLITE_OK) connection_.Raise(code);
  return *this;
}

Command& Command::BindNumber(int index, double value) {
  const int code = sqlite3_bind_double(statement_, index, value);
  if (code != SQLITE_OK) connection_.Raise(code);
  return *this;
}

bool Command::Next() {
  const int code = sqlite3_step(statement_);
  if (code == SQLITE_ROW) return true;
  if (code == SQLITE_DONE) {
    Reset();
    return false;
  }
  try {
    connection_.Raise(code);
  } catch (...) {
    Reset();
    throw;
  }
}

void Command::Execute() {
  if (Next()) Reset();
}

void Command::Reset() {
  sqlite3_reset(statement_);
}

int Command::ColumnCount() const {
  return sqlite3_column_count(statement_);
}

FieldValue Command::Field(int column) const {
  switch (sqlite3_column_type(statement_, column)) {
    case SQLITE_INTEGER:
      return FieldValue(std::in_place_type<std::int64_t>, sqlite3_column_int64(statement_, column));
    case SQLITE_FLOAT:
      return sqlite3_column_double(statement_, column);
    case SQLITE_NULL:
      return std::monostate{};
    default:
      return Text(column);
  }
}

std::int64_t Command::Integer(int column) const {
  return sqlite3_column_int64(statement_, column);
}

std::string Command::Text(int column) const {
  const unsigned char* bytes = sqlite3_column_text(statement_, column);
  const int size = sqlite3_column_bytes(statement_, column);
  return bytes == nullptr ? std::string() : std::string(bytes, bytes + size);
}

double Command::Number(int column) const {
  // One look into the row for type and value: searches read 64 of them a row.
  sqlite3_value* value = sqlite3_column_value(statement_, column);
  const int type = sqlite3_value_type(value);
  if (type != SQLITE_FLOAT && type != SQLITE_INTEGER) return std::numeric_limits<double>::quiet_NaN();
  return sqlite3_value_double(value);
}

}  // namespace velk
