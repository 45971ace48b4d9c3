#pragma once

#include <string>

namespace velk {

/// Raises DiskFull, with how much is missing, where the disk has no room for the index of a write-ahead log. The engine
/// maps the index into memory before its blocks are there: on a full disk the first access would end the program.
///
/// `database` is the file that the error names, `log` its write-ahead log, which may be missing. What stands there is
/// not touched.
void RequireRoomForIndex(const std::string& database, const std::string& log);

}  // namespace velk
