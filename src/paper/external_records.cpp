#include "paper/external_records.h"

#include <algorithm>

#include "base/dates.h"
#include "graphs/coordinates.h"
#include "paper/texts.h"

namespace velk {

ExternalRecords::ExternalRecords(const Platform& platform, const LiveImport& live, JetTools tools)
    : platform_(platform), live_(live), tools_(std::move(tools)), curves_(live) {
}

std::optional<RecordSpan> ExternalRecords::FirstAndLast() {
  ImportData reader;
  reader.Initialize(live_, tools_);
  LongTask task(platform_.dialogs, platform_.clock, text::PageTitle);
  task.Doing(live_.DBaseName);
  std::vector<ForeignRow> rows;
  const auto read = reader.ReadAll();
  while (read->Read(rows)) task.Step(static_cast<double>(rows.size()), 0);
  std::stable_sort(rows.begin(), rows.end(), [](const ForeignRow& a, const ForeignRow& b) { return a.time < b.time; });
  rows_ = std::move(rows);
  if (rows_.empty()) return std::nullopt;
  return RecordSpan{rows_.front().time, rows_.back().time, rows_.back().time};
}

void ExternalRecords::Draw(PageCurves& to, const PageTimes& times, LongTask& task) {
  const auto stored = [](double time) { return JoinDateTime(DatePart(time), TimePart(time)); };
  const double first = stored(times.start), last = stored(times.End());
  std::vector<float> values(live_.Fields.size());
  for (const ForeignRow& row : rows_) {
    if (row.time < first || row.time > last) continue;
    std::transform(row.values.begin(), row.values.end(), values.begin(), NarrowOrNan);
    to.Take(row.time, values);
    task.Step(row.time - first, last - first);
  }
  to.Finish();
}

}  // namespace velk
