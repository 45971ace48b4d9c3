#pragma once

#include <memory>
#include <optional>
#include <string>

namespace velk {

/// Who holds the lock of a file, as it has written there.
struct LockHolder {
  std::string process;  ///< its number
  std::string host;
  bool IsThisProgram() const;
};

/// Keeps programs apart that would write to one file: a lock on a file beside it, PATH-lock, which the system takes
/// back when its holder ends, however that ends. Not on the file itself: closing any descriptor of that would drop the
/// database engine's own locks.
class FileLock {
 public:
  /// Null where somebody holds the lock already, this program included. Where the file system knows no locks, or the
  /// file beside can't be made, a lock that nobody sees.
  static std::unique_ptr<FileLock> Take(const std::string& path);
  ~FileLock();
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

  /// Lets go of the lock and removes the file beside, as the end of this object does; false where the file stays.
  bool Release();
  /// The file beside.
  const std::string& Name() const { return beside_; }

  /// Whether it is this very lock that keeps others from `path`.
  bool Guards(const std::string& path) const;

  /// Who holds the lock of a file; nothing where nobody does. Disturbs nobody, and takes microseconds.
  static std::optional<LockHolder> HolderOf(const std::string& path);

 private:
  FileLock(std::string beside, int descriptor) : beside_(std::move(beside)), descriptor_(descriptor) {}

  std::string beside_;
  int descriptor_;  ///< -1: a lock that nobody sees
};

}  // namespace velk
