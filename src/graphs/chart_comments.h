#pragma once

#include <string>
#include <vector>

#include "graphs/strip_chart.h"
#include "log/row_filter.h"
#include "log/summary_rows.h"

namespace velk {

// The operator's comments over the curves of a chart, at its right edge, in black. What is too long is cut on the
// surface only.

/// The filter of InsertComments: from the minute of `from` to that of `to`, day and time of day each for itself.
RowFilter CommentsOfPage(double from, double to);
/// That of ReplotComments, which ends by time.
RowFilter CommentsFrom(double from);

/// Prints each comment up to the first one beyond `to`, its middle at its time's place on the chart's page.
void InsertComments(Surface& surface, const StripChart& chart, const std::vector<ReportComment>& comments, double to);

/// Prints one comment where the chart draws at present, its top at `time`.
void PrintTheComment(StripChart& chart, const std::string& comment, double time);

}  // namespace velk
