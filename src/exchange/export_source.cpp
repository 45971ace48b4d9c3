#include "exchange/export_source.h"

#include <algorithm>

#include "base/text.h"
#include "exchange/texts.h"
#include "log/log_schema.h"
#include "platform/files/file_errors.h"

namespace velk {

namespace {

constexpr std::size_t kRowsOfPage = 8192;

bool Mentions(const std::string& type, const char* word) {
  return type.find(word) != std::string::npos;
}

}  // namespace

ExportSource::ExportSource(std::string path, ExportMode mode) : path_(std::move(path)), mode_(mode) {
  const auto connection = Connection::Open(path_, OpenMode::ReadOnly);
  const char* const name = mode == ExportMode::SummaryToCsv ? kSummaryReport : kLogData;
  auto table = Catalog(*connection).Find(name);
  if (!table)
    throw RuntimeError(ErrorNumber::NoSuchTable, FileErrorText(ErrorNumber::NoSuchTable, path_ + " (" + name + ")"));
  table_ = *std::move(table);
  key_ = KeyOf(table_);
}

void ExportSource::Walk(const std::vector<int>& fields, LongTask& task,
                        const std::function<void(const Command& row)>& visit) const {
  std::string columns;
  for (const int field : fields)
    (columns += columns.empty() ? "" : ", ") += QuoteName(table_.columns.at(static_cast<std::size_t>(field)).name);
  const std::vector<std::int64_t> keys = Keys(task);
  // In order of time as in that of their keys: rows lie one behind the other.
  const bool areInOrder = std::is_sorted(keys.begin(), keys.end());
  task.Doing(text::Exporting);
  for (std::size_t first = 0; first < keys.size(); first += kRowsOfPage) {
    const std::size_t count = std::min(kRowsOfPage, keys.size() - first);
    if (areInOrder)
      VisitSpan(columns, keys[first], keys[first + count - 1], visit);
    else
      VisitEach(columns, &keys[first], count, visit);
    task.Step(static_cast<double>(first + count), static_cast<double>(keys.size()));
  }
}

std::vector<std::int64_t> ExportSource::Keys(LongTask& task) const {
  task.Doing(text::SortingRows);
  const auto connection = Connection::Open(path_, OpenMode::ReadOnly);
  const std::string order = mode_ == ExportMode::LogToXml ? key_ : "Date ASC, Time ASC, " + key_;
  Command rows(*connection, "SELECT " + key_ + " FROM " + QuoteName(table_.name) + " ORDER BY " + order);
  std::vector<std::int64_t> keys;
  while (rows.Next()) {
    keys.push_back(rows.Integer(0));
    if (keys.size() % kRowsOfPage == 0) task.Step(static_cast<double>(keys.size()), 0);
  }
  return keys;
}

void ExportSource::VisitSpan(const std::string& columns, std::int64_t first, std::int64_t last,
                             const std::function<void(const Command& row)>& visit) const {
  const auto connection = Connection::Open(path_, OpenMode::ReadOnly);
  Command rows(*connection, "SELECT " + columns + " FROM " + QuoteName(table_.name) + " NOT INDEXED WHERE " + key_ +
                                " BETWEEN ? AND ? ORDER BY " + key_);
  rows.Bind(1, first).Bind(2, last);
  while (rows.Next()) visit(rows);
}

void ExportSource::VisitEach(const std::string& columns, const std::int64_t* keys, std::size_t count,
                             const std::function<void(const Command& row)>& visit) const {
  const auto connection = Connection::Open(path_, OpenMode::ReadOnly);
  Command row(*connection,
              "SELECT " + columns + " FROM " + QuoteName(table_.name) + " NOT INDEXED WHERE " + key_ + " = ?");
  for (std::size_t i = 0; i < count; ++i) {
    row.Bind(1, keys[i]);
    if (row.Next()) visit(row);
    row.Reset();
  }
}

FieldKind KindOf(const Column& column) {
  const std::string type = UpperCase(column.type);
  if (Mentions(type, "DATE") || Mentions(type, "TIME")) {
    if (SameName(column.name, "Date")) return FieldKind::Date;
    return SameName(column.name, "Time") ? FieldKind::Time : FieldKind::Moment;
  }
  if (Mentions(type, "TEXT") || Mentions(type, "MEMO")) return FieldKind::LongText;
  if (Mentions(type, "CHAR")) return FieldKind::Text;
  if (Mentions(type, "SMALLINT")) return FieldKind::SmallInteger;
  if (Mentions(type, "INT")) return FieldKind::Integer;
  return FieldKind::Number;
}

}  // namespace velk
