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

/// Which rows of a table, in which order.
struct RowQuery {
  std::string where = {};    ///< a condition; empty for all rows
  std::string orderBy = {};  ///< columns; rows that are equal by them, or all, stand in the order of their keys
  std::vector<FieldValue> values = {};  ///< of the "?" in both
};

/// The rows of one table. Their keys are read once, when the recordset is first moved or counted; each row is read by
/// its key when a field of it is asked for. A recordset that only adds rows reads nothing. It keeps its connection
/// open, and no statement is left running between calls.
///
/// A position is on a row, in front of the first (BeginningOfFile), behind the last (EndOfFile), or where a row was
/// deleted, between its neighbours. Until it is moved it is in front of and behind all rows.
class Recordset {
 public:
  /// Raises NoSuchTable.
  Recordset(std::shared_ptr<Connection> connection, const std::string& table, RowQuery query = {});

  // Fields go by their position, counted from 0.
  int FieldCount() const { return static_cast<int>(table_.columns.size()); }
  const std::string& FieldName(int field) const;
  /// A field by its name, in any case (ASCII); -1 where there is none.
  int FieldIndex(const std::string& name) const;

  /// Rows there are: those that were added here included, wherever the query would have them, those deleted here not.
  std::int64_t Count();
  /// Number of the present row, from 1; 0 where there is none.
  std::int64_t Position() const { return place_ == Place::Row ? index_ + 1 : 0; }
  bool BeginningOfFile() const { return place_ == Place::Nowhere || place_ == Place::Begin; }
  bool EndOfFile() const { return place_ == Place::Nowhere || place_ == Place::End; }

  /// The first, the last, or the row of that number; without such a row, Nowhere in an empty recordset and else the
  /// end of file.
  void MoveFirst() { MoveTo(1); }
  void MoveLast() { MoveTo(Count()); }
  void MoveTo(std::int64_t position);
  /// A step from where it is; beyond the last row to the end of file, before the first to the beginning. Raises
  /// NoCurrentRecord where it stands there already.
  void MoveNext();
  void MovePrevious();
  /// Drops the keys, to be read anew, by the same or by another query; the present row is left.
  void Requery() { Requery(query_); }
  void Requery(RowQuery query);

  /// A field of the present row. Raises NoCurrentRecord, SubscriptOutOfRange.
  FieldValue Field(int field);

  /// Starts a new row, all Null; what was set before and not updated is dropped.
  void AddNew();
  /// Sets a field of the new row, or else of the present one.
  void SetField(int field, FieldValue value);
  /// Writes the new row, which becomes the last one and not the present one, or the changes of the present row. Nothing
  /// is written where it fails.
  void Update();
  /// Deletes the present row. MoveNext then goes to the row behind it, MovePrevious to the one before. Raises
  /// NoCurrentRecord.
  void Delete();

 private:
  enum class Place { Nowhere, Begin, Row, Deleted, End };

  struct Change {
    int field;
    FieldValue value;
  };

  std::string KeyColumn() const;
  void ReadKeys();
  void GoTo(std::int64_t index);
  void LeaveRow();
  void Insert();
  void WriteChanges();
  void CheckField(int field) const;
  std::int64_t PresentKey() const;

  std::shared_ptr<Connection> connection_;
  Table table_;
  std::string key_;
  RowQuery query_;
  bool keysRead_ = false;
  std::vector<std::int64_t> keys_;
  Place place_ = Place::Nowhere;
  std::int64_t index_ = 0;                      ///< of the row; where it was deleted, of the one behind it
  std::optional<std::vector<FieldValue>> row_;  ///< the present row, once read
  bool adding_ = false;
  std::vector<FieldValue> newRow_;
  std::vector<Change> changes_;
  std::unique_ptr<Command> insert_;
  std::unique_ptr<Command> select_;
};

}  // namespace velk
