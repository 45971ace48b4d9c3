#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/operator_text.h"
#include "model/session.h"

namespace velk {

/// What the data panel tells.
struct DataWords {
  OperatorText text;   ///< empty: there is no job
  bool warns = false;  ///< something that the operator would not want to find out at the end of the job
  bool stale = false;  ///< the values on the charts are no present ones
};

/// No line has come for as long as SilenceMs tells.
bool IsSilent(const Session& session, std::int64_t ticks);
/// The values that stand are no present ones: there is no job and no playback, the job is paused, nothing comes, or
/// nothing that could be taken.
bool HasStaleValues(const Session& session, std::int64_t ticks);

/// `ticks` is the clock's, `perSecond` how fast samples come, where that is known already.
DataWords WordsOfData(const Session& session, std::int64_t ticks, std::optional<double> perSecond);

/// TheTimeOut sampling intervals in milliseconds, a second at least.
std::int64_t SilenceMs(const Session& session);

/// "12 s", "25 min", "3 h", "412 days", cut to whole ones.
OperatorText DurationText(double seconds);

/// "1.2 MB".
OperatorText SizeText(double bytes);

/// What is known of the file that rows go to.
struct LogFileRoom {
  std::string path;
  double bytes = 0;              ///< its size, with what stands beside it
  std::optional<double> free{};  ///< on its disk
};

/// How many bytes a row of so many channels takes in a log, a little more than it does.
double BytesPerRow(int channels);

/// The name of the file and the time since the recording began; where the job is paused that instead of the time.
OperatorText RecordingText(const Session& session, const std::string& path, double now);
/// The file that rows really go to, its size, the free space and how long that lasts where so many rows come a second.
OperatorText RecordingToolTip(const Session& session, const LogFileRoom& room, std::optional<double> rowsPerSecond);

}  // namespace velk
