#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/database/command.h"
#include "platform/database/connection.h"

namespace velk {

/// A row that was deleted, whole.
struct DeletedRow {
  std::string table;
  std::int64_t key = 0;
  std::vector<FieldValue> fields;
};

/// Deletes the row of a key. Raises NoSuchTable, and NoCurrentRecord where the row is gone.
DeletedRow DeleteRow(Connection& connection, const std::string& table, std::int64_t key);

/// Puts a row back under its key, or, where another row has taken that meanwhile, under a new one. Gives the key.
/// Raises NoSuchTable.
std::int64_t RestoreRow(Connection& connection, const DeletedRow& row);

}  // namespace velk
