#pragma once

#include <memory>

#include "log/log_reader.h"

namespace velk {

// The rows of a page of a chart. Both bounds count by their whole minute, and day and time of day each for itself: over
// midnight nothing behind 00:00 comes. Each gives the rows from the first one on, or null where there is none.

/// The rows from the minute of `from` up to that of `to`; where there is none, those of RowsFrom.
std::unique_ptr<RowSource> RowsOfPage(LogReader& log, double from, double to);

/// The rows from the minute of `from` on. They end with the first one beyond `to`, however long the log is.
std::unique_ptr<RowSource> RowsFrom(LogReader& log, double from, double to);

}  // namespace velk
