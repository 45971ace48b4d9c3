#include "paper/page_times.h"

#include <cmath>
#include <cstdint>
#include <span>

#include "base/dates.h"

namespace velk {

namespace {

constexpr double kMillisecondsOfDay = 86'400'000;

constexpr int kSeconds[] = {4, 8, 12, 16, 20, 24, 32, 40, 48, 60};
constexpr int kMinutes[] = {1, 2, 4, 6, 8, 10, 12, 16, 20, 24, 32, 40, 48, 60};
constexpr int kHours[] = {2, 4, 6, 8, 10, 12, 16, 20, 24};
constexpr int kDays[] = {2, 3, 4, 6, 8, 10, 12, 16, 20, 24, 32, 40, 48, 60, 80, 100};

std::span<const int> RoundNumbers(SpanUnit unit) {
  switch (unit) {
    case SpanUnit::Second:
      return kSeconds;
    case SpanUnit::Minute:
      return kMinutes;
    case SpanUnit::Hour:
      return kHours;
    case SpanUnit::Day:
      break;
  }
  return kDays;
}

/// A quarter of so many units.
double Quarter(int units, SpanUnit unit) {
  const int whole = units / 4, rest = units % 4;
  switch (unit) {
    case SpanUnit::Second:
      return TimeOfDay(0, 0, whole);
    case SpanUnit::Minute:
      return TimeOfDay(0, whole, rest * 15);
    case SpanUnit::Hour:
      return TimeOfDay(whole, rest * 15, 0);
    case SpanUnit::Day:
      break;
  }
  return TimeOfDay(rest * 24 / 4 / 4, 0, 0);
}

/// Days, hours, minutes and seconds of a span, each cut.
struct SpanParts {
  int days, hours, minutes, seconds;
};

SpanParts PartsOf(double span) {
  // A fraction of a day can miss the whole hour by a bit.
  const auto milliseconds = static_cast<std::int64_t>(std::llround(span * kMillisecondsOfDay));
  const std::int64_t seconds = milliseconds / 1000;
  return {static_cast<int>(seconds / 86400), static_cast<int>(seconds / 3600 % 24), static_cast<int>(seconds / 60 % 60),
          static_cast<int>(seconds % 60)};
}

double RoundStep(double span) {
  const SpanParts parts = PartsOf(span);
  if (parts.days > 0) return PageScale(parts.days + (parts.hours > 0 ? 1 : 0), SpanUnit::Day);
  if (parts.hours > 0) return PageScale(parts.hours + (parts.minutes > 0 ? 1 : 0), SpanUnit::Hour);
  if (parts.minutes > 0) return PageScale(parts.minutes + (parts.seconds > 0 ? 1 : 0), SpanUnit::Minute);
  return PageScale(parts.seconds, SpanUnit::Second);
}

}  // namespace

RowFilter PageTimes::Around() const {
  constexpr double kLoss = 2 / kMillisecondsOfDay;
  return {start - kLoss, End() + kLoss, RowFilter::Compare::Sum};
}

bool PageTimes::IsSound() const {
  return step > 0 && IsDateTime(start) && IsDateTime(End()) && End() > start;
}

double PageScale(int count, SpanUnit unit) {
  if (count <= 0) return 0;
  for (const int units : RoundNumbers(unit))
    if (units >= count) return Quarter(units, unit);
  return 0;
}

PageTimes TimesOf(double first, double last, bool autoScale) {
  if (!IsDateTime(first) || !IsDateTime(last)) return {};
  const double span = last - first;
  const double step = autoScale && span > 0 ? RoundStep(span) : 0;
  return {first, step == 0 ? span / 4 : step};
}

bool EndsBefore(const PageTimes& times, double last) {
  return last - times.End() > kSameTime;
}

}  // namespace velk
