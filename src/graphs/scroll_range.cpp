#include "graphs/scroll_range.h"

#include "base/dates.h"
#include "base/errors.h"
#include "model/status.h"
#include "model/texts.h"

namespace velk {

namespace {

constexpr int kLiveMinutes = 5;

bool HasLog(const Session& session) {
  return session.RecordToDB || StatusIs(session, text::StatusPlayingBack) ||
         StatusIs(session, text::StatusPlayingBackPaused);
}

}  // namespace

ScrollRange ScrollRangeUpTo(const Session& session, double upTo) {
  const long long minutes = MinutesBetween(CutToMinute(session.StartTime), upTo);
  if (!HasLog(session) || minutes < kLiveMinutes) return {};
  return {true, ToInt32(static_cast<double>(minutes - kLiveMinutes))};
}

}  // namespace velk
