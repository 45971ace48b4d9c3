#pragma once

#include <optional>
#include <string>

namespace velk {

/// The size of a file in bytes; 0 where there is none.
double FileBytes(const std::string& path);

/// Bytes that may still be written to the disk that a file is on; none where the system doesn't tell.
std::optional<double> FreeBytes(const std::string& path);

}  // namespace velk
