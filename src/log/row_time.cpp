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

}  // namespace

double RowTime(const FieldValue& date, const FieldValue& time) {
  const double day = DaysOf(date);
  const double timeOfDay = DaysOf(time);
  if (day == std::floor(day) && timeOfDay >= 0 && timeOfDay < 1) return JoinDateTime(day, timeOfDay);
  return IsDateTime(day) && IsDateTime(timeOfDay) ? JoinDateTime(DatePart(day), TimePart(timeOfDay)) : kNone;
}

}  // namespace velk
