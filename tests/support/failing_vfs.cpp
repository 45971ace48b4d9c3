#include "support/failing_vfs.h"

#include <cstddef>

namespace velk::test {

namespace {

struct State {
  sqlite3_vfs* below = nullptr;
  int callsLeft = 0;  ///< until the one that fails; 0 where none does
  bool lasting = false;
  bool failed = false;
  bool sharedMemory = true;
  FailingVfs::Kind kind = FailingVfs::Kind::IoError;
} state;

/// Whether this call fails.
bool Fails() {
  if (state.failed) return state.lasting;
  if (state.callsLeft == 0 || --state.callsLeft > 0) return false;
  state.failed = true;
  return true;
}

int Code(int ioError) {
  return state.kind == FailingVfs::Kind::Full ? SQLITE_FULL : ioError;
}

struct File {
  sqlite3_file base;
  // The file below follows at once; sqlite3_file is as aligned as any.
};

sqlite3_file* Below(sqlite3_file* file) {
  return static_cast<sqlite3_file*>(
      static_cast<void*>(static_cast<std::byte*>(static_cast<void*>(file)) + sizeof(File)));
}

template <auto method, class... Arguments>
int Forward(sqlite3_file* file, Arguments... arguments) {
  sqlite3_file* below = Below(file);
  return (below->pMethods->*method)(below, arguments...);
}

template <auto method, int ioError, class... Arguments>
int Failing(sqlite3_file* file, Arguments... arguments) {
  if (Fails()) return Code(ioError);
  return Forward<method>(file, arguments...);
}

int Close(sqlite3_file* file) {
  return Forward<&sqlite3_io_methods::xClose>(file);
}
int Read(sqlite3_file* f, void* b, int n, sqlite3_int64 o) {
  return Failing<&sqlite3_io_methods::xRead, SQLITE_IOERR_READ>(f, b, n, o);
}
int Write(sqlite3_file* f, const void* b, int n, sqlite3_int64 o) {
  return Failing<&sqlite3_io_methods::xWrite, SQLITE_IOERR_WRITE>(f, b, n, o);
}
int Truncate(sqlite3_file* f, sqlite3_int64 size) {
  return Failing<&sqlite3_io_methods::xTruncate, SQLITE_IOERR_TRUNCATE>(f, size);
}
int Sync(sqlite3_file* f, int flags) {
  return Failing<&sqlite3_io_methods::xSync, SQLITE_IOERR_FSYNC>(f, flags);
}
int FileSize(sqlite3_file* f, sqlite3_int64* size) {
  return Failing<&sqlite3_io_methods::xFileSize, SQLITE_IOERR_FSTAT>(f, size);
}
int Lock(sqlite3_file* f, int level) {
  return Failing<&sqlite3_io_methods::xLock, SQLITE_IOERR_LOCK>(f, level);
}
int Unlock(sqlite3_file* f, int level) {
  return Forward<&sqlite3_io_methods::xUnlock>(f, level);
}
int CheckReservedLock(sqlite3_file* f, int* out) {
  return Forward<&sqlite3_io_methods::xCheckReservedLock>(f, out);
}
int FileControl(sqlite3_file* f, int op, void* arg) {
  return Forward<&sqlite3_io_methods::xFileControl>(f, op, arg);
}
int SectorSize(sqlite3_file* f) {
  return Forward<&sqlite3_io_methods::xSectorSize>(f);
}
int DeviceCharacteristics(sqlite3_file* f) {
  return Forward<&sqlite3_io_methods::xDeviceCharacteristics>(f);
}
int ShmMap(sqlite3_file* f, int page, int size, int extend, void volatile** out) {
  return Failing<&sqlite3_io_methods::xShmMap, SQLITE_IOERR_SHMMAP>(f, page, size, extend, out);
}
int ShmLock(sqlite3_file* f, int o, int n, int flags) {
  return Forward<&sqlite3_io_methods::xShmLock>(f, o, n, flags);
}
void ShmBarrier(sqlite3_file* f) {
  Below(f)->pMethods->xShmBarrier(Below(f));
}
int ShmUnmap(sqlite3_file* f, int remove) {
  return Forward<&sqlite3_io_methods::xShmUnmap>(f, remove);
}

constexpr int kWithSharedMemory = 2;
constexpr int kWithoutSharedMemory = 1;

const sqlite3_io_methods* Methods() {
  const auto make = [](int version) {
    sqlite3_io_methods methods{};
    methods.iVersion = version;
    methods.xClose = Close;
    methods.xRead = Read;
    methods.xWrite = Write;
    methods.xTruncate = Truncate;
    methods.xSync = Sync;
    methods.xFileSize = FileSize;
    methods.xLock = Lock;
    methods.xUnlock = Unlock;
    methods.xCheckReservedLock = CheckReservedLock;
    methods.xFileControl = FileControl;
    methods.xSectorSize = SectorSize;
    methods.xDeviceCharacteristics = DeviceCharacteristics;
    if (version == kWithSharedMemory) {
      methods.xShmMap = ShmMap;
      methods.xShmLock = ShmLock;
      methods.xShmBarrier = ShmBarrier;
      methods.xShmUnmap = ShmUnmap;
    }
    return methods;
  };
  static const sqlite3_io_methods with = make(kWithSharedMemory);
  static const sqlite3_io_methods without = make(kWithoutSharedMemory);
  return state.sharedMemory ? &with : &without;
}

int Open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  file->pMethods = nullptr;
  if (Fails()) return Code(SQLITE_CANTOPEN);
  const int code = state.below->xOpen(state.below, name, Below(file), flags, outFlags);
  if (code == SQLITE_OK) file->pMethods = Methods();
  return code;
}

int Delete(sqlite3_vfs*, const char* name, int syncFolder) {
  return Fails() ? Code(SQLITE_IOERR_DELETE) : state.below->xDelete(state.below, name, syncFolder);
}

int Access(sqlite3_vfs*, const char* name, int flags, int* out) {
  return Fails() ? Code(SQLITE_IOERR_ACCESS) : state.below->xAccess(state.below, name, flags, out);
}

sqlite3_vfs vfs{};

void Install(bool sharedMemory) {
  state = {};
  state.below = sqlite3_vfs_find(nullptr);
  state.sharedMemory = sharedMemory;
  vfs = *state.below;
  vfs.zName = "failing";
  vfs.pNext = nullptr;
  vfs.szOsFile = static_cast<int>(sizeof(File)) + state.below->szOsFile;
  vfs.xOpen = Open;
  vfs.xDelete = Delete;
  vfs.xAccess = Access;
  sqlite3_vfs_register(&vfs, 1);
}

void Remove() {
  sqlite3_vfs_unregister(&vfs);
  sqlite3_vfs_register(state.below, 1);
}

}  // namespace

FailingVfs::FailingVfs() {
  Install(true);
}
FailingVfs::~FailingVfs() {
  Remove();
}

void FailingVfs::FailAt(int call, bool lasting, Kind kind) {
  state.callsLeft = call;
  state.lasting = lasting;
  state.failed = false;
  state.kind = kind;
}

void FailingVfs::Heal() {
  state.callsLeft = 0;
  state.lasting = false;
}

bool FailingVfs::HasFailed() const {
  return state.failed;
}

VfsWithoutSharedMemory::VfsWithoutSharedMemory() {
  Install(false);
}
VfsWithoutSharedMemory::~VfsWithoutSharedMemory() {
  Remove();
}

}  // namespace velk::test
