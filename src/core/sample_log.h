#pragma once

#include "log/log_row.h"
#include "platform/dialogs/procedure.h"

namespace velk {

/// What records the samples of a job, as their road sees it.
class SampleLog {
 public:
  virtual ~SampleLog() = default;

  /// Appends the row of a sample. A failure is raised once and then only counted until a row has gone through again, so
  /// that a full disk shows one box and recording goes on by itself. `firstTry` is false for the Retry of a row that is
  /// counted already.
  virtual void AppendRow(const LogRow& row, bool firstTry) = 0;
  /// The same without raising: for the moment in front of a box.
  virtual void AppendRowQuietly(const LogRow& row) = 0;
  /// Counts a page change and names the file by it; asks for a file where there is none.
  virtual void FollowPage(const Statements& run) = 0;
  /// Ends the recording. Reports its own failures.
  virtual void Finish() = 0;
};

}  // namespace velk
