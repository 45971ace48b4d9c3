#include "platform/database/recordset.h"

#include <sqlite3.h>

#include <algorithm>

#include "base/errors.h"
#include "platform/files/file_errors.h"

namespace velk {

namespace {

Table FindTable(Connection& connection, const std::string& name) {
  if (auto table = Catalog(connection).Find(name)) return *std::move(table);
  const ErrorNumber number = ErrorNumber::NoSuchTable;
  throw RuntimeError(number, FileErrorText(number, connection.Path() + " (" + name + ")"));
}

}  // namespace

Recordset::Recordset(std::shared_ptr<Connection> connection, const std::string& table, RowQuery query)
    : connection_(std::move(connection)),
      table_(FindTable(*connection_, table)),
      key_(KeyColumn()),
      query_(std::move(query)) {
}

std::string Recordset::KeyColumn() const {
  if (std::string key = KeyOf(table_); !key.empty()) return key;
  throw RuntimeError(ErrorNumber::Database, FileErrorText(ErrorNumber::Database, connection_->Path()));
}

const std::string& Recordset::FieldName(int field) const {
  CheckField(field);
  return table_.columns[static_cast<std::size_t>(field)].name;
}

int Recordset::FieldIndex(const std::string& name) const {
  const auto found = std::find_if(table_.columns.begin(), table_.columns.end(),
                                  [&](const Column& column) { return SameName(column.name, name); });
  return found == table_.columns.end() ? -1 : static_cast<int>(found - table_.columns.begin());
}

std::int64_t Recordset::Count() {
  ReadKeys();
  return static_cast<std::int64_t>(keys_.size());
}

void Recordset::MoveTo(std::int64_t position) {
  ReadKeys();
  GoTo(position < 1 ? Count() : position - 1);
}

void Recordset::MoveNext() {
  if (EndOfFile()) throw RuntimeError(ErrorNumber::NoCurrentRecord);
  if (place_ == Place::Begin) return GoTo(0);
  GoTo(place_ == Place::Deleted ? index_ : index_ + 1);
}

void Recordset::MovePrevious() {
  if (BeginningOfFile()) throw RuntimeError(ErrorNumber::NoCurrentRecord);
  GoTo(place_ == Place::End ? Count() - 1 : index_ - 1);
}

void Recordset::GoTo(std::int64_t index) {
  LeaveRow();
  if (keys_.empty())
    place_ = Place::Nowhere;
  else
    place_ = index < 0 ? Place::Begin : index < Count() ? Place::Row : Place::End;
  index_ = index;
}

void Recordset::LeaveRow() {
  adding_ = false;
  changes_.clear();
  row_.reset();
}

void Recordset::Requery(RowQuery query) {
  LeaveRow();
  query_ = std::move(query);
  keysRead_ = false;
  keys_.clear();
  place_ = Place::Nowhere;
}

FieldValue Recordset::Field(int field) {
  CheckField(field);
  if (!row_) {
    if (!select_)
      select_ =
          std::make_unique<Command>(*connection_, "SELECT * FROM " + QuoteName(table_.name) + " WHERE " + key_ + "=?");
    select_->Bind(1, PresentKey());
    if (!select_->Next()) throw RuntimeError(ErrorNumber::NoCurrentRecord);
    std::vector<FieldValue> row;
    row.reserve(static_cast<std::size_t>(FieldCount()));
    for (int i = 0; i < FieldCount(); ++i) row.push_back(select_->Field(i));
    select_->Reset();
    row_ = std::move(row);
  }
  return (*row_)[static_cast<std::size_t>(field)];
}

void Recordset::AddNew() {
  adding_ = true;
  changes_.clear();
  newRow_.assign(table_.columns.size(), std::monostate{});
}

void Recordset::SetField(int field, FieldValue value) {
  CheckField(field);
  if (adding_) {
    newRow_[static_cast<std::size_t>(field)] = std::move(value);
    return;
  }
  PresentKey();
  changes_.push_back({field, std::move(value)});
}

void Recordset::Update() {
  if (adding_)
    Insert();
  else
    WriteChanges();
}

void Recordset::Insert() {
  if (!insert_) {
    std::string marks = "?";
    for (int i = 1; i < FieldCount(); ++i) marks += ",?";
    insert_ =
        std::make_unique<Command>(*connection_, "INSERT INTO " + QuoteName(table_.name) + " VALUES (" + marks + ")");
  }
  for (int i = 0; i < FieldCount(); ++i) insert_->Bind(i + 1, newRow_[static_cast<std::size_t>(i)]);
  insert_->Execute();
  adding_ = false;
  if (keysRead_) keys_.push_back(sqlite3_last_insert_rowid(connection_->Handle()));
}

void Recordset::WriteChanges() {
  const std::int64_t key = PresentKey();
  if (changes_.empty()) return;
  std::string list;
  for (const Change& change : changes_) list += (list.empty() ? "" : ", ") + QuoteName(FieldName(change.field)) + "=?";
  Command update(*connection_, "UPDATE " + QuoteName(table_.name) + " SET " + list + " WHERE " + key_ + "=?");
  int index = 0;
  for (const Change& change : changes_) update.Bind(++index, change.value);
  update.Bind(++index, key);
  update.Execute();
  changes_.clear();
  row_.reset();
}

void Recordset::Delete() {
  const std::int64_t key = PresentKey();
  Command remove(*connection_, "DELETE FROM " + QuoteName(table_.name) + " WHERE " + key_ + "=?");
  remove.Bind(1, key).Execute();
  if (sqlite3_changes(connection_->Handle()) == 0) throw RuntimeError(ErrorNumber::NoCurrentRecord);
  LeaveRow();
  keys_.erase(keys_.begin() + index_);
  place_ = Place::Deleted;
}

void Recordset::ReadKeys() {
  if (keysRead_) return;
  std::string sql = "SELECT " + key_ + " FROM " + QuoteName(table_.name);
  if (!query_.where.empty()) sql += " WHERE " + query_.where;
  sql += " ORDER BY " + (query_.orderBy.empty() ? key_ : query_.orderBy + ", " + key_);
  Command command(*connection_, sql);
  int index = 0;
  for (const FieldValue& value : query_.values) command.Bind(++index, value);
  std::vector<std::int64_t> keys;
  while (command.Next()) keys.push_back(command.Integer(0));
  keys_ = std::move(keys);
  keysRead_ = true;
}

void Recordset::CheckField(int field) const {
  if (field < 0 || field >= FieldCount()) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
}

std::int64_t Recordset::PresentKey() const {
  if (place_ != Place::Row) throw RuntimeError(ErrorNumber::NoCurrentRecord);
  return keys_[static_cast<std::size_t>(index_)];
}

}  // namespace velk
