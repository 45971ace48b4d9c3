#include "platform/database/connection.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

#include "base/dates.h"
#include "base/errors.h"
#include "base/text.h"
#include "platform/database/command.h"
#include "platform/database/index_room.h"
#include "platform/database/jet_copy.h"
#include "platform/files/file_errors.h"
#include "platform/files/file_lock.h"
#include "platform/texts.h"

namespace velk {

namespace {

// How long a statement waits for another program to let go of the file. The event loop stands meanwhile.
constexpr int kBusyMilliseconds = 1000;

constexpr const char* kReadHeader = "SELECT count(*) FROM sqlite_schema";

ErrorNumber NumberOf(int code, int systemError, std::string_view message) {
  switch (code & 0xff) {
    case SQLITE_FULL:
      return ErrorNumber::DiskFull;
    case SQLITE_IOERR:
      return ErrorNumber::DeviceIOError;
    case SQLITE_NOTADB:
      return ErrorNumber::NotADatabase;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return ErrorNumber::DatabaseLocked;
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
      return ErrorNumber::PermissionDenied;
    case SQLITE_CANTOPEN:
      return systemError == 0 ? ErrorNumber::Database : FileErrorNumber(systemError);
    case SQLITE_ERROR:
      // The engine has one code for all that is wrong with a statement.
      return message.starts_with("no such table") ? ErrorNumber::NoSuchTable : ErrorNumber::Database;
    default:
      return ErrorNumber::Database;
  }
}

/// CDate(text) of the known query texts. A date-time stays as it is, Null gives Null.
void SqlCDate(sqlite3_context* context, int, sqlite3_value** values) {
  switch (sqlite3_value_type(values[0])) {
    case SQLITE_NULL:
      return;
    case SQLITE_INTEGER:
    case SQLITE_FLOAT:
      sqlite3_result_double(context, sqlite3_value_double(values[0]));
      return;
    default:
      break;
  }
  const unsigned char* bytes = sqlite3_value_text(values[0]);
  const int size = sqlite3_value_bytes(values[0]);
  if (bytes == nullptr) return sqlite3_result_error_nomem(context);
  try {
    const std::string text(bytes, bytes + size);
    sqlite3_result_double(context, CDate(text));
  } catch (const std::exception& error) {
    sqlite3_result_error(context, error.what(), -1);
  }
}

/// Whether a file that was opened for reading only wants to be recovered first: it was left by a program that died.
bool WantsRecovery(const RuntimeError& error) {
  return error.Number() == ErrorNumber::PermissionDenied || error.Number() == ErrorNumber::FileNotFound;
}

/// The engine does not tell when it could not remove the log that it has folded in, and its index. An empty log does no
/// harm; rows in one would be played into the file. Gives those that stay.
std::vector<std::string> RemoveSideFiles(const std::string& path) {
  const std::string log = path + "-wal";
  struct stat status {};
  if (stat(log.c_str(), &status) == 0 && status.st_size != 0) RaiseFileError(EEXIST, log);
  std::vector<std::string> left;
  for (const std::string& file : {log, path + "-shm"})
    if (unlink(file.c_str()) != 0 && errno != ENOENT) left.push_back(file);
  return left;
}

/// One of a database's two files (SQLITE_FCNTL_FILE_POINTER, SQLITE_FCNTL_JOURNAL_POINTER); null where it is not open.
sqlite3_file* OpenFile(sqlite3* handle, int which) {
  sqlite3_file* file = nullptr;
  const int code = sqlite3_file_control(handle, "main", which, static_cast<void*>(&file));
  return code == SQLITE_OK && file != nullptr && file->pMethods != nullptr ? file : nullptr;
}

/// What the system said to the last operation that failed on a file.
int FileError(sqlite3_file* file) {
  int systemError = 0;
  if (file != nullptr) file->pMethods->xFileControl(file, SQLITE_FCNTL_LAST_ERRNO, &systemError);
  return systemError;
}

/// Whether the header says that the file is read together with a write-ahead log.
bool AsksForLog(sqlite3* handle) {
  constexpr sqlite3_int64 kReadVersion = 19;
  constexpr unsigned char kWriteAheadLog = 2;
  sqlite3_file* file = OpenFile(handle, SQLITE_FCNTL_FILE_POINTER);
  unsigned char version = 0;
  return file == nullptr || file->pMethods->xRead(file, &version, 1, kReadVersion) != SQLITE_OK ||
         version == kWriteAheadLog;
}

/// The write-ahead log's name: beside the file itself, where the path is a link.
std::string LogOf(sqlite3* handle) {
  return sqlite3_filename_wal(sqlite3_db_filename(handle, "main"));
}

/// A quota or a limit on the size of files comes as a failed write and means the same as a full disk.
bool MeansFull(int systemError) {
  return systemError == ENOSPC || systemError == EFBIG || systemError == EDQUOT;
}

}  // namespace

std::shared_ptr<Connection> Connection::Open(const std::string& path, OpenMode mode) {
  CheckRegularFile(path, mode == OpenMode::CreateNew);
  try {
    return std::shared_ptr<Connection>(new Connection(path, mode));
  } catch (...) {
    if (mode == OpenMode::CreateNew) unlink(path.c_str());
    throw;
  }
}

Connection::Connection(std::string path, OpenMode mode) : path_(std::move(path)), file_(path_) {
  try {
    if (mode == OpenMode::Follow) {
      OpenHandle(SQLITE_OPEN_READONLY, false);
      return;
    }
    if (mode != OpenMode::ReadOnly) {
      OpenHandle(SQLITE_OPEN_READWRITE);
      // The engine falls back to reading where it may not write.
      if (sqlite3_db_readonly(handle_, "main") == 1) RaiseFileError(EACCES, path_);
      return;
    }
    try {
      OpenHandle(SQLITE_OPEN_READONLY);
    } catch (const RuntimeError& error) {
      if (!WantsRecovery(error)) throw;
      OpenHandle(SQLITE_OPEN_READWRITE);
    }
  } catch (...) {
    sqlite3_close_v2(handle_);
    throw;
  }
}

Connection::~Connection() {
  sqlite3_close_v2(handle_);
}

void Connection::UseCopy(int flags) {
  if (flags != SQLITE_OPEN_READONLY)
    throw RuntimeError(ErrorNumber::PermissionDenied, text::JetIsReadOnlyBefore + path_ + text::JetIsReadOnlyAfter);
  file_ = JetCopyOf(path_);
  if (!FileExists(file_))
    throw RuntimeError(ErrorNumber::NotADatabase, text::JetNotReadBefore + path_ + text::JetNotReadAfter);
}

void Connection::OpenHandle(int flags, bool waits) {
  sqlite3_close_v2(handle_);
  handle_ = nullptr;
  // Without locks of its own: a connection belongs to one thread.
  const int code =
      sqlite3_open_v2(file_.c_str(), &handle_, flags | SQLITE_OPEN_EXRESCODE | SQLITE_OPEN_NOMUTEX, nullptr);
  if (code != SQLITE_OK) Raise(code);
  if (file_ == path_ && HoldsJetFile(handle_)) {
    UseCopy(flags);
    return OpenHandle(flags, waits);
  }
  if (waits) sqlite3_busy_timeout(handle_, kBusyMilliseconds);
  Defend();
  // Who records has the index already: its readers need no room.
  if (AsksForLog(handle_) && !FileLock::HolderOf(path_)) RequireRoomForIndex(path_, LogOf(handle_));
  sqlite3_create_function_v2(handle_, "CDate", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr,
                             SqlCDate, nullptr, nullptr, nullptr);
  Execute(kReadHeader);
}

void Connection::Defend() {
  struct Setting {
    int option;
    int value;
  };
  for (const Setting& setting : {Setting{SQLITE_DBCONFIG_DEFENSIVE, 1}, Setting{SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
                                 Setting{SQLITE_DBCONFIG_ENABLE_TRIGGER, 0}, Setting{SQLITE_DBCONFIG_DQS_DML, 0},
                                 Setting{SQLITE_DBCONFIG_DQS_DDL, 0}, Setting{SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1}}) {
    const int code = sqlite3_db_config(handle_, setting.option, setting.value, nullptr);
    if (code != SQLITE_OK) Raise(code);
  }
  Execute("PRAGMA cell_size_check=ON");
}

bool Connection::IsSameFile(const std::string& path) const {
  struct stat here {
  }, there{};
  return !HasMoved() && stat(path_.c_str(), &here) == 0 && stat(path.c_str(), &there) == 0 &&
         here.st_dev == there.st_dev && here.st_ino == there.st_ino;
}

void Connection::Execute(const std::string& sql) {
  const int code = sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) Raise(code);
}

std::string Connection::SetJournalMode(const std::string& mode) {
  Command command(*this, "PRAGMA journal_mode=" + mode);
  std::string reply;
  // To the end: the row comes before the change is on the disk.
  while (command.Next()) reply = LowerCase(command.Text(0));
  return reply;
}

void Connection::BeginRecording() {
  RequireRoomForIndex(path_, LogOf(handle_));
  // EXTRA matters for the rollback journal only: there the name of the deleted journal has to be off the disk as well.
  Execute(SetJournalMode("WAL") == "wal" ? "PRAGMA synchronous=FULL" : "PRAGMA synchronous=EXTRA");
  // Rows are appended: a dozen pages at the ends of the table and its index. By itself the engine would keep 2 MB of
  // those that are full.
  Execute("PRAGMA cache_size=64");
}

std::vector<std::string> Connection::Finalise() {
  // A read first: it takes back what an earlier try left half done.
  Execute(kReadHeader);
  const int code = sqlite3_wal_checkpoint_v2(handle_, "main", SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
  if (code != SQLITE_OK) Raise(code);
  // The engine itself waits for nobody here.
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(kBusyMilliseconds);
  while (!LeaveWriteAheadLog()) {
    if (std::chrono::steady_clock::now() >= end) Raise(SQLITE_BUSY);
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return RemoveSideFiles(path_);
}

bool Connection::LeaveWriteAheadLog() {
  // A change of mode that failed half way counts as done in the engine, while the file still asks for a log.
  if (SetJournalMode("DELETE") == "delete" && AsksForLog(handle_)) SetJournalMode("WAL");
  return SetJournalMode("DELETE") == "delete" && !AsksForLog(handle_);
}

bool Connection::IsRecordedTo() const {
  return AsksForLog(handle_);
}

bool Connection::HasMoved() const {
  int moved = 0;
  sqlite3_file_control(handle_, "main", SQLITE_FCNTL_HAS_MOVED, &moved);
  return moved != 0;
}

void Connection::CheckInPlace() const {
  if (HasMoved()) RaiseFileError(ENOENT, path_);
}

void Connection::Raise(int code) const {
  const std::string message = handle_ == nullptr || (sqlite3_errcode(handle_) & 0xff) != (code & 0xff)
                                  ? sqlite3_errstr(code)
                                  : sqlite3_errmsg(handle_);
  const int systemError = handle_ == nullptr ? 0 : sqlite3_system_errno(handle_);
  ErrorNumber number = NumberOf(code, systemError, message);
  if (code == SQLITE_IOERR_WRITE && (MeansFull(FileError(OpenFile(handle_, SQLITE_FCNTL_FILE_POINTER))) ||
                                     MeansFull(FileError(OpenFile(handle_, SQLITE_FCNTL_JOURNAL_POINTER)))))
    number = ErrorNumber::DiskFull;
  throw RuntimeError(number, FileErrorText(number, path_) + " (" + message + ")");
}

Transaction::Transaction(Connection& connection) : connection_(connection) {
  connection_.Execute("BEGIN IMMEDIATE");
}

Transaction::~Transaction() {
  // A full disk has taken it back already.
  if (open_ && sqlite3_get_autocommit(connection_.Handle()) == 0)
    sqlite3_exec(connection_.Handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::Commit() {
  connection_.Execute("COMMIT");
  open_ = false;
}

std::string QuoteName(const std::string& name) {
  return '"' + ReplaceAll(name, "\"", "\"\"") + '"';
}

}  // namespace velk
