#pragma once

#include <cstdint>

#include "base/operator_text.h"

namespace velk {

/// What has become of the lines of an instrument since Connect, for the operator. Ticks are milliseconds of the clock
/// that only runs forward.
struct DataState {
  bool hasValues = false;       ///< CurrentValue holds values of this job or playback, not those of an earlier one
  long long samples = 0;        ///< whose values were taken
  std::int64_t lastSample = 0;  ///< ticks at the last of them, or at Start and Resume
  std::int64_t lastLine = 0;    ///< ticks at the last line of any kind, or at Start and Resume
  long long rejected = 0;       ///< lines whose values were not taken
  long long firstLines = 0;     ///< of these: an own unit's first line, which only shows the length of the next ones
  OperatorText lastReason;      ///< why the last of them was rejected
  double heldSince = 0;         ///< time in days from which on the last values stand for rejected lines; 0: they do not
  double pausedSince = 0;       ///< time in days; 0: the job is not paused
  int channel = 0;              ///< that a sample works on; 0: none by itself
  OperatorText sourceFault;     ///< what the source of samples goes without, though lines come
  OperatorText failure;         ///< what goes wrong with each sample while no box tells of it

  // --- Recording ---
  long long rows = 0;          ///< on the disk
  std::int64_t lastRow = 0;    ///< ticks at the last of them, or at Start, Resume and the beginning of the recording
  double recordingSince = 0;   ///< time in days
  bool asksForReport = false;  ///< the question for the columns of the report stands: no line is taken meanwhile
};

}  // namespace velk
