#pragma once

#include "log/row_filter.h"

namespace velk {

/// Times that differ by less, in days, are the same one: a quarter of a span, four times, and a log, which keeps day
/// and time of day apart, lose some of their bits.
inline constexpr double kSameTime = 0.5 / 86'400'000;

/// The time range of a page: four equal intervals from `start` on, in days.
struct PageTimes {
  double start = 0;
  double step = 0;

  double End() const { return start + 4 * step; }
  /// Whether the time of a record or a comment lies on the page, its ends included.
  bool Covers(double time) const { return time > start - kSameTime && time < End() + kSameTime; }
  /// All rows of the page, and some beside it: a filter cuts its times to whole milliseconds.
  RowFilter Around() const;
  /// Whether it can be drawn: it has a length, and is a time throughout.
  bool IsSound() const;
};

/// A unit of a page's scale.
enum class SpanUnit { Second, Minute, Hour, Day };

/// A quarter, in days, of the first round number of units that is not less than `count`, cut to whole smaller units. Of
/// days only the hours behind the whole ones count, by 4: 2 days give 3 hours, 4 days nothing. 0 for a count of 0 and
/// for one above the last round number.
double PageScale(int count, SpanUnit unit);

/// The page for records from `first` to `last`: its step is a round one where `autoScale` is set, else a quarter of the
/// span. A round step of 0 counts as a quarter of the span too. The span counts in whole milliseconds.
PageTimes TimesOf(double first, double last, bool autoScale);

/// Whether the page ends before the last record does, which a round step can bring about.
bool EndsBefore(const PageTimes& times, double last);

}  // namespace velk
