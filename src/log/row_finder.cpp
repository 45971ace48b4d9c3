#include "log/row_finder.h"

#include <cmath>
#include <limits>

#include "base/dates.h"

namespace velk {

namespace {

constexpr std::int64_t kOpenEnd = std::numeric_limits<std::int64_t>::max();

/// Binds day and time of day of a date-time, or the sum of both.
int BindBound(Command& command, int index, double time, RowFilter::Compare compare) {
  const double day = DatePart(time);
  const double timeOfDay = TimePart(time);
  if (compare == RowFilter::Compare::Sum) {
    command.Bind(index, JoinDateTime(day, timeOfDay));
    return index + 1;
  }
  command.Bind(index, day).Bind(index + 1, timeOfDay);
  return index + 2;
}

std::optional<std::int64_t> KeyOrNothing(const Command& command) {
  const FieldValue key = command.Field(0);
  const auto* number = std::get_if<std::int64_t>(&key);
  return number == nullptr ? std::nullopt : std::optional(*number);
}

/// The days that stand in the index, from one on, each found without reading the rows of the one before.
class DaySteps {
 public:
  DaySteps(Connection& connection, const std::string& index, double from)
      : first_(connection, "SELECT min(Date) FROM logData INDEXED BY " + index + " WHERE Date >= ?"),
        next_(connection, "SELECT min(Date) FROM logData INDEXED BY " + index + " WHERE Date > ?") {
    first_.Bind(1, DatePart(from));
  }

  /// As stored; nothing behind the last one.
  std::optional<FieldValue> Next() {
    Command& step = started_ ? next_ : first_;
    started_ = true;
    step.Next();
    FieldValue day = step.Field(0);
    step.Reset();
    if (std::holds_alternative<std::monostate>(day)) return std::nullopt;
    next_.Bind(1, day);
    return day;
  }

 private:
  Command first_;
  Command next_;
  bool started_ = false;
};

/// A text compares as greater than every number.
bool IsBehind(const FieldValue& day, double last) {
  if (const auto* whole = std::get_if<std::int64_t>(&day)) return static_cast<double>(*whole) > last;
  const auto* number = std::get_if<double>(&day);
  return number == nullptr || *number > last;
}

/// Bisects keys, which may have gaps: a probe takes the first row from a key on.
class KeyBisection {
 public:
  KeyBisection(Connection& connection, const std::string& key)
      : probe_(connection,
               "SELECT " + key + ", Date, Time FROM logData WHERE " + key + " >= ? ORDER BY " + key + " LIMIT 1"),
        before_(connection, "SELECT max(" + key + ") FROM logData WHERE " + key + " < ?"),
        ends_(connection, "SELECT (SELECT min(" + key + ") FROM logData), (SELECT max(" + key + ") FROM logData)") {
    if (!ends_.Next()) return;
    const auto first = KeyOrNothing(ends_);
    if (first) span_ = KeySpan{*first, ends_.Integer(1)};
    ends_.Reset();
  }

  /// The first key of a row at or behind (behind) a day and time; nothing where there is none.
  std::optional<std::int64_t> First(double date, double time, bool behind) {
    if (!span_) return std::nullopt;
    std::int64_t low = span_->first;
    std::int64_t high = span_->last;
    std::optional<std::int64_t> found;
    while (low <= high) {
      const std::int64_t middle = low + (high - low) / 2;
      const Probe row = Look(middle);
      const bool isThere = behind ? row.date > date || (row.date == date && row.time > time)
                                  : row.date > date || (row.date == date && row.time >= time);
      if (isThere) found = row.key;
      if (isThere)
        high = middle - 1;
      else
        low = row.key + 1;
    }
    return found;
  }

  std::optional<std::int64_t> Before(std::int64_t key) {
    before_.Bind(1, key);
    const auto found = before_.Next() ? KeyOrNothing(before_) : std::nullopt;
    before_.Reset();
    return found;
  }
  const std::optional<KeySpan>& Span() const { return span_; }

