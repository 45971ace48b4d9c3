#include "paper/log_records.h"

#include "base/dates.h"
#include "log/playback_file.h"

namespace velk {

namespace {

constexpr int kLastYear = 9999;

}  // namespace

std::optional<RecordSpan> LogRecords::FirstAndLast() {
  LogReader log(log_);
  log.Choose({});
  const auto first = log.First(), last = log.Last();
  if (!first || !last) return std::nullopt;
  const auto latest = log.Nearest(DateSerial(kLastYear, 12, 31));
  return RecordSpan{first->time, last->time, latest ? latest->time : last->time};
}

void LogRecords::Draw(PageCurves& to, const PageTimes& times, LongTask& task) {
  LogReader log = ShowsFile(session_) ? ReaderOfPlayed(log_, language_) : LogReader(log_);
  DrawCurves(to, log, session_, curves_, times, task);
}

}  // namespace velk
