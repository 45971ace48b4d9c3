#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/loop/clock.h"

namespace velk {

/// Told how far a check is: `done` of `of`, which is 0 as long as nobody knows. It may throw to end the check.
using CheckStep = std::function<void(double done, double of)>;

/// Whether a log is whole: all that it holds can be read. Large files are read row by row, a step each; what a small
/// one holds is looked at all at once. Raises what opening raises where that is no damage (no such file, no rights, no
/// room).
bool IsWholeLog(const std::string& path, const CheckStep& step);

/// Rows that a job has appended to a log.
struct JobRows {
  std::string path;
  std::int64_t after = 0;  ///< the last key before them
  std::int64_t count = 0;
};

/// Whether the rows of a job can be read back: all of them, or those that are read within a second.
bool CanReadBack(const JobRows& rows, Clock& clock);

}  // namespace velk
