#include "platform/database/scan.h"

#include <sqlite3.h>

#include <limits>
#include <type_traits>

namespace velk {

namespace {

// The engine's own array of fields is handed on as it is.
static_assert(sizeof(ScannedField) == sizeof(sqlite3_value*) && std::is_standard_layout_v<ScannedField>);

}  // namespace

double ScannedField::Number() const {
  const int type = sqlite3_value_type(value_);
  if (type != SQLITE_FLOAT && type != SQLITE_INTEGER) return std::numeric_limits<double>::quiet_NaN();
  return sqlite3_value_double(value_);
}

std::int64_t ScannedField::Integer() const {
  return sqlite3_value_int64(value_);
}

FieldValue ScannedField::Value() const {
  switch (sqlite3_value_type(value_)) {
    case SQLITE_INTEGER:
      return FieldValue(std::in_place_type<std::int64_t>, sqlite3_value_int64(value_));
    case SQLITE_FLOAT:
      return sqlite3_value_double(value_);
    case SQLITE_NULL:
      return std::monostate{};
    default:
      break;
  }
  const unsigned char* bytes = sqlite3_value_text(value_);
  const int size = sqlite3_value_bytes(value_);
  return bytes == nullptr ? std::string() : std::string(bytes, bytes + size);
}

Scan::Scan(const Connection& connection, const std::string& sql) : rows_(Registered(connection), sql) {
}

/// The function has to be there before the statement is.
const Connection& Scan::Registered(const Connection& connection) {
  const auto call = [](sqlite3_context* context, int count, sqlite3_value** values) {
    const auto& scan = *static_cast<const Scan*>(sqlite3_user_data(context));
    const auto* fields = reinterpret_cast<const ScannedField*>(values);
    sqlite3_result_int(context, (*scan.visit_)({fields, static_cast<std::size_t>(count)}) ? 1 : 0);
  };
  const int code = sqlite3_create_function_v2(connection.Handle(), "Visit", -1, SQLITE_UTF8 | SQLITE_DIRECTONLY, this,
                                              call, nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) connection.Raise(code);
  return connection;
}

Scan& Scan::Bind(int index, const FieldValue& value) {
  rows_.Bind(index, value);
  return *this;
}

bool Scan::Run(const Visit& visit) {
  visit_ = &visit;
  return rows_.Next();
}

}  // namespace velk
