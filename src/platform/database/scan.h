#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "platform/database/command.h"
#include "platform/database/connection.h"

struct sqlite3_value;

namespace velk {

/// A field of a row in the hands of a Scan; each call as Command has it.
class ScannedField {
 public:
  explicit ScannedField(sqlite3_value* value) : value_(value) {}

  double Number() const;
  std::int64_t Integer() const;
  FieldValue Value() const;

 private:
  sqlite3_value* value_;
};

/// Goes through rows in half of the time that a Command takes: the engine calls back for each row where it stands, and
/// hands out no results. One a connection, which it doesn't outlive.
class Scan {
 public:
  /// Takes the fields of a row, which last for the call; true where it has seen enough and goes on later. Throws
  /// nothing.
  using Visit = std::function<bool(std::span<const ScannedField> fields)>;
  /// As many fields as a row can be asked for.
  static constexpr std::size_t kMostFields = 100;

  /// A query whose condition ends with "AND Visit(field, ...)".
  Scan(const Connection& connection, const std::string& sql);
  Scan(const Scan&) = delete;
  Scan& operator=(const Scan&) = delete;

  /// Values of the statement's "?", counted from 1. They stay from run to run.
  Scan& Bind(int index, const FieldValue& value);
  /// Visits rows until the visitor has enough: true then, and the next run goes on behind that row. False behind the
  /// last row. Raises as told at Connection.
  bool Run(const Visit& visit);
  /// Lets go of the file; the next run begins anew.
  void Reset() { rows_.Reset(); }

 private:
  const Connection& Registered(const Connection& connection);

  Command rows_;
  const Visit* visit_ = nullptr;
};

}  // namespace velk
