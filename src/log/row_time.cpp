#include "log/row_time.h"

#include <cmath>
#include <limits>

#include "base/dates.h"
#include "base/errors.h"

namespace velk {

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

double DaysOf(const FieldValue& field) {
  try {
    if (const auto* text = std::get_if<std::string>(&field)) return CDate(*text);
  } catch (const RuntimeError&) {
    return kNone;
  }
  if (const auto* whole = std::get_if<std::int64_t>(&field)) return static_cast<double>(*whole);
  const auto* number = std::get_if<double>(&field);
  return number == nullptr ? kNone : *number;
}

/// As our own logs have them.
bool IsWhole(double day, double timeOfDay) {
  return day == std::floor(day) && timeOfDay >= 0 && timeOfDay < 1;
}

}  // namespace

double RowTime(const FieldValue& date, const FieldValue& time) {
  const double day = DaysOf(date);
  const double timeOfDay = DaysOf(time);
  if (IsWhole(day, timeOfDay)) return JoinDateTime(day, timeOfDay);
  return IsDateTime(day) && IsDateTime(timeOfDay) ? JoinDateTime(DatePart(day), TimePart(timeOfDay)) : kNone;
}

double RowTime(double date, double time) {
  return IsWhole(date, time) ? JoinDateTime(date, time) : RowTime(FieldValue(date), FieldValue(time));
}

double RowTime(const Command& row, int date) {
  const double day = row.Number(date), timeOfDay = row.Number(date + 1);
  return IsWhole(day, timeOfDay) ? JoinDateTime(day, timeOfDay) : RowTime(row.Field(date), row.Field(date + 1));
}

double RowTime(const ScannedField& date, const ScannedField& time) {
  const double day = date.Number(), timeOfDay = time.Number();
  return IsWhole(day, timeOfDay) ? JoinDateTime(day, timeOfDay) : RowTime(date.Value(), time.Value());
}

}  // namespace velk
