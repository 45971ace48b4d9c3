#pragma once

#include <cstdint>
#include <string>

#include "exchange/jet_reader.h"
#include "platform/dialogs/long_task.h"
#include "platform/platform.h"

namespace velk {

/// Makes a file readable: a log of the Jet format gets its copy, where it has none yet, with progress; a box tells of
/// rows that could not be read. Nothing is done for any other file. Raises NotADatabase or NoSuchTable with the file,
/// what the writing of the copy raises, and TaskCancelled.
void PrepareLog(const std::string& path, const JetTools& tools, const Platform& platform);

/// Writes the tables of such a log into a log of ours, at a path where nothing stands. Gives how many rows could not be
/// read. Raises as above.
std::int64_t CopyJetLog(const std::string& path, const std::string& copy, const JetTools& tools, LongTask& task);

}  // namespace velk
