#pragma once

#include <memory>
#include <optional>
#include <string>

#include "graphs/curve_source.h"
#include "paper/page_curves.h"
#include "paper/page_times.h"
#include "platform/dialogs/long_task.h"

namespace velk {

/// The times of the first and the last record, and the latest that one of them has: later than the last one's where the
/// clock was set back.
struct RecordSpan {
  double first = 0;
  double last = 0;
  double latest = 0;
};

/// Where the records of a page come from. Each call raises what reading them raises.
class PageRecords {
 public:
  virtual ~PageRecords() = default;

  virtual const CurveSource& Curves() const = 0;
  /// The file, as the foot of the page names it.
  virtual const std::string& File() const = 0;
  /// Looks for it anew; nothing where there are no records.
  virtual std::optional<RecordSpan> FirstAndLast() = 0;
  /// Adds the records from the page's start to its end. Raises TaskCancelled too.
  virtual void Draw(PageCurves& to, const PageTimes& times, LongTask& task) = 0;
};

}  // namespace velk
