#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/language.h"
#include "log/log_parameters.h"
#include "log/log_reader.h"

namespace velk {

/// A log that can be played back.
struct PlaybackFile {
  LogParameters parameters;
  std::unique_ptr<LogReader> reader;  ///< its rows have the values of the channels of `parameters`, in that order
  std::vector<LogRow> beginning;      ///< the first two rows, as far as there are any; each has its time
};

/// Looks at a log that is to be played back. It is read only, and nothing is held of it that could disturb the program
/// that records to it. Raises NoSuchTable for a database without logData, Database for a column that is missing,
/// TypeMismatch for a beginning without time, and what the opening of the file raises.
PlaybackFile OpenForPlayback(const std::string& path, const Language& language);

/// A reader whose channels are those that a playback of the file shows: by the names of its columns. Raises as above.
LogReader ReaderOfPlayed(const std::string& path, const Language& language);

/// Raises TypeMismatch for a row that has no date and time, with its key and the file.
void CheckHasTime(const LogRow& row, const std::string& path);

}  // namespace velk
