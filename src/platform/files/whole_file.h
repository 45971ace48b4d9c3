#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velk {

/// The bytes of a file. Raises what keeps it from being read, the path with it; Overflow for one above `limit`.
std::string ReadWholeFile(const std::string& path, std::size_t limit);

/// Writes a file. What stood at the path stays until the new one is whole and on the disk. Raises PermissionDenied,
/// DiskFull or DeviceIOError with the path and the reason.
void WriteWholeFile(const std::string& path, std::string_view bytes);

}  // namespace velk
