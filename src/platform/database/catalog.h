#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/database/connection.h"

namespace velk {

/// Declared types of columns.
namespace column_type {
inline constexpr const char* kDate = "DATE";  ///< a date, a time of day or both, in days
inline constexpr const char* kDouble = "DOUBLE";
inline constexpr const char* kInteger = "INTEGER";
inline constexpr const char* kSmallInteger = "SMALLINT";
inline constexpr const char* kText50 = "VARCHAR(50)";
inline constexpr const char* kLongText = "LONGTEXT";
}  // namespace column_type

struct Column {
  std::string name;
  std::string type;  ///< as declared
};

struct Table {
  std::string name;
  std::vector<Column> columns;
  /// The column that numbers the rows, one above the highest that stands, and is the primary key; empty where there is
  /// none.
  std::string identity = {};
};

/// Whether two names mean the same table or column: ASCII letters are compared without case.
bool SameName(const std::string& a, const std::string& b);

/// The name, as it stands in a statement, of the key that the engine finds a row of a table by: the identity, or the
/// engine's own where there is none. Empty where columns have taken all names of it.
std::string KeyOf(const Table& table);

/// The tables of a database file.
class Catalog {
 public:
  explicit Catalog(Connection& connection) : connection_(connection) {}

  /// A table by its name, in any case; nothing where there is none.
  std::optional<Table> Find(const std::string& name) const;
  /// Creates a table. Raises where one of that name stands or two of its columns differ only in case.
  void Append(const Table& table);
  /// Creates an index over columns of a table, in their order.
  void AppendIndex(const std::string& name, const std::string& table, const std::vector<std::string>& columns);
  /// The name of an index that begins with these columns of a table, and has all of its rows; empty where there is
  /// none.
  std::string IndexOver(const std::string& table, const std::vector<std::string>& columns) const;

 private:
  Connection& connection_;
};

}  // namespace velk
