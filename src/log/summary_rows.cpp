#include "log/summary_rows.h"

#include <algorithm>
#include <cmath>

#include "base/dates.h"
#include "base/errors.h"
#include "base/numbers.h"
#include "base/text.h"
#include "log/field_names.h"
#include "log/log_layout.h"
#include "log/log_schema.h"
#include "log/row_finder.h"
#include "log/row_time.h"
#include "log/summary_report.h"
#include "log/texts.h"
#include "platform/database/catalog.h"
#include "platform/database/recordset.h"

namespace velk {

namespace {

using Kind = SummaryColumn::Kind;

bool IsAmong(const std::vector<std::string>& names, const std::string& name) {
  return std::any_of(names.begin(), names.end(), [&](const std::string& other) { return SameName(other, name); });
}

/// Columns as they stand in a report of these channels.
std::vector<std::string> ValueColumns(const std::vector<std::string>& channels, const std::string& comments) {
  return SummaryColumnNames(channels, {}, comments).parameters;
}

Kind KindOf(const std::string& name, const std::string& comments, const std::vector<std::string>& values) {
  if (SameName(name, "Date")) return Kind::Date;
  if (SameName(name, "Time")) return Kind::Time;
  if (SameName(name, comments)) return Kind::Comments;
  return IsAmong(values, name) ? Kind::Value : Kind::Entry;
}

int FieldOf(const Recordset& report, const std::string& name) {
  const int field = report.FieldIndex(name);
  if (field < 0) throw RuntimeError(ErrorNumber::Database, text::NoColumn + name);
  return field;
}

/// The present values of the channels whose columns the report has.
void SetValues(Recordset& report, const Session& session, const std::vector<std::string>& columns) {
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const auto value = static_cast<double>(session.CurrentValue.at(i + 1));
    const int field = report.FieldIndex(columns[i]);
    if (field >= 0 && std::isfinite(value)) report.SetField(field, ToDouble(Format(value, kSummaryPicture)));
  }
}

}  // namespace

SummaryLines ReadSummaryReport(Connection& connection) {
  const auto table = Catalog(connection).Find(kSummaryReport);
  if (!table) throw RuntimeError(ErrorNumber::NoSuchTable, text::NoReport);
  const std::string comments = CommentsColumn(connection);
  const std::vector<std::string> values = ValueColumns(ReadLogLayout(connection).channels, comments);
  SummaryLines report;
  for (const Column& column : table->columns)
    report.columns.push_back({column.name, KindOf(column.name, comments, values)});
  const std::string key = KeyOf(*table);
  Command rows(connection,
               "SELECT " + key + ", * FROM " + kSummaryReport + " ORDER BY Date ASC, Time ASC, " + key + " ASC");
  while (rows.Next()) {
    SummaryLine& line = report.lines.emplace_back();
    line.key = rows.Integer(0);
    for (int i = 1; i < rows.ColumnCount(); ++i) line.fields.push_back(rows.Field(i));
  }
  return report;
}

void AppendSummaryRow(const std::shared_ptr<Connection>& log, const Session& session,
                      const std::vector<std::string>& channels, double time, const std::string& comment) {
  const std::string comments = CommentsColumn(*log);
  Recordset report(log, kSummaryReport);
  const DateParts parts = Split(time);
  report.AddNew();
  report.SetField(FieldOf(report, "Date"), DatePart(time));
  report.SetField(FieldOf(report, "Time"), TimeOfDay(parts.hour, parts.minute, parts.second));
  if (session.Data.hasValues) SetValues(report, session, ValueColumns(channels, comments));
  report.SetField(FieldOf(report, comments), comment);
  report.Update();
}

void EnterSummaryField(const std::shared_ptr<Connection>& log, std::int64_t key, const std::string& column,
                       std::optional<double> value) {
  const auto table = Catalog(*log).Find(kSummaryReport);
  if (!table) throw RuntimeError(ErrorNumber::NoSuchTable, text::NoReport);
  Recordset report(log, kSummaryReport, {.where = KeyOf(*table) + "=?", .values = {key}});
  report.MoveFirst();
  report.SetField(FieldOf(report, column), value ? FieldValue(*value) : FieldValue());
  report.Update();
}

SummaryEntry ReadSummaryEntry(std::string_view text) {
  std::string entered = Trim(text);
  if (entered.empty()) return {true, {}};
  if (std::count(entered.begin(), entered.end(), ',') == 1 && entered.find('.') == std::string::npos)
    entered = ReplaceAll(entered, ",", ".");
  if (!IsNumeric(entered)) return {};
  return {true, ToDouble(entered)};
}

std::vector<ReportComment> ReadComments(Connection& connection, const RowFilter& filter) {
  const auto table = Catalog(connection).Find(kSummaryReport);
  const std::string column = table ? CommentsColumn(*table) : std::string();
  if (column.empty()) return {};
  for (const char* name : {"Date", "Time"})
    if (std::none_of(table->columns.begin(), table->columns.end(),
                     [&](const Column& other) { return SameName(other.name, name); }))
      return {};
  Command rows(connection, "SELECT Date, Time, " + QuoteName(column) + " FROM " + kSummaryReport + " WHERE TRUE" +
                               RowFinder::Condition(filter) + " ORDER BY " + KeyOf(*table));
  RowFinder::Bind(rows, 1, filter);
  std::vector<ReportComment> comments;
  while (rows.Next()) {
    ReportComment comment{RowTime(rows.Field(0), rows.Field(1)), rows.Text(2)};
    if (IsDateTime(comment.time) && !comment.text.empty()) comments.push_back(std::move(comment));
  }
  return comments;
}

}  // namespace velk
