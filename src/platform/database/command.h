#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "platform/database/connection.h"

struct sqlite3_stmt;

namespace velk {

/// A field of a row: Null, a whole number, a 64-bit float or UTF-8 text.
using FieldValue = std::variant<std::monostate, std::int64_t, double, std::string>;

/// One prepared statement. It does not outlive its connection. Failures raise as told at Connection.
class Command {
 public:
  Command(const Connection& connection, const std::string& sql);
  ~Command();
  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;

  /// Values of the statement's "?", counted from 1. They stay from run to run.
  Command& Bind(int index, const FieldValue& value);

  /// A number, without the way round by a field: imports bind tens of millions of them.
  Command& BindNumber(int index, double value);

  /// Goes to the next row; false behind the last one, and the statement is reset.
  bool Next();
  /// Runs a statement that gives no rows, and resets it, also where it fails.
  void Execute();
  /// Lets go of the file: an unfinished read keeps the write-ahead log growing.
  void Reset();

  // Columns of the present row, counted from 0.
  int ColumnCount() const;
  FieldValue Field(int column) const;
  std::int64_t Integer(int column) const;
  std::string Text(int column) const;
  /// A column as a 64-bit float: NaN for Null and for what is no number.
  double Number(int column) const;

 private:
  const Connection& connection_;
  sqlite3_stmt* statement_ = nullptr;
};

}  // namespace velk
