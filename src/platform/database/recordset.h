#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/database/catalog.h"
#include "platform/database/command.h"
#include "platform/database/connection.h"

namespace velk {

/// The rows of one table in the order of their keys. The keys are read once, when the recordset is first moved or
/// counted; each row is read by its key when it becomes the present one. A recordset that only adds rows reads nothing.
/// It keeps its connection open, and no statement is left running between calls.
class Recordset {
 public:
  /// Raises NoSuchTable.
  Recordset(std::shared_ptr<Connection> connection, const std::string& table);

  // Fields go by their position, counted from 0.
  int FieldCount() const { return static_cast<int>(table_.columns.size()); }
  const std::string& FieldName(int field) const;
  /// A field by its name, in any case (ASCII); -1 where there is none.
  int FieldIndex(const std::string& name) const;

  /// Rows there are, those that were added here included.
  std::int64_t Count();
  /// Number of the present row, from 1; 0 where there is none.
  std::int64_t Position() const { return EndOfFile() ? 0 : *position_ + 1; }
  /// No present row: behind the last one, or not yet moved to any.
  bool EndOfFile() const { return !position_.has_value() || *position_ >= static_cast<std::int64_t>(keys_.size()); }

  /// Each takes the recordset to a row, or to the end of file where there is no such row.
  void MoveFirst() { MoveTo(1); }
  void MoveLast() { MoveTo(Count()); }
  void MoveNext();
  void MoveTo(std::int64_t position);

  /// A field of the present row. Raises NoCurrentRecord, SubscriptOutOfRange.
  FieldValue Field(int field);

  /// Starts a new row, all Null; what was set before and not updated is dropped.
  void AddNew();
  /// Sets a field of the new row, or else of the present one.
  void SetField(int field, FieldValue value);
  /// Writes the new row, which becomes the last one and not the present one, or the changes of the present row. Nothing
  /// is written where it fails.
  void Update();

 private:
  struct Change {
    int field;
    FieldValue value;
  };

  std::string KeyColumn() const;
  void ReadKeys();
  void Insert();
  void WriteChanges();
  void CheckField(int field) const;
  std::int64_t PresentKey() const;

  std::shared_ptr<Connection> connection_;
  Table table_;
  std::string key_;
  bool keysRead_ = false;
  std::vector<std::int64_t> keys_;
  std::optional<std::int64_t> position_;
  std::optional<std::vector<FieldValue>> row_;  ///< the present row, once read
  bool adding_ = false;
  std::vector<FieldValue> newRow_;
  std::vector<Change> changes_;
  std::unique_ptr<Command> insert_;
  std::unique_ptr<Command> select_;
};

}  // namespace velk
