#pragma once

#include <functional>
#include <string>

namespace velk {

/// Whether a log is in the Jet format: it is read by way of a copy, and can't be changed.
bool IsJetLog(const std::string& path);

/// Makes a log of ours of one of that format, at a path, in the place of what stands there. `step` is told how many
/// bytes are done; it may throw. Raises what reading and writing raise, and FileAlreadyOpen where a program records to
/// what stands there.
void SaveAsLog(const std::string& path, const std::string& target,
               const std::function<void(double done, double of)>& step);

}  // namespace velk