 private:
  struct Probe {
    std::int64_t key;
    double date, time;
  };
  Probe Look(std::int64_t key) {
    probe_.Bind(1, key);
    probe_.Next();
    const Probe probe{probe_.Integer(0), probe_.Number(1), probe_.Number(2)};
    probe_.Reset();
    return probe;
  }

  Command probe_;
  Command before_;
  Command ends_;
  std::optional<KeySpan> span_;
};

}  // namespace

std::string RowFinder::Condition(const RowFilter& filter) {
  std::string condition;
  const bool sum = filter.compare == RowFilter::Compare::Sum;
  if (filter.from) condition += sum ? " AND Date + Time >= ?" : " AND Date >= ? AND Time >= ?";
  if (filter.to) condition += sum ? " AND Date + Time <= ?" : " AND Date <= ? AND Time <= ?";
  return condition;
}

int RowFinder::Bind(Command& command, int index, const RowFilter& filter) {
  if (filter.from) index = BindBound(command, index, *filter.from, filter.compare);
  if (filter.to) index = BindBound(command, index, *filter.to, filter.compare);
  return index;
}

std::optional<KeySpan> RowFinder::Find(Connection& connection, const RowFilter& filter) {
  if (!filter.from && !filter.to) return AllRows(connection);
  return layout_.index.empty() ? FindByBisection(connection, filter) : FindByIndex(connection, filter);
}

std::optional<KeySpan> RowFinder::AllRows(Connection& connection) const {
  Command first(connection, "SELECT min(" + layout_.key + ") FROM logData");
  if (!first.Next()) return std::nullopt;
  const auto key = KeyOrNothing(first);
  return key ? std::optional(KeySpan{*key, kOpenEnd}) : std::nullopt;
}

std::optional<KeySpan> RowFinder::FindByIndex(Connection& connection, const RowFilter& filter) {
  const bool days = filter.compare == RowFilter::Compare::DayAndTime;
  if (days && filter.from && filter.to) return FindDays(connection, filter);
  std::optional<KeySpan> span = AllRows(connection);
  if (!span) return span;
  if (filter.from) {
    const auto first = days ? FirstBySteps(connection, *filter.from)
                            : OneKey(connection, "(Date, Time) >= (?, ?) ORDER BY Date, Time, ", *filter.from);
    if (!first) return std::nullopt;
    span->first = *first;
  }
  if (filter.to) {
    const auto last = LastUpTo(connection, *filter.to);
    if (!last) return std::nullopt;
    span->last = *last;
  }
  return span;
}

/// Each day that the file has within the range is a range of the index for itself.
std::optional<KeySpan> RowFinder::FindDays(Connection& connection, const RowFilter& filter) {
  Command ofDay(connection, "SELECT min(" + layout_.key + "), max(" + layout_.key + ") FROM logData INDEXED BY " +
                                layout_.index + " WHERE Date = ? AND Time >= ? AND Time <= ?");
  ofDay.Bind(2, TimePart(*filter.from)).Bind(3, TimePart(*filter.to));
  const double last = DatePart(*filter.to);
  if (DatePart(*filter.from) == last) {
    ofDay.Bind(1, last);
    if (!ofDay.Next() || !KeyOrNothing(ofDay)) return std::nullopt;
    return KeySpan{ofDay.Integer(0), ofDay.Integer(1)};
  }
  DaySteps days(connection, layout_.index, *filter.from);
  std::optional<KeySpan> span;
  for (auto day = days.Next(); day && !IsBehind(*day, last); day = days.Next()) {
    ofDay.Bind(1, *day);
    if (ofDay.Next() && KeyOrNothing(ofDay)) {
      const KeySpan found{ofDay.Integer(0), ofDay.Integer(1)};
      span = span ? KeySpan{std::min(span->first, found.first), std::max(span->last, found.last)} : found;
    }
    ofDay.Reset();
  }
  return span;
}

/// The first row from a day and, on that and each later day, from a time of day on.
std::optional<std::int64_t> RowFinder::FirstBySteps(Connection& connection, double from) {
  DaySteps days(connection, layout_.index, from);
  Command ofDay(connection, "SELECT " + layout_.key + " FROM logData INDEXED BY " + layout_.index +
                                " WHERE Date = ? AND Time >= ? ORDER BY Time, " + layout_.key + " LIMIT 1");
  ofDay.Bind(2, TimePart(from));
  for (auto day = days.Next(); day; day = days.Next()) {
    ofDay.Bind(1, *day);
    if (ofDay.Next()) return ofDay.Integer(0);
  }
  return std::nullopt;
}

std::optional<std::int64_t> RowFinder::OneKey(Connection& connection, const std::string& condition, double time) {
  Command command(connection, "SELECT " + layout_.key + " FROM logData INDEXED BY " + layout_.index + " WHERE " +
                                  condition + layout_.key + " LIMIT 1");
  BindBound(command, 1, time, RowFilter::Compare::DayAndTime);
  return command.Next() ? std::optional(command.Integer(0)) : std::nullopt;
}

std::optional<std::int64_t> RowFinder::LastUpTo(Connection& connection, double time) {
  if (!layout_.index.empty()) {
    const std::string order = "ORDER BY Date DESC, Time DESC, ";
    Command command(connection, "SELECT " + layout_.key + " FROM logData INDEXED BY " + layout_.index +
                                    " WHERE (Date, Time) <= (?, ?) AND Date IS NOT NULL AND Time IS NOT NULL " + order +
                                    layout_.key + " DESC LIMIT 1");
    BindBound(command, 1, time, RowFilter::Compare::DayAndTime);
    return command.Next() ? std::optional(command.Integer(0)) : std::nullopt;
  }
  const RowFilter filter{{}, time, RowFilter::Compare::Sum};
  const auto span = FindByBisection(connection, filter);
  if (!span || inOrder_) return span ? std::optional(span->last) : std::nullopt;
  Command latest(connection, "SELECT " + layout_.key + " FROM logData WHERE TRUE" + Condition(filter) +
                                 " ORDER BY Date + Time DESC, " + layout_.key + " DESC LIMIT 1");
  Bind(latest, 1, filter);
  return latest.Next() ? std::optional(latest.Integer(0)) : std::nullopt;
}

std::optional<KeySpan> RowFinder::FindByBisection(Connection& connection, const RowFilter& filter) {
  if (!StandsInOrder(connection)) return AllRows(connection);
  KeyBisection keys(connection, layout_.key);
  if (!keys.Span()) return std::nullopt;
  KeySpan span{keys.Span()->first, kOpenEnd};
  if (filter.from) {
    const auto first = keys.First(DatePart(*filter.from), TimePart(*filter.from), false);
    if (!first) return std::nullopt;
    span.first = *first;
  }
  if (filter.to) {
    const auto behind = keys.First(DatePart(*filter.to), TimePart(*filter.to), true);
    const auto last = behind ? keys.Before(*behind) : std::optional(keys.Span()->last);
    if (!last || *last < span.first) return std::nullopt;
    span.last = *last;
  }
  return span;
}

bool RowFinder::StandsInOrder(Connection& connection) {
  if (!inOrder_) return false;
  Command rows(connection, "SELECT " + layout_.key + ", Date, Time FROM logData" +
                               (checkedTo_ ? " WHERE " + layout_.key + " > ?" : "") + " ORDER BY " + layout_.key);
  if (checkedTo_) rows.Bind(1, *checkedTo_);
  while (rows.Next()) {
    const double date = rows.Number(1);
    const double time = rows.Number(2);
    // Not a day and a fraction of it: sums and pairs have another order.
    if (date != std::floor(date) || !(time >= 0 && time < 1)) inOrder_ = false;
    if (checkedTo_ && (date < checkedDate_ || (date == checkedDate_ && time < checkedTime_))) inOrder_ = false;
    if (!inOrder_) return false;
    checkedTo_ = rows.Integer(0);
    checkedDate_ = date;
    checkedTime_ = time;
  }
  return true;
}

}  // namespace velk
