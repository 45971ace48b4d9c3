#pragma once

#include <string>

namespace velk {

// Files of the database format that logs had before. They are read by way of a copy of ours, which stands in the
// user's cache and is named after the file's path, size and time: a file that changes has none.

/// Whether a file is such a database, by its first bytes; false for what can't be read.
bool IsJetFile(const std::string& path);

/// The name of the copy of a file, whether there is one or not. The folder that it lies in is made.
std::string JetCopyOf(const std::string& path);

/// Removes older copies of a file, and copies of any file that were not used for a month.
void ClearJetCopies(const std::string& path);

/// Notes that the copy is in use.
void TouchJetCopy(const std::string& copy);

}  // namespace velk
