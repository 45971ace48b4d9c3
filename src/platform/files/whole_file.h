#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace velk {

/// The bytes of a file. Raises what keeps it from being read, the path with it; Overflow for one above `limit`.
std::string ReadWholeFile(const std::string& path, std::size_t limit);

/// Writes a file, its parts one behind the other. What stood at the path stays until the new one is whole and on the
/// disk. Raises PermissionDenied, DiskFull or DeviceIOError with the path and the reason.
void WriteWholeFile(const std::string& path, std::initializer_list<std::string_view> parts);
inline void WriteWholeFile(const std::string& path, std::string_view bytes) {
  WriteWholeFile(path, {bytes});
}

}  // namespace velk
