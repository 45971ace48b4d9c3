#include "log/page_rows.h"

#include <algorithm>

#include "base/dates.h"

namespace velk {

namespace {

std::unique_ptr<RowSource> FromFirst(std::unique_ptr<RowSource> rows) {
  return rows->First() ? std::move(rows) : nullptr;
}

}  // namespace

std::unique_ptr<RowSource> RowsOfPage(LogReader& log, double from, double to) {
  const RowFilter filter{CutToMinute(from), CutToMinute(to)};
  const auto span = log.Find(filter);
  auto rows = span ? FromFirst(log.Rows(filter, *span)) : nullptr;
  return rows ? std::move(rows) : RowsFrom(log, from, to);
}

std::unique_ptr<RowSource> RowsFrom(LogReader& log, double from, double to) {
  const RowFilter filter{CutToMinute(from)};
  auto span = log.Find(filter);
  if (!span) return nullptr;
  const auto upTo = log.Find({CutToMinute(from), to, RowFilter::Compare::Sum});
  if (!upTo)
    span->last = span->first;
  else if (upTo->last < span->last)  // else the rows stand in no order, and each may be one of the page
    span->last = std::max(upTo->last + 1, span->first);
  return FromFirst(log.Rows(filter, *span));
}

}  // namespace velk
