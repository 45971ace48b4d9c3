#pragma once

#include <string>

namespace velk::demo {

/// Plays a log in the real main window from its first row to its last, 1000 rows a second, and prints the last place
/// that the status bar told: "played: Row 1 204 of 1 204". Gives the exit code of the program: not 0 where the log
/// can't be played.
int PlayLog(const std::string& log, const std::string& language);

}  // namespace velk::demo
