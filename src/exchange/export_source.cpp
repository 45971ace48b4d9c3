#include "exchange/export_source.h"

#include <algorithm>
#include <chrono>
#include <deque>
#include <future>

#include "base/text.h"
#include "exchange/texts.h"
#include "log/log_schema.h"
#include "platform/files/file_errors.h"

namespace velk {

namespace {

constexpr std::size_t kRowsOfPage = 8192;
constexpr std::size_t kPagesAtOnce = 2;

/// What a thread comes to; events run until then.
template <class Result>
Result Await(std::future<Result> coming, LongTask& task, double done, double of) {
  do task.Step(done, of);
  while (coming.wait_for(std::chrono::milliseconds(5)) != std::future_status::ready);
  return coming.get();
}

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

void ExportSource::Write(const std::vector<int>& fields, const std::function<RowText()>& make, OutputFile& file,
                         LongTask& task) const {
  std::string columns;
  for (const int field : fields)
    (columns += columns.empty() ? "" : ", ") += QuoteName(table_.columns.at(static_cast<std::size_t>(field)).name);
  task.Doing(text::SortingRows);
  const std::vector<std::int64_t> all = Await(std::async(std::launch::async, [this] { return Keys(); }), task, 0, 0);
  // In order of time as in that of their keys: rows lie one behind the other.
  const bool areInOrder = std::is_sorted(all.begin(), all.end());
  std::span<const std::int64_t> rest = all;
  std::deque<std::future<std::string>> pages;
  task.Doing(text::Exporting);
  while (!rest.empty() || !pages.empty()) {
    while (!rest.empty() && pages.size() < kPagesAtOnce) {
      const auto keys = rest.first(std::min(kRowsOfPage, rest.size()));
      rest = rest.subspan(keys.size());
      pages.push_back(std::async(std::launch::async, [this, &columns, keys, areInOrder, text = make()] {
        return PageText(columns, keys, areInOrder, text);
      }));
    }
    std::future<std::string> next = std::move(pages.front());
    pages.pop_front();
    file.Put(
        Await(std::move(next), task, static_cast<double>(all.size() - rest.size()), static_cast<double>(all.size())));
  }
}

std::string ExportSource::PageText(const std::string& columns, std::span<const std::int64_t> keys, bool areInOrder,
                                   const RowText& text) const {
  std::string page;
  const Visit append = [&](const Command& row) { text(row, page); };
  if (areInOrder)
    VisitSpan(columns, keys.front(), keys.back(), append);
  else
    VisitEach(columns, keys, append);
  return page;
}

std::vector<std::int64_t> ExportSource::Keys() const {
  const auto connection = Connection::Open(path_, OpenMode::ReadOnly);
  const std::string order = mode_ == ExportMode::LogToXml ? key_ : "Date ASC, Time ASC, " + key_;
  Command rows(*connection, "SELECT " + key_ + " FROM " + QuoteName(table_.name) + " ORDER BY " + order);
  std::vector<std::int64_t> keys;
  while (rows.Next()) keys.push_back(rows.Integer(0));
  return keys;
}

void ExportSource::VisitSpan(const std::string& columns, std::int64_t first, std::int64_t last,
                             const Visit& visit) const {
  const auto connection = Connection::Open(path_, OpenMode::ReadOnly);
  Command rows(*connection, "SELECT " + columns + " FROM " + QuoteName(table_.name) + " NOT INDEXED WHERE " + key_ +
                                " BETWEEN ? AND ? ORDER BY " + key_);
  rows.Bind(1, first).Bind(2, last);
  while (rows.Next()) visit(rows);
}

void ExportSource::VisitEach(const std::string& columns, std::span<const std::int64_t> keys, const Visit& visit) const {
  const auto connection = Connection::Open(path_, OpenMode::ReadOnly);
  Command row(*connection,
              "SELECT " + columns + " FROM " + QuoteName(table_.name) + " NOT INDEXED WHERE " + key_ + " = ?");
  for (const std::int64_t key : keys) {
    row.Bind(1, key);
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
