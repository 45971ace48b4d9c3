#include "reports/report_lines.h"

#include <algorithm>
#include <cmath>

#include "log/row_time.h"

namespace velk {

namespace {

/// Fields in the order in which the engine puts them, whole numbers and fractions being numbers.
bool IsLess(const FieldValue& a, const FieldValue& b) {
  const auto rank = [](const FieldValue& field) { return field.index() == 1 ? std::size_t{2} : field.index(); };
  if (rank(a) != rank(b)) return rank(a) < rank(b);
  const auto number = [](const FieldValue& field) {
    const auto* whole = std::get_if<std::int64_t>(&field);
    return whole ? static_cast<double>(*whole) : std::get<double>(field);
  };
  if (rank(a) == 2) return number(a) < number(b);
  return a < b;
}

}  // namespace

double TimeOfLine(const SummaryLines& report, std::size_t line) {
  FieldValue date, time;
  for (std::size_t i = 0; i < report.columns.size(); ++i) {
    if (report.columns[i].kind == SummaryColumn::Kind::Date) date = report.lines[line].fields[i];
    if (report.columns[i].kind == SummaryColumn::Kind::Time) time = report.lines[line].fields[i];
  }
  return RowTime(date, time);
}

void KeepLinesWithin(SummaryLines& report, double from, double to) {
  std::vector<SummaryLine> kept;
  for (std::size_t i = 0; i < report.lines.size(); ++i) {
    const double time = TimeOfLine(report, i);
    if (time >= from && time <= to) kept.push_back(std::move(report.lines[i]));
  }
  report.lines = std::move(kept);
}

void SortLines(SummaryLines& report, int column, bool descending) {
  const auto index = static_cast<std::size_t>(column);
  std::stable_sort(report.lines.begin(), report.lines.end(), [&](const SummaryLine& a, const SummaryLine& b) {
    return descending ? IsLess(b.fields[index], a.fields[index]) : IsLess(a.fields[index], b.fields[index]);
  });
}

CellKind KindOfColumn(const SummaryColumn& column) {
  switch (column.kind) {
    case SummaryColumn::Kind::Date:
      return CellKind::Date;
    case SummaryColumn::Kind::Time:
      return CellKind::Time;
    case SummaryColumn::Kind::Comments:
      return CellKind::Text;
    case SummaryColumn::Kind::Value:
    case SummaryColumn::Kind::Entry:
      break;
  }
  return CellKind::Number;
}

}  // namespace velk
