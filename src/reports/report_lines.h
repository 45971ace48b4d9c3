#pragma once

#include "log/summary_rows.h"
#include "reports/table_layout.h"

namespace velk {

/// Leaves the lines of a report whose date-times lie between two, both included.
void KeepLinesWithin(SummaryLines& report, double from, double to);

/// Puts the lines in the order of a column: empty fields, numbers, texts; those with the same value stay in order.
void SortLines(SummaryLines& report, int column, bool descending);

/// Date-time of a line; NaN where it has none.
double TimeOfLine(const SummaryLines& report, std::size_t line);

CellKind KindOfColumn(const SummaryColumn& column);

}  // namespace velk
