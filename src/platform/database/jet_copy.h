#pragma once

#include <string>

struct sqlite3;

namespace velk {

// Files of the Jet database format. They are read by way of a copy of ours, which stands in the
// user's cache and is named after the file's path, size and time: a file that changes has none.

/// Whether a file is such a database, by its first bytes; false for what can't be read.
bool IsJetFile(const std::string& path);
/// The same of a file that the engine has opened. Nobody else may look into one that could be a database of ours: as
/// soon as any descriptor of it is closed, the system takes the locks back that the engine holds in this process.
bool HoldsJetFile(sqlite3* handle);
/// Whether a file is one of version 3, whose texts don't tell which code page they are in.
bool IsJet3File(const std::string& path);

/// The name of the copy of a file, whether there is one or not. The folder that it lies in is made.
std::string JetCopyOf(const std::string& path);

/// Removes older copies of a file, and copies of any file that were not used for a month.
void ClearJetCopies(const std::string& path);

/// Notes that the copy is in use.
void TouchJetCopy(const std::string& copy);

}  // namespace velk
