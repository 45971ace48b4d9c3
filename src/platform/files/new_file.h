#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/files/file_lock.h"

namespace velk {

/// A file that comes into being as a whole: it is made under another name beside the wanted one and renamed when it is
/// complete. Given up before, it is removed.
class NewFile {
 public:
  enum class IfThere { Refuse, Replace };

  /// Raises FileAlreadyExists where something stands at `path`, or beside it a journal of a database that was there: it
  /// would be played into the new file. With Replace whatever stands there stays until the new file is complete, and
  /// goes with its journals then.
  explicit NewFile(std::string path, IfThere ifThere = IfThere::Refuse);
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  /// Raises what can be told before: FileAlreadyExists as above, PathNotFound without the folder, PermissionDenied
  /// where nothing may be made in it.
  static void Check(const std::string& path);

  /// Removes what killed programs have left of files that were to be called `path`. What one is still at work on stays.
  /// Gives what could not be removed.
  static std::vector<std::string> ClearParts(const std::string& path);

  /// The name to make the file under; nothing stands there yet.
  const std::string& PartName() const { return partName_; }
  /// Gives the complete file its name. False where a power cut can still take the name.
  bool Complete();

 private:
  std::string path_;
  const IfThere ifThere_;
  std::string partName_;
  std::unique_ptr<FileLock> lock_;  ///< of the part: it is being made
};

}  // namespace velk
