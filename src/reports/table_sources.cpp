#include "reports/table_sources.h"

#include <cmath>
#include <variant>

#include "log/texts.h"
#include "reports/report_lines.h"

namespace velk {

namespace {

std::optional<double> NumberIn(const FieldValue& field) {
  if (const auto* whole = std::get_if<std::int64_t>(&field)) return static_cast<double>(*whole);
  const auto* number = std::get_if<double>(&field);
  return number ? std::optional(*number) : std::nullopt;
}

}  // namespace

std::string HeadingOfColumn(const std::string& name, CellKind kind, const Language& language) {
  if (kind == CellKind::Date) return language.In(text::ReportDate);
  return kind == CellKind::Time ? language.In(text::ReportTime) : name;
}

LogTable::LogTable(LogView& view, const Language& language) : view_(view) {
  for (int i = 0; i < static_cast<int>(view.Columns().size()); ++i)
    columns_.push_back({HeadingOfColumn(view.Columns()[static_cast<std::size_t>(i)], view.KindOf(i), language),
                        view.IsIdentity(i) ? CellKind::Text : view.KindOf(i)});
}

double LogTable::FirstTime() {
  return view_.Count() == 0 ? std::nan("") : view_.TimeOf(0);
}

double LogTable::LastTime() {
  return view_.Count() == 0 ? std::nan("") : view_.TimeOf(view_.Count() - 1);
}

bool LogTable::First() {
  row_ = 0;
  return view_.Count() > 0;
}

bool LogTable::Next() {
  return ++row_ < view_.Count();
}

std::optional<double> LogTable::Number(int column) {
  const std::vector<FieldValue>& fields = view_.Fields(row_);
  return fields.empty() ? std::nullopt : NumberIn(fields[static_cast<std::size_t>(column)]);
}

ReportTable::ReportTable(const SummaryLines& report, const Language& language) : report_(report) {
  for (const SummaryColumn& column : report.columns)
    columns_.push_back({HeadingOfColumn(column.name, KindOfColumn(column), language), KindOfColumn(column)});
}

double ReportTable::FirstTime() {
  return report_.lines.empty() ? std::nan("") : TimeOfLine(report_, 0);
}

double ReportTable::LastTime() {
  return report_.lines.empty() ? std::nan("") : TimeOfLine(report_, report_.lines.size() - 1);
}

bool ReportTable::First() {
  line_ = 0;
  return !report_.lines.empty();
}

bool ReportTable::Next() {
  return ++line_ < report_.lines.size();
}

std::optional<double> ReportTable::Number(int column) {
  return NumberIn(report_.lines[line_].fields[static_cast<std::size_t>(column)]);
}

std::string ReportTable::Text(int column) {
  const auto index = static_cast<std::size_t>(column);
  return CellText(report_.lines[line_].fields[index], columns_[index].kind, false);
}

}  // namespace velk
