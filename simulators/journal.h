#pragma once

#include <cstdio>
#include <string>

namespace sim {

/// What the unit sent, a line a frame: seconds since 1970 with milliseconds, a tab, "sound", "damaged" or "cut" (the
/// device was taken away or closed in the middle), a tab, and the text with \r, \n, \t, \\ and \xHH for what can't be
/// printed. Each line is on its way to the file before the next frame is begun.
class Journal {
 public:
  /// An empty path keeps no journal.
  explicit Journal(const std::string& path);
  ~Journal();
  Journal(const Journal&) = delete;
  Journal& operator=(const Journal&) = delete;

  void Write(const char* kind, const std::string& frame);

 private:
  std::FILE* file_ = nullptr;
};

}  // namespace sim
