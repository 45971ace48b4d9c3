#pragma once

#include <sqlite3.h>

namespace velk::test {

/// Stands below the database engine while it lives and fails what the engine asks of files opened meanwhile: from the
/// n-th call on, or that one only.
class FailingVfs {
 public:
  enum class Kind { Full, IoError };

  FailingVfs();
  ~FailingVfs();
  FailingVfs(const FailingVfs&) = delete;
  FailingVfs& operator=(const FailingVfs&) = delete;

  /// The `call`-th call from now (1 is the next) fails, and with `lasting` all after it.
  void FailAt(int call, bool lasting, Kind kind = Kind::IoError);
  void Heal();
  /// Whether a call has failed since FailAt.
  bool HasFailed() const;
};

/// The same without shared memory, which a write-ahead log needs: as a file system of a network.
class VfsWithoutSharedMemory {
 public:
  VfsWithoutSharedMemory();
  ~VfsWithoutSharedMemory();
  VfsWithoutSharedMemory(const VfsWithoutSharedMemory&) = delete;
  VfsWithoutSharedMemory& operator=(const VfsWithoutSharedMemory&) = delete;
};

}  // namespace velk::test
