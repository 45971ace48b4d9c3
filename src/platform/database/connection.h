#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct sqlite3;

namespace velk {

enum class OpenMode {
  ReadOnly,   ///< the file is looked at
  Follow,     ///< the same, of a file that another program writes: no waiting for it, and nothing is mended in it
  ReadWrite,  ///< the file has to be there and to be writable
  CreateNew,  ///< the file must not be there yet
};

/// One open database file. Who writes to a file shares one Connection; who reads its rows opens one of its own, and
/// lets go of it behind each page while the file is being recorded to: an idle one that has read the write-ahead log
/// would keep the end of the recording from folding that back into the file.
///
/// Files may come from strangers: the schema can't be damaged by statements, and triggers and functions named in the
/// schema don't run. Closing leaves a write-ahead log beside the file as it is; only Finalise folds it in.
///
/// A database of the Jet format is read by way of its copy (jet_copy.h), and never written.
///
/// Every failure raises a RuntimeError whose text names the file.
class Connection {
 public:
  /// Opens and reads the header. Raises FileNotFound, PathNotFound, FileAlreadyExists, PermissionDenied, BadFileName
  /// (no regular file), NotADatabase or DiskFull, with what is missing where a write-ahead log finds no room for its
  /// index.
  static std::shared_ptr<Connection> Open(const std::string& path, OpenMode mode);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  const std::string& Path() const { return path_; }
  /// Whether `path` leads to the file that is open here, by whatever name.
  bool IsSameFile(const std::string& path) const;

  /// Runs statements that give no rows.
  void Execute(const std::string& sql);

  /// From here on each statement of its own is one durable transaction: write-ahead log, flushed to the disk before the
  /// statement returns. Where the file system can't hold a write-ahead log, the same with a rollback journal.
  void BeginRecording();
  /// Whether the file has a write-ahead log: it is being recorded to, or was left so by a program that died.
  bool IsRecordedTo() const;
  /// Folds the write-ahead log into the file and leaves one self-contained file. Waits up to a second for a program
  /// that reads a page of it; raises DatabaseLocked while one reads on. Nothing is lost then, and Finalise may be tried
  /// again. Gives the files beside it that could not be removed; they hold nothing.
  std::vector<std::string> Finalise();
  /// Whether the file was moved, removed or replaced since it was opened.
  bool HasMoved() const;
  /// Raises FileNotFound when it has moved: rows would go nowhere.
  void CheckInPlace() const;

  sqlite3* Handle() const { return handle_; }
  /// Raises the RuntimeError of a result code of the engine.
  [[noreturn]] void Raise(int code) const;

 private:
  Connection(std::string path, OpenMode mode);
  void OpenHandle(int flags, bool waits = true);
  void UseCopy(int flags);
  void Defend();
  std::string SetJournalMode(const std::string& mode);
  bool LeaveWriteAheadLog();

  std::string path_;
  std::string file_;  ///< what is open: the path, or the copy of what stands there
  sqlite3* handle_ = nullptr;
};

/// All or nothing for the statements of a scope: taken back unless committed.
class Transaction {
 public:
  explicit Transaction(Connection& connection);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void Commit();

 private:
  Connection& connection_;
  bool open_ = true;
};

/// A name as it stands in a statement: in double quotes, those inside doubled.
std::string QuoteName(const std::string& name);

}  // namespace velk
