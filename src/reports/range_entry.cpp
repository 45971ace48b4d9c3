#include "reports/range_entry.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/dates.h"
#include "base/errors.h"
#include "base/numbers.h"
#include "base/text.h"

namespace velk {

namespace {

constexpr std::size_t kDateCharacters = 11, kTimeCharacters = 8;
constexpr double kNoMoment = std::numeric_limits<double>::quiet_NaN();

double MomentIn(std::string_view text) {
  try {
    return CDate(text);
  } catch (const RuntimeError&) {
    return kNoMoment;
  }
}

/// The bound where the text is none, or is how it is shown.
double BoundIn(std::string_view text, double bound, bool& isSound) {
  const double moment = MomentIn(text);
  isSound = !std::isnan(moment);
  return !isSound || Trim(text) == FormatDate(bound, kMomentPicture) ? bound : moment;
}

}  // namespace

RangeEntry ReadRange(std::string_view begin, std::string_view end, double first, double last) {
  RangeEntry range;
  range.begin = std::max(BoundIn(begin, first, range.beginIsSound), first);
  range.end = std::min(BoundIn(end, last, range.endIsSound), last);
  if (range.begin > range.end) {
    range.begin = first;
    range.end = last;
  }
  return range;
}

double ReadFactor(std::string_view text) {
  const std::string entered(text);
  return Val(entered.find('.') == std::string::npos ? ReplaceAll(entered, ",", ".") : entered);
}

double ReadTarget(std::string_view text) {
  const std::string whole = Trim(text);
  const double day = MomentIn(Left(whole, kDateCharacters));
  const double time = MomentIn(Right(whole, kTimeCharacters));
  // A time alone is a date as well, of day 0.
  if (!(day >= 1) || std::isnan(time)) return kNoMoment;
  return JoinDateTime(DatePart(day), TimePart(time));
}

}  // namespace velk
